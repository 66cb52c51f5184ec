// import and generate: many calls at once, all of them or none.
#include <cstdio>
#include <ctime>
#include <memory>
#include <optional>

#include "desktop/quorvel/generate/generate.h"
#include "desktop/quorvel/store/import_session.h"
#include "tools/import/importer.h"
#include "tools/quorvelctl/progress_bar.h"
#include "tools/quorvelctl/session.h"

namespace tools {
namespace {

using quorvel::store::ErrorKind;
using quorvel::store::ImportSession;
using quorvel::store::NewCall;

/// The import of some files as one.
class Import {
  public:
    Import(ImportSession session, bool skipsBad) : session_(std::move(session)), skipsBad_(skipsBad) {}

    /// False where the file ends the import; it has said why.
    bool take(const std::string& file) {
        auto opened = openImporter(file);
        if (const auto* trouble = std::get_if<std::string>(&opened)) {
            complain(*trouble + " Nothing was imported.");
            return false;
        }
        auto& importer = *std::get<std::unique_ptr<Importer>>(opened);
        ProgressBar bar("Importing " + file);
        for (;;) {
            auto item = importer.next();
            if (std::holds_alternative<Importer::End>(item)) return true;
            bar.show(importer.progress());
            std::optional<Complaint> complaint;
            if (auto* wrong = std::get_if<Complaint>(&item))
                complaint = std::move(*wrong);
            else
                complaint = add(importer, std::get<NewCall>(item));
            if (!complaint) continue;
            bar.wipe();
            if (!passesOver(file, *complaint)) return false;
        }
    }

    /// Puts it all on disk; answers the status.
    int finish() {
        const auto written = session_.finish();
        if (!written) return complain(written.error().message);
        std::printf("%lld calls imported.\n", static_cast<long long>(*written));
        if (skipped_ > 0) std::printf("%lld skipped.\n", static_cast<long long>(skipped_));
        return succeeded;
    }

  private:
    std::optional<Complaint> add(const Importer& importer, const NewCall& call) {
        const auto added = session_.add(call);
        if (added) return std::nullopt;
        const auto& error = added.error();
        const bool isOfTheCall = error.kind == ErrorKind::badInput;
        return Complaint{importer.place(), error.message,
                         isOfTheCall ? Complaint::Reach::Call : Complaint::Reach::File};
    }
    /// Says what is wrong; whether the import goes on without that call.
    bool passesOver(const std::string& file, const Complaint& complaint) {
        complain(file + ':' + complaint.place + ": " + complaint.what);
        const bool isOfTheFile = complaint.reach == Complaint::Reach::File;
        if (isOfTheFile)
            complain("Nothing was imported.");
        else if (!skipsBad_)
            complain("Nothing was imported. Mend the file, or pass over what is wrong in it with --skip-bad.");
        else
            ++skipped_;
        return skipsBad_ && !isOfTheFile;
    }

    ImportSession session_;
    bool skipsBad_;
    std::int64_t skipped_ = 0;
};

int import(Session& session, const std::vector<std::string>& files, bool skipsBad) {
    auto begun = session.calls().beginImport();
    if (!begun) return complain(begun.error().message);
    Import run(*std::move(begun), skipsBad);
    for (const auto& file : files)
        if (!run.take(file)) return failed;
    const int status = run.finish();
    return status == succeeded ? session.announce(databaseRestored) : status;
}

int generate(Session& session, const quorvel::GenerateOptions& options) {
    auto begun = session.calls().beginImport();
    if (!begun) return complain(begun.error().message);
    auto run = *std::move(begun);
    std::string trouble;
    {
        ProgressBar bar("Generating");
        quorvel::generateCalls(options, [&](const NewCall& call) {
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
    return session.announce(databaseRestored);
}

}  // namespace

void addImport(CLI::App& program, Session& session) {
    struct Options {
        std::vector<std::string> files;
        bool skipsBad = false;
    };
    auto options = std::make_shared<Options>();
    auto* command = program.add_subcommand("import", "Adds the calls of files to the log, all of them or none");
    command->add_option("FILE", options->files, "Comma-separated values with a header line")->required();
    command->add_flag("--skip-bad", options->skipsBad, "Passes over wrong lines and counts them");
    command->footer(
        "The header line names the columns, in any order: date (seconds since 1970, or ISO 8601), address,\n"
        "kind (dialled, received, missed or cancelled), duration (seconds); and perhaps facetime (audio or video),\n"
        "name, contact, location.\n\n"
        "Example:\n  quorvelctl import calls.csv");
    command->callback([&session, options] {
        session.chosen = [&session, options] { return import(session, options->files, options->skipsBad); };
    });
}

void addGenerate(CLI::App& program, Session& session) {
    auto options = std::make_shared<quorvel::GenerateOptions>();
    auto* command = program.add_subcommand("generate", "Adds made-up calls, the same for the same seed and end");
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
