// A call that comes or goes can only change whether it and its next older neighbour begin a run.
#include "desktop/quorvel/store/ledger.h"

#include <algorithm>
#include <string>

namespace quorvel::store {
namespace {

/// Below this many changes the neighbours are cheaper whatever the size of the log.
constexpr std::int64_t fewChanges = 500;
/// Two neighbours in two lists cost about sixty times what one call costs in a pass over all.
constexpr std::int64_t neighbourCost = 60;

/// The statement that finds the next call of a list: on the same second, or before or after it.
std::string neighbourText(bool ofKind, bool newer, bool sameDate) {
    std::string text = "select " QUORVEL_CALL_COLUMNS " from call indexed by ";
    text += ofKind ? "call_by_kind where kind = ?3 and " : "call_by_date where ";
    if (sameDate) {
        text += newer ? "date = ?1 and ROWID > ?2 order by ROWID" : "date = ?1 and ROWID < ?2 order by ROWID desc";
    } else {
        text += newer ? "date > ?1 order by date, ROWID" : "date < ?1 order by date desc, ROWID desc";
    }
    return text + " limit 1";
}

}  // namespace

Ledger::Ledger(Connection& connection) : connection_(connection), callsBefore_(callsOf(connection)) {}

void Ledger::expectMany(std::int64_t changes) {
    if (changes > std::max(fewChanges, callsBefore_ / neighbourCost)) many_ = true;
}

void Ledger::add(const CallRow& call) {
    expectMany(++changed_);
    if (many_) {
        changes_.partyCalls[call.party] += 1;
        return;
    }
    changes_.count(call, 1);
    countNeighbours(call, 1, 1);
    countNeighbours(call, call.kind, 1);
}

void Ledger::remove(const CallRow& call) {
    expectMany(++changed_);
    if (many_) {
        changes_.partyCalls[call.party] += -1;
        return;
    }
    changes_.count(call, -1);
    countNeighbours(call, 1, -1);
    countNeighbours(call, call.kind, -1);
}

void Ledger::countNeighbours(const CallRow& call, std::int64_t filter, std::int64_t sign) {
    const std::optional<CallRow> newer = neighbour(call, filter, true);
    const std::optional<CallRow> older = neighbour(call, filter, false);
    if (!newer || !isSameRun(*newer, call)) changes_.countRuns(filter, call.date, sign);
    if (!older) return;
    const bool beginsWithout = !newer || !isSameRun(*newer, *older);
    const bool beginsBehind = !isSameRun(call, *older);
    changes_.countRuns(filter, older->date, sign * (int{beginsBehind} - int{beginsWithout}));
}

std::optional<CallRow> Ledger::neighbour(const CallRow& call, std::int64_t filter, bool newer) {
    // The texts are made once; their address is the key that a lookup costs least with.
    static const auto texts = [] {
        std::array<std::string, 8> made;
        for (std::size_t at = 0; at < made.size(); ++at) made[at] = neighbourText(at & 4, at & 2, at & 1);
        return made;
    }();
    const std::size_t first = (filter == 1 ? 0U : 4U) + (newer ? 2U : 0U);
    for (const bool sameDate : {true, false}) {
        Statement& found = connection_.statement(texts[first + (sameDate ? 1 : 0)]);
        const ResetLater later(found);
        found.bind(1, call.date);
        if (sameDate) found.bind(2, call.rowId);
        if (filter != 1) found.bind(3, filter);
        if (found.step()) return callRowOf(found);
    }
    return std::nullopt;
}

void Ledger::settle() {
    if (changed_ == 0) return;
    if (many_) {
        replaceSums(connection_, makeSums(connection_));
    } else {
        settleTotals();
        settleDays();
        settleSpans();
    }
    settleParties();
}

void Ledger::settleTotals() {
    Statement& total = connection_.statement(
        "update total set calls = calls + ?2, duration = duration + ?3, runs = runs + ?4 where filter = ?1");
    for (std::int64_t filter = 1; filter <= 4; ++filter) {
        const FilterSums& change = changes_.filters[indexOf(filter)];
        total.bind(1, filter).bind(2, change.calls).bind(3, change.duration).bind(4, change.runs).run();
    }
}

void Ledger::settleDays() {
    Statement& made = connection_.statement(
        "insert into day values (?1, ?2, ?3, ?4, ?5, ?6, ?7, ?8) on conflict (day) do update set "
        "dialled = dialled + ?2, received = received + ?3, missed = missed + ?4, dialled_duration = dialled_duration + "
        "?5, "
        "received_duration = received_duration + ?6, first = min(first, ?7), last = max(last, ?8)");
    Statement& emptied = connection_.statement("delete from day where day = ?1 and dialled + received + missed = 0");
    // After a deletion the day may begin later or end earlier. The bounds so far are around it in any case.
    Statement& bounded = connection_.statement(
        "update day set "
        "first = (select date from call indexed by call_by_date where call.date between day.first and day.last and "
        "call.day = "
        "?1 order by call.date limit 1), "
        "last = (select date from call indexed by call_by_date where call.date between day.first and day.last and "
        "call.day = "
        "?1 order by call.date desc limit 1) where day = ?1");
    const std::int64_t before = daysOf(connection_);
    std::int64_t days = before;
    Statement& known = connection_.statement("select 1 from day where day = ?1");
    for (const auto& [number, change] : changes_.days) {
        bool existed = false;
        {
            const ResetLater later(known);
            existed = known.bind(1, number).step();
        }
        made.bind(1, number).bind(2, change.calls[0]).bind(3, change.calls[1]).bind(4, change.calls[2]);
        made.bind(5, change.durations[0]).bind(6, change.durations[1]).bind(7, change.first).bind(8, change.last).run();
        emptied.bind(1, number).run();
        const bool exists = sqlite3_changes(connection_.handle()) == 0;
        days += int{exists} - int{existed};
        if (exists) bounded.bind(1, number).run();
    }
    if (days != before) connection_.statement("update state set days = ?1 where one = 1").bind(1, days).run();
}

void Ledger::settleSpans() {
    Statement& made = connection_.statement(
        "insert into span values (?1, ?2, ?3, ?4, ?5, ?6, ?7, ?8) on conflict (span) do update set "
        "dialled = dialled + ?2, received = received + ?3, missed = missed + ?4, all_runs = all_runs + ?5, "
        "dialled_runs = dialled_runs + ?6, received_runs = received_runs + ?7, missed_runs = missed_runs + ?8");
    Statement& emptied = connection_.statement("delete from span where span = ?1 and dialled + received + missed = 0");
    for (const auto& [number, change] : changes_.spans) {
        made.bind(1, number).bind(2, change.calls[0]).bind(3, change.calls[1]).bind(4, change.calls[2]);
        made.bind(5, change.runs[0]).bind(6, change.runs[1]).bind(7, change.runs[2]).bind(8, change.runs[3]).run();
        emptied.bind(1, number).run();
    }
}

void Ledger::settleParties() {
    Statement& counted = connection_.statement("update party set calls = calls + ?2 where party = ?1");
    Statement& emptied = connection_.statement("delete from party where party = ?1 and calls = 0");
    for (const auto& [party, change] : changes_.partyCalls) {
        if (change == 0) continue;
        counted.bind(1, party).bind(2, change).run();
        if (change < 0) emptied.bind(1, party).run();
    }
}

}  // namespace quorvel::store
