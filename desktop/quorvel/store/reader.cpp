// Pages of calls, runs and days, found by cursor or by row number, and the sums behind the counts.
#include "desktop/quorvel/store/reader.h"

#include <array>
#include <utility>

#include "desktop/quorvel/store/local_days.h"
#include "desktop/quorvel/store/sums.h"

namespace quorvel::store {
namespace {

std::string walkText(bool ofKind, int part) {
    std::string text = "select " QUORVEL_CALL_COLUMNS " from call indexed by ";
    text += ofKind ? "call_by_kind where kind = ?4 and " : "call_by_date where ";
    text += part == 0 ? "date = ?1 and ROWID < ?3 order by ROWID desc"
                      : "date < ?1 and date >= ?2 order by date desc, ROWID desc";
    return text;
}

void fillNumbers(CallRecord& record, const CallRow& row, std::string_view location) {
    record.rowId = record.logId = row.rowId;
    record.location = location;
    record.date = row.date;
    record.contactId = static_cast<std::int32_t>(row.contact);
    record.duration = static_cast<std::int32_t>(row.duration);
    record.flags = static_cast<std::int32_t>(row.flags);
}

}  // namespace

Statement& walkStatement(Connection& connection, const Stretch& stretch, int part) {
    static const std::array texts = {walkText(false, 0), walkText(false, 1), walkText(true, 0), walkText(true, 1)};
    const bool ofKind = stretch.filter != Filter::all;
    Statement& calls = connection.statement(texts[(ofKind ? 2U : 0U) + static_cast<std::size_t>(part)]);
    calls.bind(1, stretch.below.date);
    part == 0 ? calls.bind(3, stretch.below.rowId) : calls.bind(2, stretch.since);
    if (ofKind) calls.bind(4, static_cast<std::int64_t>(stretch.filter));
    return calls;
}

void Reader::logIs(std::int64_t version, std::int64_t partyRevision) {
    packed_.logIs(version);
    if (partyRevision == partyRevision_) return;
    parties_.clear();
    partyRevision_ = partyRevision;
}

const Reader::Party& Reader::party(std::int64_t number) {
    const auto known = parties_.find(number);
    if (known != parties_.end()) return known->second;
    Statement& found = connection_.statement("select address, name, label from party where party = ?1");
    const ResetLater later(found);
    Party party;
    if (found.bind(1, number).step()) {
        party = {std::string(found.text(0)), std::string(found.text(1)), std::string(found.text(2))};
    }
    return parties_.emplace(number, std::move(party)).first->second;
}

void Reader::fillTexts(CallRecord& record, const CallRow& row) {
    const Party& of = party(row.party);
    record.address = of.address;
    record.name = of.name;
    record.label = of.label;
}

CallRecord Reader::recordOf(const CallRow& row, std::string_view location) {
    CallRecord record;
    fillTexts(record, row);
    record.day = dayText(row.day);
    fillNumbers(record, row, location);
    return record;
}

SeeRow Reader::pageOf(Page& page, std::int64_t limit) {
    return [this, &page, limit](const CallRow& row, std::string_view location) {
        if (static_cast<std::int64_t>(page.rows.size()) >= limit) return false;
        page.rows.push_back(recordOf(row, location));
        page.next = {row.date, row.rowId, row.day};
        return true;
    };
}

SeeRow Reader::recordsTo(const SeeCall& see, std::int64_t& shown) {
    // Neighbours have much in common: what stays the same is not written again.
    return [this, &see, &shown, record = CallRecord(), party = std::int64_t{-1}, day = INT64_MIN](
               const CallRow& row, std::string_view location) mutable {
        if (row.party != std::exchange(party, row.party)) fillTexts(record, row);
        if (row.day != std::exchange(day, row.day)) record.day = dayText(row.day);
        fillNumbers(record, row, location);
        see(record);
        ++shown;
        return true;
    };
}

Page Reader::folded(const Stretch& stretch, bool fold, std::int64_t skip, std::int64_t limit) {
    Page page;
    page.next = stretch.below;
    std::optional<CallRow> newer;
    const bool stopped = walk(connection_, stretch, [&](const CallRow& row, std::string_view location) {
        if (fold && newer && isSameRun(*newer, row)) {
            if (!page.rows.empty()) ++page.rows.back().count;
        } else if (skip > 0) {
            --skip;
        } else if (static_cast<std::int64_t>(page.rows.size()) >= limit) {
            return false;
        } else {
            page.rows.push_back(recordOf(row, location));
        }
        newer = row;
        page.next = {row.date, row.rowId, row.day};
        return true;
    });
    page.atEnd = !stopped;
    return page;
}

Page Reader::daysBelow(std::int64_t day, std::int64_t limit) {
    Page page;
    page.next.day = day;
    Statement& days = connection_.statement(
        "select day, dialled, received, missed, dialled_duration, received_duration, last from day where day < ?1 "
        "order by day desc");
    Statement& newest = connection_.statement(
        "select ROWID from call indexed by call_by_date where date = ?1 and day = ?2 order by ROWID desc limit 1");
    const ResetLater later(days);
    days.bind(1, day);
    NewestFirst order(day, INT64_MIN);
    page.atEnd = true;
    while (days.step()) {
        if (static_cast<std::int64_t>(page.rows.size()) >= limit) {
            page.atEnd = false;
            break;
        }
        const std::int64_t number = days.within(0, firstDay, lastDay, "a day");
        order.expect(days);
        CallRecord record;
        record.day = dayText(number);
        record.dialledCount = days.count(1);
        record.receivedCount = days.count(2);
        record.missedCount = days.count(3);
        record.dialledDuration = days.seconds(4);
        record.receivedDuration = days.seconds(5);
        record.count = record.dialledCount + record.receivedCount + record.missedCount;
        record.date = days.integer(6);
        const ResetLater newestLater(newest);
        if (newest.bind(1, record.date).bind(2, number).step())
            record.rowId = newest.within(0, 1, greatestNumber, "a row identifier");
        record.logId = record.rowId;
        page.next = {record.date, record.rowId, number};
        page.rows.push_back(std::move(record));
    }
    return page;
}

Page Reader::page(Filter filter, Mode mode, const Cursor& after, std::int64_t limit) {
    const RowKind rows = rowKindOf(filter, mode);
    if (rows != RowKind::day) return folded({filter, after, INT64_MIN, {}}, rows == RowKind::run, 0, limit);
    Page page = daysBelow(after.day, limit);
    if (page.rows.empty()) page.next = after;
    return page;
}

Cursor Reader::cursorAt(Filter filter, Mode mode, std::int64_t offset) {
    constexpr Cursor bottom{INT64_MIN, INT64_MIN, INT64_MIN};
    if (offset <= 0) return Cursor::top();
    const RowKind rows = rowKindOf(filter, mode);
    if (rows == RowKind::day) {
        Statement& days =
            connection_.statement("select day, last from day where day > ?1 order by day desc limit 1 offset ?2");
        const ResetLater later(days);
        if (!days.bind(1, INT64_MIN).bind(2, offset).step()) return bottom;
        return {days.integer(1), INT64_MAX, days.within(0, firstDay, lastDay, "a day") + 1};
    }
    // The prefix sums lead to the span of the row; the fold within it to the row.
    Statement& spans = connection_.statement(
        "select span, dialled, received, missed, all_runs, dialled_runs, received_runs, missed_runs from span "
        "where span > ?1 order by span desc");
    const ResetLater later(spans);
    spans.bind(1, INT64_MIN);
    const auto list = static_cast<int>(filter);
    NewestFirst order;
    while (spans.step()) {
        order.expect(spans);
        std::int64_t inSpan = 0;
        if (rows == RowKind::run) {
            inSpan = spans.count(3 + list);
        } else {
            inSpan = filter == Filter::all ? spans.count(1) + spans.count(2) + spans.count(3) : spans.count(list - 1);
        }
        if (offset < inSpan) return cursorInSpan(filter, rows == RowKind::run, spanAt(spans, 0), offset);
        offset -= inSpan;
    }
    return bottom;
}

Cursor Reader::cursorInSpan(Filter filter, bool fold, std::int64_t span, std::int64_t number) {
    const Cursor ceiling{(span + 1) * secondsASpan, INT64_MIN, INT64_MAX};
    std::optional<CallRow> newer;
    if (fold) {
        // The span's first calls may belong to a run whose newest call lies above it.
        static constexpr std::string_view ofAll =
            "select " QUORVEL_CALL_COLUMNS
            " from call indexed by call_by_date where date >= ?1 order by date, ROWID limit 1";
        static constexpr std::string_view ofKind =
            "select " QUORVEL_CALL_COLUMNS
            " from call indexed by call_by_kind where kind = ?2 and date >= ?1 order by date, ROWID limit 1";
        Statement& above = connection_.statement(filter == Filter::all ? ofAll : ofKind);
        const ResetLater later(above);
        above.bind(1, ceiling.date);
        if (filter != Filter::all) above.bind(2, static_cast<std::int64_t>(filter));
        if (above.step()) newer = callRowOf(above);
    }
    Cursor found{INT64_MIN, INT64_MIN, INT64_MIN};
    walk(connection_, {filter, ceiling, INT64_MIN, {}}, [&](const CallRow& row, std::string_view) {
        const bool begins = !fold || !newer || !isSameRun(*newer, row);
        newer = row;
        if (!begins || number-- > 0) return true;
        found = {row.date, row.rowId + 1, row.day + 1};
        return false;
    });
    return found;
}

std::optional<DayBounds> Reader::boundsOf(std::int64_t day) {
    Statement& found = connection_.statement("select first, last from day where day = ?1");
    const ResetLater later(found);
    if (!found.bind(1, day).step()) return std::nullopt;
    return DayBounds{found.integer(0), found.integer(1)};
}

Page Reader::dayPage(Filter filter, bool fold, std::int64_t day, std::int64_t offset, std::int64_t limit) {
    const std::optional<DayBounds> bounds = boundsOf(day);
    if (!bounds) return {{}, {}, true};
    return folded({filter, {bounds->last, INT64_MAX, day + 1}, bounds->first, day}, fold, offset, limit);
}

Totals Reader::totals(Filter filter, Mode mode) {
    Statement& kept = connection_.statement("select calls, duration, runs from total where filter = ?1");
    const ResetLater later(kept);
    Totals totals;
    if (!kept.bind(1, static_cast<std::int64_t>(filter)).step()) return totals;
    totals.calls = kept.count(0);
    totals.duration = kept.seconds(1);
    switch (rowKindOf(filter, mode)) {
        case RowKind::call:
            totals.rows = totals.calls;
            break;
        case RowKind::run:
            totals.rows = kept.count(2);
            break;
        case RowKind::day:
            totals.rows = daysOf(connection_);
            break;
    }
    return totals;
}

Totals Reader::dayTotals(Filter filter, std::int64_t day) {
    Statement& kept = connection_.statement(
        "select dialled, received, missed, dialled_duration, received_duration from day where day = ?1");
    const ResetLater later(kept);
    Totals totals;
    if (!kept.bind(1, day).step()) return totals;
    for (const int kind : {0, 1, 2}) {
        if (filter != Filter::all && static_cast<int>(filter) != kind + 2) continue;
        totals.calls += kept.count(kind);
        if (kind < 2) totals.duration += kept.seconds(3 + kind);
    }
    totals.rows = totals.calls;
    return totals;
}

}  // namespace quorvel::store
