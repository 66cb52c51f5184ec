// Contacts as vCard files, to be given to others.
#pragma once

#include <filesystem>
#include <string>

#include "desktop/addressbook/contact.h"
#include "desktop/graphics/result.h"

namespace addressbookui {

/// Where shared cards are written; made when the first is. The user's home until another is set. Main thread.
void setShareFolder(std::filesystem::path folder);

/// Writes the contact with its picture as "NAME.vcf" (version 3.0) into the folder, beside cards of that name that are
/// there already. Answers the file, or why it could not be written.
graphics::Result<std::filesystem::path> shareContact(const contacts::Contact& contact);

}  // namespace addressbookui
