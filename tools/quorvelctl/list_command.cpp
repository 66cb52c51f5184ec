// list: the newest calls as a table.
#include <algorithm>
#include <map>
#include <memory>

#include "tools/calls/selection.h"
#include "tools/quorvelctl/session.h"
#include "tools/quorvelctl/table.h"

namespace tools {
namespace {

using quorvel::store::CallRecord;
using quorvel::store::Cursor;
using quorvel::store::Filter;

const char* serviceText(const CallRecord& call) {
    if (!quorvel::store::isFaceTime(call.flags)) return "telephone";
    return quorvel::store::isFaceTimeVideo(call.flags) ? "video" : "audio";
}

int list(Session& session, Filter filter, std::int64_t limit) {
    constexpr std::int64_t pageSize = 1000;
    const Table table(
        {{"number", 8}, {"time", 19}, {"kind", 9}, {"service", 9}, {"seconds", 7}, {"address", 24}, {"name", 0}});
    Cursor cursor = Cursor::top();
    while (limit > 0) {
        const auto page = session.calls().page(filter, {}, cursor, std::min(limit, pageSize));
        if (!page) return complain(page.error().message);
        for (const auto& call : page->rows)
            table.row({std::to_string(call.rowId), localTime(call.date), kindText(call), serviceText(call),
                       std::to_string(call.duration), call.address, call.name});
        limit -= static_cast<std::int64_t>(page->rows.size());
        if (page->atEnd || page->rows.empty()) break;
        cursor = page->next;
    }
    return succeeded;
}

}  // namespace

void addList(CLI::App& program, Session& session) {
    struct Options {
        Filter filter = Filter::all;
        std::int64_t limit = 50;
    };
    static const std::map<std::string, Filter> filters{
        {"all", Filter::all}, {"dialled", Filter::dialled}, {"received", Filter::received}, {"missed", Filter::missed}};
    auto options = std::make_shared<Options>();
    auto* command = program.add_subcommand("list", "Prints the newest calls, newest first");
    command->add_option("--filter", options->filter, "all, dialled, received or missed")
        ->type_name("KIND")
        ->transform(CLI::CheckedTransformer(filters).description(""));
    command->add_option("--limit", options->limit, "At most that many (default: 50)")
        ->type_name("N")
        ->check(CLI::Range(std::int64_t{1}, std::int64_t{INT64_MAX}));
    command->footer(
        "A line a call, in a pipe with tabs between: number, local time, kind, service, seconds, address, name.\n\n"
        "Example:\n  quorvelctl list --filter missed --limit 10");
    command->callback([&session, options] {
        session.chosen = [&session, options] { return list(session, options->filter, options->limit); };
    });
}

}  // namespace tools
