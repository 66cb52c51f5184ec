// How vCards carry bytes and characters: base64, quoted-printable, charsets.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace vcard {

/// The bytes; blanks are passed over, and what is cut off at the end is left out. Nothing where another character
/// stands in it.
std::optional<std::string> fromBase64(std::string_view text);
std::string toBase64(std::string_view bytes);

/// The bytes; "=" before anything but two hexadecimal digits stands for itself.
std::string fromQuotedPrintable(std::string_view text);
/// Printable ASCII without "=" stays; everything else is written by its number. No soft line breaks.
std::string toQuotedPrintable(std::string_view bytes);

/// The bytes of that charset as UTF-8, what cannot be read replaced. Nothing where no charset of the name is known.
std::optional<std::string> fromCharset(std::string_view bytes, const std::string& charset);

}  // namespace vcard
