// An ELF image as a file: looked at before the system's loader gets it, which believes what it reads.
#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <string>

namespace substrate::elf {

using Bytes = std::span<const std::byte>;

/// What keeps the image from being loaded, as a sentence goes on behind its name ("is cut short"), or nothing. Looked
/// at is all that the loader follows: headers, segments, the dynamic section with its tables, relocations and
/// initialisers. What the code of the image does is not.
std::optional<std::string> objectionTo(Bytes file);

}  // namespace substrate::elf
