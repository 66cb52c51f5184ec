// contacts: import, export and list them, and say whether programs may see them.
#include <cstdio>
#include <filesystem>
#include <memory>

#include "desktop/addressbook/book.h"
#include "desktop/addressbook/call_links.h"
#include "desktop/addressbook/contact_vcard.h"
#include "desktop/addressbook/names.h"
#include "desktop/addressbook/vcard_writer.h"
#include "tools/contacts/contacts_import.h"
#include "tools/contacts/open_contacts.h"
#include "tools/export/output.h"
#include "tools/quorvelctl/session.h"

namespace tools {
namespace {

using contacts::Book;
using contacts::Property;

void say(std::size_t count, const char* one, const char* several) {
    if (count > 0) std::printf("%zu %s\n", count, count == 1 ? one : several);
}

int importFiles(Session& session, const std::vector<std::string>& files, const std::string& charset) {
    if (const int status = openContacts(session); status != succeeded) return status;
    const std::vector<std::filesystem::path> paths(files.begin(), files.end());
    const auto done = importContacts(paths, charset, [](const std::string& line) { complain(line); });
    if (!done) return complain(done.error().message);
    std::printf("%zu %s added\n", done->added, done->added == 1 ? "contact" : "contacts");
    say(done->updated, "contact updated", "contacts updated");
    say(done->unchanged, "contact was there already", "contacts were there already");
    say(done->empty, "card says nothing of anybody", "cards say nothing of anybody");
    say(done->calls, "entry is a call and no contact", "entries are calls and no contacts");
    // Also where nothing is new: the run that added them may have ended before it came to the calls.
    if (const auto trouble = contacts::linkCalls(session.calls())) return complain(*trouble);
    return succeeded;
}

int exportFile(Session& session, const std::string& file, vcard::Version version) {
    if (const int status = openContacts(session); status != succeeded) return status;
    auto all = *Book::shared().all();
    contacts::sortByName(all, contacts::NameOrder::lastName);
    Output output(file, files::Existing::replaced);
    for (auto& contact : all) {
        contact.picture = Book::shared().picture(contact.record);
        output.write(vcard::write(contacts::cardOf(contact), version));
    }
    const auto trouble = output.finish();
    return trouble ? complain(*trouble) : succeeded;
}

int list(Session& session) {
    if (const int status = openContacts(session); status != succeeded) return status;
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
    if (const int status = openContacts(session); status != succeeded) return status;
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
    command->footer("Example:\n  quorvelctl contacts export contacts.vcf");
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
    listing->footer("Example:\n  quorvelctl contacts list");
    listing->callback([&session] { session.chosen = [&session] { return list(session); }; });
    for (const bool isAllowed : {false, true}) {
        auto* command = contacts->add_subcommand(isAllowed ? "allow" : "deny",
                                                 isAllowed ? "Lets the handset's programs see the contacts again"
                                                           : "Closes the contacts to the handset's programs");
        command->footer(std::string("Example:\n  quorvelctl contacts ") + (isAllowed ? "allow" : "deny"));
        command->callback(
            [&session, isAllowed] { session.chosen = [&session, isAllowed] { return allow(session, isAllowed); }; });
    }
}

}  // namespace tools
