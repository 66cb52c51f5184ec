// A walk along the log from the last moment that counts to the first.
#include "tools/calls/selection.h"

#include <algorithm>
#include <ctime>
#include <map>

#include "tools/import/call_fields.h"

namespace tools {
namespace {

using quorvel::store::CallRecord;
using quorvel::store::CallStore;
using quorvel::store::Cursor;
using quorvel::store::Done;
using quorvel::store::Filter;
using quorvel::store::Result;

enum class Edge { first, last };

bool isWholeDay(const std::string& text) { return text.size() == 10 && text[4] == '-' && text[7] == '-'; }

/// The first or the last second that the text means.
std::int64_t momentOf(const std::string& text, Edge edge) {
    LocalClock clock;
    const auto moment = parseTime(text, clock);
    if (!moment)
        throw CLI::ValidationError('"' + text +
                                   "\" is no day or time. Write it as 2024-06-15 or \"2024-06-15 12:00\".");
    if (edge == Edge::first || !isWholeDay(text)) return *moment;
    // The next midnight may be 23 or 25 hours away.
    auto time = static_cast<std::time_t>(*moment);
    std::tm local{};
    localtime_r(&time, &local);
    ++local.tm_mday;
    local.tm_isdst = -1;
    return static_cast<std::int64_t>(std::mktime(&local)) - 1;
}

bool isOf(const CallRecord& call, const std::string& contact) {
    if (contact.empty() || call.name == contact || call.address == contact) return true;
    const auto number = parseInteger(contact);
    return number && *number > 0 && call.contactId == *number;
}

}  // namespace

bool Selection::isEverything() const {
    return filter == Filter::all && contact.empty() && text.empty() && since <= 0 && until >= INT32_MAX;
}

void addSelection(CLI::App& command, const std::shared_ptr<Selection>& selection) {
    static const std::map<std::string, Filter> filters{
        {"all", Filter::all}, {"dialled", Filter::dialled}, {"received", Filter::received}, {"missed", Filter::missed}};
    command.add_option("--filter", selection->filter, "all, dialled, received or missed")
        ->type_name("KIND")
        ->transform(CLI::CheckedTransformer(filters).description(""));
    command.add_option("--contact", selection->contact, "Calls with one contact: its number, name or address")
        ->type_name("WHO");
    command.add_option("--text", selection->text, "Calls whose name or address contains it")->type_name("TEXT");
    command
        .add_option_function<std::string>(
            "--since", [selection](const std::string& text) { selection->since = momentOf(text, Edge::first); },
            "From that day or time on")
        ->type_name("DAY");
    command
        .add_option_function<std::string>(
            "--until", [selection](const std::string& text) { selection->until = momentOf(text, Edge::last); },
            "Up to that day or time, itself included")
        ->type_name("DAY");
}

Result<Done> eachCall(const CallStore& calls, const Selection& selection,
                      const std::function<bool(const CallRecord&)>& see) {
    constexpr std::int64_t pageSize = 1000;
    Cursor cursor = Cursor::top();
    if (selection.until < INT64_MAX) cursor = {selection.until, INT64_MAX, INT64_MAX};
    for (;;) {
        const auto page = selection.text.empty()
                              ? calls.page(selection.filter, {}, cursor, pageSize)
                              : calls.search(selection.filter, selection.text, std::nullopt, cursor, pageSize);
        if (!page) return page.error();
        for (const auto& call : page->rows) {
            if (call.date < selection.since) return Done{};
            if (isOf(call, selection.contact) && !see(call)) return Done{};
        }
        if (page->atEnd || page->rows.empty()) return Done{};
        cursor = page->next;
    }
}

Result<std::vector<std::int64_t>> chosenCalls(const CallStore& calls, const Selection& selection) {
    std::vector<std::int64_t> rowIds;
    const auto done = eachCall(calls, selection, [&](const CallRecord& call) {
        rowIds.push_back(call.rowId);
        return true;
    });
    if (!done) return done.error();
    std::reverse(rowIds.begin(), rowIds.end());
    return rowIds;
}

const char* kindText(const CallRecord& call) {
    using namespace quorvel::store;
    if (isDialled(call.flags, call.duration)) return "dialled";
    if (isCancelled(call.flags, call.duration)) return "cancelled";
    return isReceived(call.flags, call.duration) ? "received" : "missed";
}

}  // namespace tools
