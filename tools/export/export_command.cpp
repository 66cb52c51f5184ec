// export: calls or contacts for other programs, all of them or some.
#include <algorithm>
#include <map>
#include <memory>
#include <set>

#include "desktop/addressbook/book.h"
#include "desktop/addressbook/contact_vcard.h"
#include "desktop/addressbook/labels.h"
#include "desktop/addressbook/names.h"
#include "desktop/addressbook/vcard_writer.h"
#include "tools/calls/selection.h"
#include "tools/contacts/open_contacts.h"
#include "tools/export/call_writers.h"
#include "tools/quorvelctl/progress_bar.h"
#include "tools/quorvelctl/session.h"

namespace tools {
namespace {

using quorvel::store::CallRecord;

enum class Format { csv, json, db, vcf };

struct Options {
    std::shared_ptr<Selection> selection = std::make_shared<Selection>();
    std::optional<Format> format;
    std::string file;
    bool force = false;

    files::Existing existing() const { return force ? files::Existing::replaced : files::Existing::refused; }
};

const std::map<std::string, Format>& formats() {
    static const std::map<std::string, Format> known{
        {"csv", Format::csv}, {"json", Format::json}, {"db", Format::db}, {"vcf", Format::vcf}};
    return known;
}

/// The one that was named, or the one of the file's name.
Format formatOf(const Options& options) {
    if (options.format) return *options.format;
    const auto ending = std::filesystem::path(options.file).extension().string();
    const auto found = ending.empty() ? formats().end() : formats().find(ending.substr(1));
    return found == formats().end() ? Format::csv : found->second;
}

std::unique_ptr<CallWriter> writerOf(Format format, const Options& options) {
    if (format == Format::json) return jsonWriter(options.file, options.existing());
    if (format == Format::db) return logWriter(options.file, options.existing());
    return csvWriter(options.file, options.existing());
}

int exportCalls(Session& session, const Options& options, Format format) {
    constexpr std::size_t chunk = 1000;
    const auto chosen = chosenCalls(session.calls(), *options.selection);
    if (!chosen) return complain(chosen.error().message);
    const auto writer = writerOf(format, options);
    ProgressBar bar("Exporting");
    for (std::size_t at = 0; at < chosen->size(); at += chunk) {
        const auto rowIds = std::span(*chosen).subspan(at, std::min(chunk, chosen->size() - at));
        auto calls = session.calls().wholeCalls(rowIds);
        if (!calls) return complain(calls.error().message);
        for (auto& call : *calls) {
            // Former versions stored labels as words of the user's language.
            call.label = contacts::label::inLog(call.label);
            if (const auto trouble = writer->write(call)) return complain(*trouble);
        }
        bar.show(static_cast<double>(at) / static_cast<double>(chosen->size()));
    }
    const auto trouble = writer->finish();
    return trouble ? complain(*trouble) : succeeded;
}

/// All contacts, or those that the chosen calls are with.
int exportContacts(Session& session, const Options& options) {
    using contacts::Book;
    if (const int status = openContacts(session); status != succeeded) return status;
    std::set<std::int32_t> wanted;
    const bool all = options.selection->isEverything();
    if (!all) {
        const auto read = eachCall(session.calls(), *options.selection, [&](const CallRecord& call) {
            wanted.insert(call.contactId);
            return true;
        });
        if (!read) return complain(read.error().message);
    }
    auto chosen = *Book::shared().all();
    contacts::sortByName(chosen, contacts::NameOrder::lastName);
    Output output(options.file, options.existing());
    for (auto& contact : chosen) {
        if (!all && !wanted.contains(contact.record)) continue;
        contact.picture = Book::shared().picture(contact.record);
        output.write(vcard::write(contacts::cardOf(contact), vcard::Version::v30));
    }
    const auto trouble = output.finish();
    return trouble ? complain(*trouble) : succeeded;
}

int exportChosen(Session& session, const Options& options) {
    const Format format = formatOf(options);
    if (format == Format::db && options.file.empty())
        return complain("A database needs a file: name one with --output FILE.db.", unusable);
    std::error_code ignored;
    const auto status = std::filesystem::status(options.file, ignored);
    if (format == Format::db && std::filesystem::exists(status) && !std::filesystem::is_regular_file(status))
        return complain(options.file + " is not a file. Name a file for the database.");
    if (!options.file.empty())
        if (const auto objection = objectionToFile(options.file, options.existing())) return complain(*objection);
    return format == Format::vcf ? exportContacts(session, options) : exportCalls(session, options, format);
}

}  // namespace

void addExport(CLI::App& program, Session& session) {
    auto options = std::make_shared<Options>();
    auto* command = program.add_subcommand("export", "Writes calls or contacts for other programs, all or some");
    command->add_option("--format", options->format, "csv, json or db: calls; vcf: contacts (default: by FILE, or csv)")
        ->type_name("FORMAT")
        ->transform(CLI::CheckedTransformer(formats()).description(""));
    command->add_option("--output", options->file, "Where to (default: standard output)")->type_name("FILE");
    command->add_flag("--force", options->force, "Replaces a file that is there");
    addSelection(*command, options->selection);
    command->footer(
        "What is exported and imported again is the same, to the last field. Labels of numbers are English words\n"
        "(mobile, work fax) whatever the language; own labels stay as they are. With a choice of calls, vcf writes\n"
        "the contacts that these calls are with.\n\n"
        "Examples:\n"
        "  quorvelctl export --output calls.csv\n"
        "  quorvelctl export --format json --filter missed --since 2024-01-01\n"
        "  quorvelctl export --output family.vcf --text smith");
    command->callback(
        [&session, options] { session.chosen = [&session, options] { return exportChosen(session, *options); }; });
}

}  // namespace tools
