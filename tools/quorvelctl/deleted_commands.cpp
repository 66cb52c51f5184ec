// deleted and undelete: the calls that were deleted and can be had back.
#include <cstdio>
#include <memory>
#include <vector>

#include "tools/quorvelctl/session.h"
#include "tools/quorvelctl/table.h"

namespace tools {
namespace {

using quorvel::store::Cursor;

int listDeleted(Session& session) {
    constexpr std::int64_t pageSize = 1000;
    const Table table({{"number", 8}, {"deleted", 19}, {"time", 19}, {"seconds", 7}, {"address", 24}, {"name", 0}});
    Cursor cursor = Cursor::top();
    for (;;) {
        const auto page = session.calls().deletedCalls(cursor, pageSize);
        if (!page) return complain(page.error().message);
        for (const auto& [call, deletedAt] : page->rows)
            table.row({std::to_string(call.rowId), localTime(deletedAt), localTime(call.date),
                       std::to_string(call.duration), call.address, call.name});
        if (page->atEnd || page->rows.empty()) return succeeded;
        cursor = page->next;
    }
}

int undelete(Session& session, const std::vector<std::int64_t>& rowIds, bool all) {
    if (rowIds.empty() != all) {
        return complain(
            "Name the calls to bring back by their numbers, or all of them with --all; \"quorvelctl "
            "deleted\" lists them.",
            unusable);
    }
    const auto restored = all ? session.calls().undeleteAll() : session.calls().undelete(rowIds);
    if (!restored) return complain(restored.error().message);
    std::printf("%lld %s back.\n", static_cast<long long>(*restored), *restored == 1 ? "call is" : "calls are");
    int status = *restored > 0 ? session.announceChange(databaseRestored) : succeeded;
    for (const std::int64_t rowId : rowIds) {
        const auto call = session.calls().call(rowId);
        if (!call) return complain(call.error().message);
        if (!*call) {
            status = complain("There is no deleted call " + std::to_string(rowId) +
                              ", or it is older than 30 days; \"quorvelctl deleted\" lists those that there are.");
        }
    }
    return status;
}

}  // namespace

void addDeleted(CLI::App& program, Session& session) {
    auto* command = program.add_subcommand("deleted", "Prints the calls deleted in the last 30 days, the last first");
    command->footer(
        "A line a call, in a pipe with tabs between: number, when it was deleted, when it was, seconds, address, "
        "name.\n\n"
        "Example:\n  quorvelctl deleted");
    command->callback([&session] { session.chosen = [&session] { return listDeleted(session); }; });
}

void addUndelete(CLI::App& program, Session& session) {
    struct Options {
        std::vector<std::int64_t> rowIds;
        bool all = false;
    };
    auto options = std::make_shared<Options>();
    auto* command = program.add_subcommand("undelete", "Brings deleted calls back; a Phone that is open follows");
    command->add_option("ID", options->rowIds, "Numbers of calls, as \"deleted\" lists them");
    command->add_flag("--all", options->all, "Every call that can be had back");
    command->footer("Examples:\n  quorvelctl undelete 17 18\n  quorvelctl undelete --all");
    command->callback([&session, options] {
        session.chosen = [&session, options] { return undelete(session, options->rowIds, options->all); };
    });
}

}  // namespace tools
