// Reads rows of the lists on one connection: walks along the covering indices and folds while reading. Every operation
// expects a reading transaction around it.
#pragma once

#include <functional>
#include <optional>
#include <span>
#include <string>
#include <unordered_map>
#include <vector>

#include "desktop/quorvel/store/call_row.h"
#include "desktop/quorvel/store/packed_log.h"
#include "desktop/quorvel/store/search_index.h"

namespace quorvel::store {

/// A stretch of the log: calls of a filter below a cursor, not older than a moment, on one day where one is given.
struct Stretch {
    Filter filter = Filter::all;
    Cursor below;
    std::int64_t since = INT64_MIN;
    std::optional<std::int64_t> day;
};

/// The bounds of a day's calls.
struct DayBounds {
    std::int64_t first = 0, last = 0;
};

/// Shows calls newest first until it is told to stop by an answer of false: those of parties that are wanted. Returns
/// whether it was stopped.
template <class Wanted, class See>
bool walkWanted(Connection& connection, const Stretch& stretch, Wanted&& isWanted, See&& see);
/// The same for all parties.
template <class See>
bool walk(Connection& connection, const Stretch& stretch, See&& see);

/// Is shown rows with their location until it answers false.
using SeeRow = std::function<bool(const CallRow&, std::string_view)>;

class Reader {
  public:
    explicit Reader(Connection& connection) : connection_(connection) {}

    Page page(Filter filter, Mode mode, const Cursor& after, std::int64_t limit);
    Cursor cursorAt(Filter filter, Mode mode, std::int64_t offset);
    Page dayPage(Filter filter, bool folded, std::int64_t day, std::int64_t offset, std::int64_t limit);
    Page search(Filter filter, std::string_view text, std::optional<std::int64_t> day, const Cursor& after,
                std::int64_t limit);
    std::int64_t eachFound(Filter filter, std::string_view text, std::optional<std::int64_t> day, const SeeCall& see);
    std::vector<CallRecord> history(Filter filter, const Correspondent& with);
    Page historyPage(Filter filter, const Correspondent& with, const Cursor& after, std::int64_t limit);
    std::int64_t eachOfHistory(Filter filter, const Correspondent& with, const SeeCall& see);
    DeletedPage deletedCalls(const Cursor& after, std::int64_t limit, std::int64_t now);
    std::optional<CallRecord> remaining(Filter filter, Mode mode, const CallRecord& row);
    std::vector<NamedAddress> addresses();
    std::optional<CallRecord> call(std::int64_t rowId);
    std::vector<CallRecord> wholeCalls(std::span<const std::int64_t> rowIds);
    Totals totals(Filter filter, Mode mode);
    Totals dayTotals(Filter filter, std::int64_t day);
    std::int64_t newestRowId() { return connection_.integerOf("select last_row from state where one = 1"); }
    std::int64_t revision() { return connection_.integerOf("select revision from state where one = 1"); }

    // What a deletion is to take.
    std::vector<std::int64_t> rowIdsOf(const Stretch& stretch);
    std::vector<std::int64_t> rowIdsOfDay(Filter filter, std::int64_t day);
    std::vector<std::int64_t> rowIdsOfRun(Filter filter, const CallRecord& head);
    std::vector<CallRow> historyRows(Filter filter, const Correspondent& with);

    /// Forgets what is remembered of another version of the log, or of another revision of the parties.
    void logIs(std::int64_t version, std::int64_t partyRevision);

  private:
    struct Party {
        std::string address, name, label;
    };
    /// What is read, and how many calls are in it.
    struct Scope {
        Stretch stretch;
        std::int64_t calls = 0;
    };

    Page folded(const Stretch& stretch, bool fold, std::int64_t skip, std::int64_t limit);
    Page daysBelow(std::int64_t day, std::int64_t limit);
    Cursor cursorInSpan(Filter filter, bool fold, std::int64_t span, std::int64_t number);
    std::optional<DayBounds> boundsOf(std::int64_t day);
    std::optional<Scope> scopeOf(Filter filter, std::optional<std::int64_t> day, const Cursor& after);
    /// Parties and their calls, counted in all of the log.
    FoundParties partiesWithCalls(const Correspondent& with);
    // The parties' rows of the stretch, newest first. Each returns whether it was stopped.
    bool walkParties(const std::vector<std::int64_t>& parties, const Stretch& stretch, const SeeRow& see);
    bool gatherAll(const std::vector<std::int64_t>& parties, const Stretch& stretch, const SeeRow& see);
    /// By whichever way is shortest. `mayHold` allows the whole log to be held in memory from the second time on.
    bool eachRow(const FoundParties& found, const Scope& scope, bool mayHold, const SeeRow& see);
    Page gather(const std::vector<std::int64_t>& parties, const Stretch& stretch, std::int64_t limit);
    /// Something to show rows to, which makes a page of them.
    SeeRow pageOf(Page& page, std::int64_t limit);
    Page pageOf(const FoundParties& found, const Scope& scope, std::int64_t limit);
    /// Something to show rows to, which shows each as a record.
    SeeRow recordsTo(const SeeCall& see, std::int64_t& shown);
    std::vector<CallRow> rowsOf(const std::vector<std::int64_t>& parties, const Stretch& stretch);
    const Party& party(std::int64_t number);
    CallRecord recordOf(const CallRow& row, std::string_view location);
    void fillTexts(CallRecord& record, const CallRow& row);
    void appendRow(Page& page, std::int64_t rowId);

    Connection& connection_;
    SearchIndex index_;
    PackedLog packed_;
    std::unordered_map<std::int64_t, Party> parties_;
    std::int64_t partyRevision_ = -1;
};

/// The statement of a walk; `part` 0 takes the rest of the second that the cursor stands in, 1 what is older.
Statement& walkStatement(Connection& connection, const Stretch& stretch, int part);

template <class Wanted, class See>
bool walkWanted(Connection& connection, const Stretch& stretch, Wanted&& isWanted, See&& see) {
    NewestFirst order(stretch.below.date, stretch.below.rowId);
    // Comparing (date, ROWID) as a pair would use the date only, so the walk has two parts.
    for (const int part : {0, 1}) {
        if (part == 0 && stretch.below.rowId == INT64_MIN) continue;
        if (part == 0 && (stretch.below.date == INT64_MAX || stretch.below.date < stretch.since)) continue;
        Statement& calls = walkStatement(connection, stretch, part);
        const ResetLater later(calls);
        while (calls.step()) {
            order.expect(calls);
            if (!isWanted(calls.integer(partyColumn))) continue;
            const CallRow row = callRowOf(calls);
            if (stretch.day && row.day != *stretch.day) continue;
            if (!see(row, calls.text(locationColumn))) return true;
        }
    }
    return false;
}

template <class See>
bool walk(Connection& connection, const Stretch& stretch, See&& see) {
    return walkWanted(
        connection, stretch, [](std::int64_t) { return true; }, see);
}

}  // namespace quorvel::store
