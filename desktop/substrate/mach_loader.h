// Loads a Mach-O image into this process.
#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <string>

namespace substrate::mach {

/// Maps the image of those bytes, binds it against the libraries of this process and runs its initialisers, in order,
/// on this thread, for the rest of the process's life. Answers what is wrong with it as a sentence goes on behind its
/// name ("is cut short"), or nothing. Whatever is in the file, nothing outside it is read and nothing outside the
/// mapping written; an image that passes runs as any library does.
std::optional<std::string> load(std::span<const std::byte> image);

}  // namespace substrate::mach
