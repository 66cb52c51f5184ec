// contacts: import, export and list them, and say whether programs may see them.
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <memory>

#include "desktop/addressbook/book.h"
#include "desktop/addressbook/call_links.h"
#include "desktop/addressbook/contact_vcard.h"
#include "desktop/addressbook/names.h"
#include "desktop/addressbook/numbers.h"
#include "desktop/addressbook/vcard_writer.h"
#include "desktop/notify/notify.h"
#include "desktop/quorvel/settings/settings_store.h"
#include "tools/contacts/contacts_import.h"
#include "tools/quorvelctl/session.h"

namespace tools {
namespace {

using contacts::Book;
using contacts::Property;

/// Opens the contacts as the Phone does: with the user's region and language, and heard by whoever is open.
int open(Session& session) {
    quorvel::SettingsStore settings(session.directory().settings());
    if (const auto trouble = settings.load()) complain(*trouble);
    const std::string region = settings.text("region");
    contacts::setHomeRegion(region.empty() ? contacts::regionOf(contacts::localeName()) : region);
    const std::string language = settings.text("language");
    contacts::setLanguage(language.empty() ? contacts::localeName() : language);
    if (const auto failure = notify::openRendezvous(session.directory().notifications())) complain(failure->text);
    if (const auto story = Book::shared().open(session.directory().contacts())) complain(*story);
    return Book::shared().isOpen() ? succeeded : unusable;
}

void say(std::size_t count, const char* one, const char* several) {
    if (count > 0) std::printf("%zu %s\n", count, count == 1 ? one : several);
}

int importFiles(Session& session, const std::vector<std::string>& files, const std::string& charset) {
    if (const int status = open(session); status != succeeded) return status;
    const std::vector<std::filesystem::path> paths(files.begin(), files.end());
    const auto done = importContacts(paths, charset, [](const std::string& line) { complain(line); });
    if (!done) return complain(done.error().message);
    std::printf("%zu %s added\n", done->added, done->added == 1 ? "contact" : "contacts");
    say(done->updated, "contact updated", "contacts updated");
    say(done->unchanged, "contact was there already", "contacts were there already");
    say(done->empty, "card says nothing of anybody", "cards say nothing of anybody");
    say(done->calls, "entry is a call and no contact", "entries are calls and no contacts");
    if (done->added + done->updated == 0) return succeeded;
    if (const auto trouble = contacts::linkCalls(session.calls())) return complain(*trouble);
    return succeeded;
}

/// Takes the place of the file once it is complete.
int writeFile(const std::filesystem::path& file, const std::string& text) {
    const std::filesystem::path unfinished = file.string() + ".unfinished";
    std::ofstream stream(unfinished, std::ios::binary | std::ios::trunc);
    stream.write(text.data(), static_cast<std::streamsize>(text.size()));
    stream.close();
    std::error_code error;
    if (stream) std::filesystem::rename(unfinished, file, error);
    if (stream && !error) return succeeded;
    const std::string why = error ? error.message() : std::strerror(errno);
    std::filesystem::remove(unfinished, error);
    return complain("The file " + file.string() + " cannot be written: " + why + ". Name another one.");
}

int exportFile(Session& session, const std::string& file, vcard::Version version) {
    if (const int status = open(session); status != succeeded) return status;
    auto all = *Book::shared().all();
    contacts::sortByName(all, contacts::NameOrder::lastName);
    std::string cards;
    for (auto& contact : all) {
        contact.picture = Book::shared().picture(contact.record);
        cards += vcard::write(contacts::cardOf(contact), version);
    }
    if (!file.empty()) return writeFile(file, cards);
    const bool isWritten =
        std::fwrite(cards.data(), 1, cards.size(), stdout) == cards.size() && std::fflush(stdout) == 0;
    return isWritten ? succeeded
                     : complain("The contacts cannot be written: " + std::string(std::strerror(errno)) + ".");
}

int list(Session& session) {
    if (const int status = open(session); status != succeeded) return status;
    auto all = *Book::shared().all();
    contacts::sortByName(all, contacts::NameOrder::lastName);
    for (const auto& contact : all) {
        std::string addresses;
        for (const Property property : {Property::phone, Property::email})
            for (const auto& value : contact.list(property)) addresses += (addresses.empty() ? "" : ", ") + value.text;
        std::printf("%d\t%s\t%s\n", contact.record, contacts::compositeName(contact).c_str(), addresses.c_str());
    }
    return succeeded;
}

int allow(Session& session, bool isAllowed) {
    if (const int status = open(session); status != succeeded) return status;
    const auto trouble = Book::shared().setAllowed(isAllowed);
    return trouble ? complain(*trouble) : succeeded;
}

void addContactImport(CLI::App& contacts, Session& session) {
    struct Options {
        std::vector<std::string> files;
        std::string charset = "windows-1252";
    };
    auto options = std::make_shared<Options>();
    auto* command = contacts.add_subcommand("import", "Adds the contacts of vCard files (versions 2.1, 3.0 and 4.0)");
    command->add_option("files", options->files, "vCard files")->type_name("FILE")->required();
    command
        ->add_option("--charset", options->charset,
                     "Of texts that name no charset and are not UTF-8 (default: windows-1252)")
        ->type_name("NAME");
    command->footer(
        "Contacts that are there already are not added again; one of the same UID takes over what its card says.\n\n"
        "Example:\n  quorvelctl contacts import phone.vcf mail.vcf");
    command->callback([&session, options] {
        session.chosen = [&session, options] { return importFiles(session, options->files, options->charset); };
    });
}

void addContactExport(CLI::App& contacts, Session& session) {
    struct Options {
        std::string file;
        vcard::Version version = vcard::Version::v30;
    };
    static const std::map<std::string, vcard::Version> versions{
        {"2.1", vcard::Version::v21}, {"3.0", vcard::Version::v30}, {"4.0", vcard::Version::v40}};
    auto options = std::make_shared<Options>();
    auto* command = contacts.add_subcommand("export", "Writes all contacts as vCards, with their pictures");
    command->add_option("file", options->file, "Where to (default: standard output)")->type_name("FILE");
    command->add_option("--version", options->version, "2.1, 3.0 or 4.0 (default: 3.0)")
        ->type_name("VERSION")
        ->transform(CLI::CheckedTransformer(versions).description(""));
    command->callback([&session, options] {
        session.chosen = [&session, options] { return exportFile(session, options->file, options->version); };
    });
}

}  // namespace

void addContacts(CLI::App& program, Session& session) {
    auto* contacts = program.add_subcommand("contacts", "The address book: import, export, list, deny, allow");
    contacts->require_subcommand(1);
    contacts->fallthrough();
    addContactImport(*contacts, session);
    addContactExport(*contacts, session);
    auto* listing = contacts->add_subcommand("list", "Prints a line a contact: record, name, numbers and addresses");
    listing->callback([&session] { session.chosen = [&session] { return list(session); }; });
    for (const bool isAllowed : {false, true}) {
        auto* command = contacts->add_subcommand(isAllowed ? "allow" : "deny",
                                                 isAllowed ? "Lets the handset's programs see the contacts again"
                                                           : "Closes the contacts to the handset's programs");
        command->callback(
            [&session, isAllowed] { session.chosen = [&session, isAllowed] { return allow(session, isAllowed); }; });
    }
}

}  // namespace tools
