// The telephone application's own texts.
#pragma once

#include <string>
#include <string_view>

namespace phone {

/// The text of the main bundle's string table, in the user's language; the key where there is none.
std::string phoneText(std::string_view key);

}  // namespace phone
