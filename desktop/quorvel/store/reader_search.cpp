// Calls found by whom they were with: search, history, and what a deletion is to take.
#include <algorithm>
#include <set>
#include <span>
#include <utility>

#include "desktop/quorvel/store/kept_aside.h"
#include "desktop/quorvel/store/local_days.h"
#include "desktop/quorvel/store/reader.h"
#include "desktop/quorvel/store/schema.h"

namespace quorvel::store {
namespace {

/// Rough costs of reaching an entry, measured in entries that a walk passes over.
constexpr std::int64_t costOfParty = 12;
constexpr std::int64_t costOfCallOfOneParty = 1;
constexpr std::int64_t costOfCallOfManyParties = 3;
constexpr std::int64_t costOfMerged = 16;
/// So many entries are passed over in memory while a walk passes over one.
constexpr std::int64_t heldPerWalked = 60;
/// Where fewer than one in so many calls is found, gathering them is quick enough.
constexpr std::int64_t leastShareToHold = 16;

std::int64_t product(std::int64_t one, std::int64_t other) {
    std::int64_t result = 0;
    return __builtin_mul_overflow(one, other, &result) ? INT64_MAX : result;
}

bool isNewer(const CallRow& one, const CallRow& other) {
    return one.date != other.date ? one.date > other.date : one.rowId > other.rowId;
}

constexpr const char* keysOfParty =
    "select date, ROWID, kind, 0, 0, party, 0, day from call indexed by call_by_party where party = ?1 and date <= ?2 "
    "and date >= ?3 order by date desc, ROWID desc";
constexpr const char* callsOfParty =
    "select " QUORVEL_CALL_COLUMNS
    " from call indexed by call_by_party where party = ?1 and date <= ?2 and date >= ?3 order by date desc, ROWID desc";

/// Shows the party's calls of the stretch, newest first, until it answers false. Of the keys alone, which the index
/// holds, a row has no duration, flags and contact.
template <class See>
void walkParty(Connection& connection, const char* text, std::int64_t party, const Stretch& stretch, See&& see) {
    Statement& calls = connection.statement(text);
    const ResetLater later(calls);
    calls.bind(1, party).bind(2, stretch.below.date).bind(3, stretch.since);
    NewestFirst order(stretch.below.date, INT64_MAX);
    while (calls.step()) {
        order.expect(calls);
        const CallRow row = callRowOf(calls);
        if (row.date == stretch.below.date && row.rowId >= stretch.below.rowId) continue;
        if (stretch.filter != Filter::all && row.kind != static_cast<std::int64_t>(stretch.filter)) continue;
        if (stretch.day && row.day != *stretch.day) continue;
        if (!see(row, calls)) return;
    }
}

/// Whether a party is one of those; they rise. Most are found by a bit, those of numbers as only odd files have by
/// halving.
class OneOf {
  public:
    explicit OneOf(const std::vector<std::int64_t>& parties) : parties_(parties) {
        const auto large = std::lower_bound(parties.begin(), parties.end(), mostBits);
        if (large != parties.begin()) wanted_.resize(static_cast<std::size_t>(*(large - 1)) + 1);
        for (auto party = parties.begin(); party != large; ++party) wanted_[static_cast<std::size_t>(*party)] = true;
    }
    bool operator()(std::int64_t party) const {
        if (static_cast<std::uint64_t>(party) < wanted_.size()) return wanted_[static_cast<std::size_t>(party)];
        return party >= mostBits && std::binary_search(parties_.begin(), parties_.end(), party);
    }

  private:
    static constexpr std::int64_t mostBits = std::int64_t{1} << 26U;
    const std::vector<std::int64_t>& parties_;
    std::vector<bool> wanted_;
};

/// Rows that a page has room for before the first is read.
constexpr std::int64_t roomAtFirst = 1000;

}  // namespace

void Reader::appendRow(Page& page, std::int64_t rowId) {
    Statement& found = connection_.statement("select " QUORVEL_CALL_COLUMNS " from call where ROWID = ?1");
    const ResetLater later(found);
    if (found.bind(1, rowId).step()) page.rows.push_back(recordOf(callRowOf(found), found.text(locationColumn)));
}

std::optional<CallRecord> Reader::call(std::int64_t rowId) {
    Page page;
    appendRow(page, rowId);
    return page.rows.empty() ? std::nullopt : std::optional(std::move(page.rows.front()));
}

std::vector<CallRecord> Reader::wholeCalls(std::span<const std::int64_t> rowIds) {
    const bool hasExtra = connection_.integerOf("pragma user_version") >= versionWithExtra;
    Statement& found = connection_.statement(hasExtra ? "select face_time_data_size, extra from call where ROWID = ?1"
                                                      : "select face_time_data_size, null from call where ROWID = ?1");
    std::vector<CallRecord> calls;
    for (const std::int64_t rowId : rowIds) {
        auto known = call(rowId);
        if (!known) continue;
        const ResetLater later(found);
        if (!found.bind(1, rowId).step()) continue;
        known->faceTimeDataSize = static_cast<std::int32_t>(found.integer(0));
        known->extra = found.text(1);
        calls.push_back(*std::move(known));
    }
    return calls;
}

std::vector<CallRow> Reader::rowsOf(const std::vector<std::int64_t>& parties, const Stretch& stretch) {
    std::vector<CallRow> rows;
    for (const std::int64_t party : parties) {
        walkParty(connection_, keysOfParty, party, stretch, [&](const CallRow& row, const Statement&) {
            rows.push_back(row);
            return true;
        });
    }
    std::sort(rows.begin(), rows.end(), isNewer);
    return rows;
}

bool Reader::walkParties(const std::vector<std::int64_t>& parties, const Stretch& stretch, const SeeRow& see) {
    return walkWanted(connection_, stretch, OneOf(parties), see);
}

bool Reader::gatherAll(const std::vector<std::int64_t>& parties, const Stretch& stretch, const SeeRow& see) {
    bool stopped = false;
    const auto show = [&](const CallRow& row, std::string_view location) {
        stopped = !see(row, location);
        return !stopped;
    };
    if (parties.size() == 1) {
        walkParty(connection_, callsOfParty, parties.front(), stretch,
                  [&](const CallRow& row, const Statement& found) { return show(row, found.text(locationColumn)); });
        return stopped;
    }
    std::vector<std::pair<CallRow, std::string>> calls;
    for (const std::int64_t party : parties) {
        walkParty(connection_, callsOfParty, party, stretch, [&](const CallRow& row, const Statement& found) {
            calls.emplace_back(row, found.text(locationColumn));
            return true;
        });
    }
    std::sort(calls.begin(), calls.end(),
              [](const auto& one, const auto& other) { return isNewer(one.first, other.first); });
    for (const auto& [row, location] : calls) {
        if (!show(row, location)) break;
    }
    return stopped;
}

bool Reader::eachRow(const FoundParties& found, const Scope& scope, bool mayHold, const SeeRow& see) {
    if (found.parties.empty()) return false;
    const bool isAllOfTheLog =
        !scope.stretch.day && scope.stretch.since == INT64_MIN && scope.stretch.below == Cursor::top();
    // How rare they are decides: a walk passes over the calls of others, a gathering visits each party.
    const auto parties = static_cast<std::int64_t>(found.parties.size());
    const bool areMany = found.calls > scope.calls / leastShareToHold;
    if (mayHold && isAllOfTheLog && areMany && packed_.isWantedAgain()) packed_.hold(connection_, scope.calls);
    const std::int64_t walked = isAllOfTheLog && packed_.isHeld() ? scope.calls / heldPerWalked : scope.calls;
    const std::int64_t costOfCall = parties == 1 ? costOfCallOfOneParty : costOfCallOfManyParties;
    if (product(parties, costOfParty) + product(found.calls, costOfCall) < walked)
        return gatherAll(found.parties, scope.stretch, see);
    if (isAllOfTheLog && packed_.isHeld()) return packed_.walk(scope.stretch.filter, OneOf(found.parties), see);
    return walkParties(found.parties, scope.stretch, see);
}

Page Reader::gather(const std::vector<std::int64_t>& parties, const Stretch& stretch, std::int64_t limit) {
    const auto nextOf = [&](std::int64_t party, const Cursor& below) {
        std::optional<CallRow> next;
        Stretch rest = stretch;
        rest.below = below;
        walkParty(connection_, keysOfParty, party, rest, [&](const CallRow& row, const Statement&) {
            next = row;
            return false;
        });
        return next;
    };
    const auto isOlder = [](const CallRow& one, const CallRow& other) { return isNewer(other, one); };
    // A heap of each party's newest call that is not on the page yet.
    std::vector<CallRow> heads;
    for (const std::int64_t party : parties) {
        if (const auto head = nextOf(party, stretch.below)) heads.push_back(*head);
    }
    std::make_heap(heads.begin(), heads.end(), isOlder);
    Page page;
    page.next = stretch.below;
    while (!heads.empty() && static_cast<std::int64_t>(page.rows.size()) < limit) {
        std::pop_heap(heads.begin(), heads.end(), isOlder);
        const CallRow newest = heads.back();
        heads.pop_back();
        const bool isOlderThanLast =
            newest.date < page.next.date || (newest.date == page.next.date && newest.rowId < page.next.rowId);
        if (!isOlderThanLast) throw failureOf(SQLITE_CORRUPT, "its calls are out of order", connection_.path());
        appendRow(page, newest.rowId);
        page.next = {newest.date, newest.rowId, newest.day};
        if (const auto head = nextOf(newest.party, page.next)) {
            heads.push_back(*head);
            std::push_heap(heads.begin(), heads.end(), isOlder);
        }
    }
    page.atEnd = heads.empty();
    return page;
}

std::optional<Reader::Scope> Reader::scopeOf(Filter filter, std::optional<std::int64_t> day, const Cursor& after) {
    Scope scope{{filter, after, INT64_MIN, day}, 0};
    if (!day) {
        scope.calls = totals(Filter::all, {}).calls;
        return scope;
    }
    const std::optional<DayBounds> bounds = boundsOf(*day);
    if (!bounds) return std::nullopt;
    scope.stretch.since = bounds->first;
    if (after.date > bounds->last) scope.stretch.below = {bounds->last, INT64_MAX, *day};
    scope.calls = dayTotals(Filter::all, *day).calls;
    return scope;
}

Page Reader::search(Filter filter, std::string_view text, std::optional<std::int64_t> day, const Cursor& after,
                    std::int64_t limit) {
    const auto scope = scopeOf(filter, day, after);
    if (!scope) return {{}, after, true};
    const Stretch& stretch = scope->stretch;
    if (text.empty()) return folded(stretch, false, 0, limit);
    index_.update(connection_, partyRevision_);
    const FoundParties found = index_.find(text);
    if (found.parties.empty()) return {{}, after, true};
    return pageOf(found, *scope, limit);
}

Page Reader::pageOf(const FoundParties& found, const Scope& scope, std::int64_t limit) {
    Page page;
    page.next = scope.stretch.below;
    page.rows.reserve(static_cast<std::size_t>(std::min({limit, found.calls, roomAtFirst})));
    const SeeRow toPage = pageOf(page, limit);
    if (limit >= found.calls) {
        page.atEnd = !eachRow(found, scope, false, toPage);
        return page;
    }
    const std::int64_t all = totals(Filter::all, {}).calls;
    const std::int64_t share = all / std::max<std::int64_t>(found.calls, 1);
    const std::int64_t walked = std::min(scope.calls, product(limit, share + 1));
    const auto parties = static_cast<std::int64_t>(found.parties.size());
    if (product(parties, costOfParty) + product(limit, costOfMerged) < walked)
        return gather(found.parties, scope.stretch, limit);
    page.atEnd = !walkParties(found.parties, scope.stretch, toPage);
    return page;
}

std::int64_t Reader::eachFound(Filter filter, std::string_view text, std::optional<std::int64_t> day,
                               const SeeCall& see) {
    const auto scope = scopeOf(filter, day, Cursor::top());
    if (!scope) return 0;
    std::int64_t shown = 0;
    const SeeRow toSee = recordsTo(see, shown);
    if (text.empty()) {
        walk(connection_, scope->stretch, toSee);
        return shown;
    }
    index_.update(connection_, partyRevision_);
    eachRow(index_.find(text), *scope, true, toSee);
    return shown;
}

std::vector<NamedAddress> Reader::addresses() {
    Statement& parties =
        connection_.statement("select address, contact, name, label, party from party where calls > 0 order by party");
    const ResetLater later(parties);
    std::vector<NamedAddress> all;
    Rising order;
    while (parties.step()) {
        order.expect(parties, 4);
        all.push_back({std::string(parties.text(0)), static_cast<std::int32_t>(parties.integer(1)),
                       std::string(parties.text(2)), std::string(parties.text(3))});
    }
    return all;
}

FoundParties Reader::partiesWithCalls(const Correspondent& with) {
    FoundParties all;
    const auto take = [&](const Statement& found) {
        all.parties.push_back(found.within(0, 1, greatestNumber, "a party"));
        all.calls += found.count(1);
    };
    if (with.contactId != noContact) {
        Statement& found =
            connection_.statement("select party, calls from party indexed by party_by_contact where contact = ?1");
        const ResetLater later(found);
        found.bind(1, with.contactId);
        Rising order;
        while (found.step()) {
            order.expect(found, 0);
            take(found);
        }
    }
    Statement& found = connection_.statement(
        "select party, calls from party indexed by party_by_address where address = ?1 and contact = -1");
    // Once each: what a party's calls are counted by.
    const std::set<std::string_view> addresses(with.addresses.begin(), with.addresses.end());
    for (const std::string_view address : addresses) {
        const ResetLater later(found);
        if (found.bind(1, address).step()) take(found);
    }
    std::sort(all.parties.begin(), all.parties.end());
    return all;
}

std::vector<CallRow> Reader::historyRows(Filter filter, const Correspondent& with) {
    return rowsOf(partiesWithCalls(with).parties, {filter, {}, INT64_MIN, {}});
}

std::vector<CallRecord> Reader::history(Filter filter, const Correspondent& with) {
    Page page;
    for (const CallRow& row : historyRows(filter, with)) appendRow(page, row.rowId);
    return std::move(page.rows);
}

Page Reader::historyPage(Filter filter, const Correspondent& with, const Cursor& after, std::int64_t limit) {
    const FoundParties found = partiesWithCalls(with);
    if (found.parties.empty()) return {{}, after, true};
    return pageOf(found, *scopeOf(filter, {}, after), std::max<std::int64_t>(limit, 0));
}

std::int64_t Reader::eachOfHistory(Filter filter, const Correspondent& with, const SeeCall& see) {
    std::int64_t shown = 0;
    eachRow(partiesWithCalls(with), *scopeOf(filter, {}, Cursor::top()), false, recordsTo(see, shown));
    return shown;
}

DeletedPage Reader::deletedCalls(const Cursor& after, std::int64_t limit, std::int64_t now) {
    // A file of an earlier version that may not be written has kept nothing.
    if (connection_.integerOf("pragma user_version") < versionThatKeepsAside) return {{}, after, true};
    return KeptAside(connection_, expiredAt(now)).page(after, limit);
}

std::optional<CallRecord> Reader::remaining(Filter filter, Mode mode, const CallRecord& row) {
    const RowKind rows = rowKindOf(filter, mode);
    if (rows == RowKind::call) return call(row.rowId);
    if (rows == RowKind::day) {
        const std::optional<std::int64_t> day = dayOfText(row.day);
        if (!day) return std::nullopt;
        Page page = daysBelow(*day + 1, 1);
        if (page.rows.empty() || page.rows.front().day != row.day) return std::nullopt;
        return std::move(page.rows.front());
    }
    Page page = folded({filter, {row.date, row.rowId + 1, INT64_MAX}, INT64_MIN, {}}, true, 0, 1);
    if (page.rows.empty()) return std::nullopt;
    CallRecord& found = page.rows.front();
    const bool isSame =
        found.contactId == row.contactId && (row.contactId != noContact || found.address == row.address);
    return isSame ? std::optional(std::move(found)) : std::nullopt;
}

std::vector<std::int64_t> Reader::rowIdsOf(const Stretch& stretch) {
    std::vector<std::int64_t> rowIds;
    walk(connection_, stretch, [&](const CallRow& row, std::string_view) {
        rowIds.push_back(row.rowId);
        return true;
    });
    return rowIds;
}

std::vector<std::int64_t> Reader::rowIdsOfDay(Filter filter, std::int64_t day) {
    const std::optional<DayBounds> bounds = boundsOf(day);
    if (!bounds) return {};
    return rowIdsOf({filter, {bounds->last, INT64_MAX, INT64_MAX}, bounds->first, day});
}

std::vector<std::int64_t> Reader::rowIdsOfRun(Filter filter, const CallRecord& head) {
    std::vector<std::int64_t> rowIds;
    std::optional<CallRow> first;
    walk(connection_, {filter, {head.date, head.rowId + 1, INT64_MAX}, INT64_MIN, {}},
         [&](const CallRow& row, std::string_view) {
             if (!first) {
                 const bool isHead = row.contact == head.contactId &&
                                     (row.contact != noContact || party(row.party).address == head.address);
                 if (!isHead) return false;
                 first = row;
             } else if (!isSameRun(*first, row)) {
                 return false;
             }
             rowIds.push_back(row.rowId);
             return true;
         });
    return rowIds;
}

}  // namespace quorvel::store
