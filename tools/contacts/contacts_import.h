// Contacts out of vCard files into the book: every file read before anything is written.
#pragma once

#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include "desktop/addressbook/contact.h"
#include "desktop/quorvel/store/result.h"

namespace tools {

struct ContactImport {
    std::size_t added = 0;
    std::size_t updated = 0;    ///< Those of the same UID took over what the card says.
    std::size_t unchanged = 0;  ///< The book had them already.
    std::size_t empty = 0;      ///< Cards that say nothing of anybody.
    std::size_t calls = 0;      ///< Entries of a telephone's list of calls.
    std::size_t problems = 0;
};

/// Reads the files into the open book, all or nothing. `tell` gets a line "FILE:LINE:COLUMN: text" for everything that
/// was not as it should be, the first twenty of each file. Texts without a charset that are not UTF-8 are read in
/// `charset`. An error where a file cannot be read or holds no card.
quorvel::store::Result<ContactImport> importContacts(const std::vector<std::filesystem::path>& files,
                                                     const std::string& charset,
                                                     const std::function<void(const std::string&)>& tell);

}  // namespace tools
