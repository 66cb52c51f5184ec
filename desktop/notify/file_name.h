// Names as file names: any bytes become a plain name that needs no quoting and never leaves its directory.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace notify {

/// The file of that name in a rendezvous: letters, digits, "-", "_" and "." stay, every other byte and a dot in front
/// become %XX, and ".post" follows. Two names never share a file.
std::string fileNameOf(std::string_view name);

/// The name whose file that is; none for a file that fileNameOf() does not make.
std::optional<std::string> nameOfFile(std::string_view fileName);

}  // namespace notify
