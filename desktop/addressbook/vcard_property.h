// One content line read: header, parameters, and the value brought into the one form that all versions share.
#pragma once

#include <functional>
#include <optional>
#include <string>

#include "desktop/addressbook/vcard_lines.h"

namespace vcard {

/// Told with an offset into the line's text.
using Complaint = std::function<void(std::size_t offset, const std::string& text)>;

/// The property of the line. Nothing, with a complaint, where the line has no colon or no name.
std::optional<Property> readProperty(const ContentLine& line, Version version, const std::string& charset,
                                     const Complaint& complain);

}  // namespace vcard
