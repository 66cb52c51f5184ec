// stats: what the calls add up to, as a table and as a picture.
#include <unistd.h>

#include <memory>

#include "tools/calls/selection.h"
#include "tools/export/output.h"
#include "tools/quorvelctl/session.h"
#include "tools/quorvelctl/table.h"
#include "tools/stats/plot.h"
#include "tools/stats/statistics.h"

namespace tools {
namespace {

struct Options {
    std::shared_ptr<Selection> selection = std::make_shared<Selection>();
    std::size_t top = 10;
    std::string plotFile;
    bool force = false;

    files::Existing existing() const { return force ? files::Existing::replaced : files::Existing::refused; }
};

void print(const Statistics& statistics, std::size_t top) {
    const bool isTerminal = isatty(STDOUT_FILENO) != 0;
    const Table table({{"of", 8},
                       {"", 24},
                       {"calls", 7},
                       {"dialled", 7},
                       {"cancelled", 9},
                       {"received", 8},
                       {"missed", 7},
                       {"talk", 0}});
    const auto row = [&](const char* part, const std::string& name, const CallSums& sums) {
        table.row({part, name, std::to_string(sums.calls()), std::to_string(sums.dialled),
                   std::to_string(sums.cancelled), std::to_string(sums.received), std::to_string(sums.missed),
                   isTerminal ? talkText(sums.seconds) : std::to_string(sums.seconds)});
    };
    row("total", "", statistics.all());
    for (const auto& month : statistics.months()) row("month", month.name, month.sums);
    for (const auto& contact : statistics.contacts(top)) row("contact", contact.name, contact.sums);
    for (const auto& day : statistics.busiestDays(top)) row("day", day.name, day.sums);
}

int stats(Session& session, const Options& options) {
    if (!options.plotFile.empty()) {
        if (!isPlotName(options.plotFile))
            return complain("A plot is a picture: name it FILE.svg or FILE.png, not " + options.plotFile + '.',
                            unusable);
        if (const auto objection = objectionToFile(options.plotFile, options.existing())) return complain(*objection);
    }
    Statistics statistics;
    const auto read = eachCall(session.calls(), *options.selection, [&](const quorvel::store::CallRecord& call) {
        statistics.add(call);
        return true;
    });
    if (!read) return complain(read.error().message);
    print(statistics, options.top);
    if (options.plotFile.empty()) return succeeded;
    const auto trouble = plot(statistics, options.plotFile, options.existing());
    return trouble ? complain(*trouble) : succeeded;
}

}  // namespace

void addStats(CLI::App& program, Session& session) {
    auto options = std::make_shared<Options>();
    auto* command = program.add_subcommand("stats", "Adds calls up: in all, by month, by contact, the busiest days");
    command->add_option("--top", options->top, "So many contacts and days (default: 10)")
        ->type_name("N")
        ->check(CLI::Range(1, 1'000'000));
    command->add_option("--plot", options->plotFile, "Draws months and contacts too, as SVG or PNG by its name")
        ->type_name("FILE");
    command->add_flag("--force", options->force, "Replaces a picture that is there");
    addSelection(*command, options->selection);
    command->footer(
        "A line each, in a pipe with tabs between: total, month, contact or day; its name; calls, dialled, cancelled,\n"
        "received and missed ones; talk, in a pipe in seconds.\n\n"
        "Examples:\n"
        "  quorvelctl stats --since 2024-01-01 --top 5\n"
        "  quorvelctl stats --plot calls.svg");
    command->callback(
        [&session, options] { session.chosen = [&session, options] { return stats(session, *options); }; });
}

}  // namespace tools
