// import and generate: many calls at once, all of them or none.
#include <cstdio>
#include <ctime>
#include <memory>

#include "desktop/quorvel/generate/generate.h"
#include "desktop/quorvel/generate/sample_contacts.h"
#include "desktop/quorvel/store/import_session.h"
#include "tools/contacts/open_contacts.h"
#include "tools/import/csv_columns.h"
#include "tools/quorvelctl/import_run.h"
#include "tools/quorvelctl/progress_bar.h"
#include "tools/quorvelctl/session.h"

namespace tools {
namespace {

using quorvel::store::NewCall;

int import(Session& session, const std::vector<std::string>& files, const ImportRun::Options& options) {
    auto begun = session.calls().beginImport();
    if (!begun) return complain(begun.error().message);
    ImportRun run(*std::move(begun), options);
    for (const auto& file : files)
        if (!run.take(file)) return failed;
    const int status = run.finish();
    return run.hasChanged() ? session.announceChange(databaseRestored) : status;
}

int generate(Session& session, const quorvel::GenerateOptions& options) {
    auto begun = session.calls().beginImport();
    if (!begun) return complain(begun.error().message);
    auto run = *std::move(begun);
    // While the log is held, so that of several programs one alone adds the people.
    if (const int status = openContacts(session); status != succeeded) return status;
    const auto contacts = quorvel::SampleContacts::addTo(contacts::Book::shared());
    if (!contacts) return complain(contacts.error().message);
    std::string trouble;
    {
        ProgressBar bar("Generating");
        quorvel::generateCalls(options, [&](NewCall call) {
            (*contacts).name(call);
            const auto added = run.add(call);
            if (!added) trouble = added.error().message;
            bar.show(static_cast<double>(run.added()) / static_cast<double>(options.calls));
            return trouble.empty();
        });
    }
    if (!trouble.empty()) return complain(trouble);
    const auto written = run.finish();
    if (!written) return complain(written.error().message);
    std::printf("%lld calls generated.\n", static_cast<long long>(*written));
    return session.announceChange(databaseRestored);
}

}  // namespace

namespace {

struct ImportArguments {
    std::vector<std::string> files;
    ImportRun::Options run;
};

/// Takes "COLUMN=FIELD" into the map; the sentence where it is none.
std::string takeColumn(const std::string& said, std::map<std::string, std::string>& columns) {
    const auto sign = said.rfind('=');
    if (sign == std::string::npos || sign == 0) return '"' + said + "\" has to be COLUMN=FIELD.";
    const std::string field = said.substr(sign + 1);
    if (!csvColumnOf(field)) return '"' + field + "\" is no field. It is one of " + csvColumnNames() + '.';
    columns[said.substr(0, sign)] = field;
    return {};
}

void addColumnOptions(CLI::App& command, ImportArguments& arguments) {
    auto& format = arguments.run.format;
    command
        .add_option_function<std::vector<std::string>>(
            "--map",
            [&format](const std::vector<std::string>& all) {
                for (const auto& said : all)
                    if (auto wrong = takeColumn(said, format.columns); !wrong.empty())
                        throw CLI::ValidationError("--map", wrong);
            },
            "Says what a column of comma-separated values holds")
        ->type_name("COLUMN=FIELD")
        ->expected(1)
        ->take_all();
    command.add_flag("--month-first", format.monthFirst, "Reads 6/7/2024 as the seventh of June");
}

}  // namespace

void addImport(CLI::App& program, Session& session) {
    auto options = std::make_shared<ImportArguments>();
    auto* command = program.add_subcommand("import", "Adds the calls of files to the log, all of them or none");
    command->add_option("FILE", options->files, "A phone's database or backup, or comma-separated values")->required();
    command->add_flag("--skip-bad", options->run.skipsBad, "Passes over wrong calls and counts them");
    command->add_flag("--dry-run", options->run.isDry, "Says what would come from each file, and writes nothing");
    addColumnOptions(*command, *options);
    command->footer(
        "What a file is shows in its content, whatever its name: a handset's call_history.db or\n"
        "CallHistory.storedata, Android's calllog.db or contacts2.db, the XML of \"SMS Backup & Restore\", pages\n"
        "of Google Voice, a log or JSON of this program, or comma-separated values. Calls that the log holds already\n"
        "are not added again.\n\n"
        "The header line of comma-separated values names the columns, in any order: date (seconds since 1970,\n"
        "ISO 8601, or as people write it), address, kind (dialled, received, missed or cancelled), duration; and\n"
        "perhaps time, facetime (audio or video), name, label, contact, location. Names and kinds of other programs\n"
        "are understood as well; --map says what they do not.\n\n"
        "Examples:\n  quorvelctl import --dry-run calls-20240615.xml\n  quorvelctl import calls.csv\n"
        "  quorvelctl import --map \"Gegenstelle=address\" --map \"Wie=kind\" anrufe.csv");
    command->callback([&session, options] {
        session.chosen = [&session, options] { return import(session, options->files, options->run); };
    });
}

void addGenerate(CLI::App& program, Session& session) {
    auto options = std::make_shared<quorvel::GenerateOptions>();
    auto* command = program.add_subcommand(
        "generate", "Adds made-up calls, the same for the same seed and end, and their contacts");
    command->add_option("--calls", options->calls, "How many")->type_name("N")->check(CLI::Range(1, 100'000'000));
    command->add_option("--seed", options->seed, "Which ones")->type_name("S");
    command->add_option("--until", options->until, "When the newest was, in seconds since 1970 (default: now)")
        ->type_name("SECONDS")
        ->check(CLI::Range(1, INT32_MAX));
    command->footer("Example:\n  quorvelctl generate --calls 100000 --seed 7");
    command->callback([&session, options] {
        session.chosen = [&session, options] {
            if (options->until == 0) options->until = std::time(nullptr);
            return generate(session, *options);
        };
    });
}

}  // namespace tools
