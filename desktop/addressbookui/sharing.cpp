// Writes vCard files.
#include "desktop/addressbookui/sharing.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>

#include "desktop/addressbook/book.h"
#include "desktop/addressbook/contact_vcard.h"
#include "desktop/addressbook/vcard_writer.h"
#include "desktop/files/new_file.h"
#include "desktop/files/private_files.h"

namespace addressbookui {
namespace {

std::filesystem::path& folderSlot() {
    static auto* const folder = [] {
        const char* home = std::getenv("HOME");
        return new std::filesystem::path(home ? home : ".");
    }();
    return *folder;
}

/// A name that any file system takes: no separators, no control characters, no dot in front, of bounded length.
std::string fileName(const std::string& name) {
    constexpr std::size_t longest = 80;
    std::string result;
    for (const char letter : name) {
        const bool isControl = static_cast<unsigned char>(letter) < ' ';
        const bool isSpecial = std::strchr("/\\:*?\"<>|", letter) != nullptr;
        // Not inside a character of several bytes.
        if (result.size() >= longest && (static_cast<unsigned char>(letter) & 0xC0) != 0x80) break;
        result += isControl || isSpecial ? '-' : letter;
    }
    if (result.empty() || result.front() == '.') result.insert(0, "Contact");
    return result;
}

}  // namespace

void setShareFolder(std::filesystem::path folder) { folderSlot() = std::move(folder); }

graphics::Result<std::filesystem::path> shareContact(const contacts::Contact& contact) {
    contacts::Contact whole = contact;
    if (!whole.picture && whole.record > 0) whole.picture = contacts::Book::shared().picture(whole.record);
    const std::string card = vcard::write(contacts::cardOf(whole), vcard::Version::v30);
    const auto& folder = folderSlot();
    std::error_code ignored;
    files::makePrivateFolders(folder);
    const std::string base = fileName(contacts::compositeName(contact));
    std::filesystem::path file;
    int descriptor = -1;
    constexpr int mostOfAName = 10000;
    for (int number = 1; number < mostOfAName && descriptor < 0; ++number) {
        file = folder / (base + (number > 1 ? " " + std::to_string(number) : "") + ".vcf");
        descriptor = ::open(file.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0600);
        if (descriptor < 0 && errno != EEXIST) break;
    }
    if (descriptor < 0)
        return graphics::Failure{"The card cannot be written to " + file.string() + ": " + std::strerror(errno) +
                                 ". Check that the folder can be written to."};
    const auto trouble = files::writeAll(descriptor, card);
    ::close(descriptor);
    if (!trouble) return file;
    std::filesystem::remove(file, ignored);
    return graphics::Failure{"The card cannot be written to " + file.string() + ": " + trouble.message() + "."};
}

}  // namespace addressbookui
