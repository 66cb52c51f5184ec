// Cards, compared with the contacts that are there.
#include "tools/contacts/contacts_import.h"

#include <cerrno>
#include <cstring>
#include <fstream>
#include <map>
#include <unordered_map>

#include "desktop/addressbook/book.h"
#include "desktop/addressbook/contact_vcard.h"
#include "desktop/addressbook/vcard_reader.h"
#include "desktop/addressbook/vcard_writer.h"

namespace tools {
namespace {

using contacts::Book;
using contacts::Contact;
using quorvel::store::Error;
using quorvel::store::ErrorKind;
using quorvel::store::Result;

constexpr std::size_t mostToldOfAFile = 20;

/// What the contact says, its picture apart: the same text for the same content.
std::string contentOf(Contact contact) {
    contact.picture.reset();
    return vcard::write(contacts::cardOf(contact), vcard::Version::v30);
}

std::string identityOf(const Contact& contact) {
    for (const std::string& line : contact.others)
        if (line.starts_with("UID:") || line.starts_with("UID;")) return line;
    return {};
}

/// What is to be written, compared with what is there and with what came before.
class Comparison {
  public:
    Comparison() {
        for (const Contact& contact : *Book::shared().all()) {
            byContent_.emplace(contentOf(contact), contact.record);
            if (auto identity = identityOf(contact); !identity.empty()) byIdentity_.emplace(identity, contact.record);
        }
    }

    void take(Contact contact, ContactImport& count) {
        if (contact == Contact()) {
            ++count.empty;
            return;
        }
        const std::string content = contentOf(contact);
        if (const auto same = byContent_.find(content); same != byContent_.end() && hasPicture(same->second, contact)) {
            ++count.unchanged;
            return;
        }
        byContent_.emplace(content, 0);
        const std::string identity = identityOf(contact);
        const auto known = identity.empty() ? byIdentity_.end() : byIdentity_.find(identity);
        if (known != byIdentity_.end()) contact.record = known->second;
        ++(contact.record > 0 ? count.updated : count.added);
        written_.push_back(std::move(contact));
    }

    const std::vector<Contact>& written() const { return written_; }

  private:
    /// Of a card that came before, the picture is taken to be the same.
    static bool hasPicture(int record, const Contact& contact) {
        if (!contact.picture || record == 0) return true;
        return Book::shared().picture(record) == contact.picture;
    }

    std::unordered_map<std::string, int> byContent_;
    std::map<std::string, int> byIdentity_;
    std::vector<Contact> written_;
};

Result<quorvel::store::Done> readFile(const std::filesystem::path& file, const std::string& charset,
                                      const std::function<void(const std::string&)>& tell, Comparison& comparison,
                                      ContactImport& count) {
    const auto cannot = [&file](const std::string& why) {
        return Error{ErrorKind::badInput, "The file " + file.string() + " " + why + " Nothing was changed."};
    };
    std::ifstream stream(file, std::ios::binary);
    if (!stream) return cannot("cannot be read: " + std::string(std::strerror(errno)) + ".");
    if (std::filesystem::is_directory(file)) return cannot("is a folder. Name the vCard files in it.");
    std::size_t problems = 0;
    vcard::Reader reader(stream,
                         [&](const vcard::Problem& problem) {
                             if (++problems > mostToldOfAFile) return;
                             tell(file.string() + ":" + std::to_string(problem.position.line) + ":" +
                                  std::to_string(problem.position.column) + ": " + problem.text);
                         },
                         {.charset = charset});
    bool hasCards = false;
    while (const auto card = reader.next()) {
        hasCards = true;
        if (contacts::isCallRecord(*card))
            ++count.calls;
        else
            comparison.take(contacts::contactOf(*card), count);
    }
    if (problems > mostToldOfAFile)
        tell(file.string() + ": " + std::to_string(problems - mostToldOfAFile) + " more of the kind");
    count.problems += problems;
    if (!hasCards) return cannot("holds no vCard.");
    return quorvel::store::Done{};
}

}  // namespace

Result<ContactImport> importContacts(const std::vector<std::filesystem::path>& files, const std::string& charset,
                                     const std::function<void(const std::string&)>& tell) {
    ContactImport count;
    Comparison comparison;
    for (const auto& file : files) {
        const auto read = readFile(file, charset, tell, comparison, count);
        if (!read) return read.error();
    }
    if (comparison.written().empty()) return count;
    const auto written = Book::shared().write(comparison.written());
    if (!written) return written.error();
    return count;
}

}  // namespace tools
