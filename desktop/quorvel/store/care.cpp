// Both directions of one comparison: what a call's own columns say, and what is kept beside them.
#include "desktop/quorvel/store/care.h"

#include <array>
#include <unordered_map>

#include "desktop/quorvel/store/impossible_rows.h"
#include "desktop/quorvel/store/local_days.h"
#include "desktop/quorvel/store/schema.h"
#include "desktop/quorvel/store/sums.h"

namespace quorvel::store {
namespace {

std::string partyKey(std::int64_t contact, std::string_view address) {
    return std::to_string(contact).append(1, ' ').append(address);
}

/// What is kept beside a call, as it should be.
struct Derived {
    std::int64_t rowId = 0, kind = 0, party = 0, day = 0;
};

/// Reads the calls by row identifier and shows those whose derived columns are wrong.
template <class PartyOf, class See>
void eachWrong(Connection& connection, PartyOf&& partyOf, See&& see) {
    Statement& calls = connection.statement(
        "select ROWID, address, id, date, duration, flags, kind, party, day, datetime from call order by ROWID");
    const ResetLater later(calls);
    LocalDays days;
    Rising order;
    while (calls.step()) {
        order.expect(calls, 0);
        const auto flags = static_cast<std::int32_t>(calls.integer(5));
        const std::int32_t duration = calls.integer(4) > 0 ? 1 : 0;
        const Derived right{calls.integer(0), static_cast<std::int64_t>(listOf(flags, duration)),
                            partyOf(calls.integer(2), calls.text(1)), days.dayOf(calls.integer(3))};
        const bool isRight = right.kind == calls.integer(6) && right.party == calls.integer(7) &&
                             right.day == calls.integer(8) && calls.text(9) == dayText(right.day);
        if (!isRight) see(right);
    }
}

std::unordered_map<std::string, std::int64_t> readParties(Connection& connection) {
    std::unordered_map<std::string, std::int64_t> parties;
    Statement& found = connection.statement("select party, contact, address from party order by party");
    const ResetLater later(found);
    Rising order;
    while (found.step()) parties.emplace(partyKey(found.integer(1), found.text(2)), order.expect(found, 0));
    return parties;
}

void rewritePartyCalls(Connection& connection, const Sums& sums) {
    connection.statement("update party set calls = 0").run();
    Statement& counted = connection.statement("update party set calls = ?2 where party = ?1");
    for (const auto& [party, calls] : sums.partyCalls) counted.bind(1, party).bind(2, calls).run();
    connection.statement("delete from party where calls = 0").run();
}

bool partyCallsAgree(Connection& connection, const Sums& sums) {
    std::size_t parties = 0;
    Statement& kept = connection.statement("select party, calls from party order by party");
    const ResetLater later(kept);
    Rising order;
    while (kept.step()) {
        order.expect(kept, 0);
        ++parties;
        const auto counted = sums.partyCalls.find(kept.integer(0));
        if (counted == sums.partyCalls.end() || counted->second != kept.integer(1)) return false;
    }
    return parties == sums.partyCalls.size();
}

void compareSums(const Sums& kept, const Sums& counted, std::vector<std::string>& findings) {
    static constexpr std::array names = {"all", "dialled", "received", "missed"};
    for (std::size_t filter = 0; filter < names.size(); ++filter) {
        const FilterSums& of = kept.filters[filter];
        const FilterSums& is = counted.filters[filter];
        if (of == is) continue;
        findings.push_back(std::string("The totals of the list \"") + names[filter] + "\" are " +
                           std::to_string(of.calls) + " calls, " + std::to_string(of.duration) + " seconds, " +
                           std::to_string(of.runs) + " runs; counted are " + std::to_string(is.calls) + ", " +
                           std::to_string(is.duration) + ", " + std::to_string(is.runs) + ".");
    }
    if (kept.days != counted.days) findings.emplace_back("The sums of the days differ from the calls.");
    if (kept.spans != counted.spans)
        findings.emplace_back("The sums that find a row by its number differ from the calls.");
}

/// Shows the row identifier of each call kept aside whose day is not the one of its date, and that day.
template <class See>
void eachKeptWrong(Connection& connection, See&& see) {
    Statement& kept = connection.statement("select ROWID, date, day from deleted order by ROWID");
    const ResetLater later(kept);
    LocalDays days;
    Rising order;
    while (kept.step()) {
        order.expect(kept, 0);
        const std::int64_t day = days.dayOf(kept.integer(1));
        if (day != kept.integer(2)) see(kept.integer(0), day);
    }
}

}  // namespace

std::vector<std::string> findDamage(Connection& connection) {
    std::vector<std::string> findings;
    Statement check(connection.handle(), "pragma integrity_check(20)", connection.path());
    while (check.step()) {
        if (check.text(0) != "ok")
            findings.push_back("The file contradicts itself: " + std::string(check.text(0)) + ".");
    }
    return findings;
}

std::vector<std::string> findContradictions(Connection& connection) {
    // Nothing is worked out of a file that is damaged, nor of rows that cannot be.
    std::vector<std::string> findings = findDamage(connection);
    if (findings.empty()) findings = findImpossible(connection);
    if (!findings.empty()) return findings;
    const auto parties = readParties(connection);
    std::int64_t wrong = 0;
    eachWrong(
        connection,
        [&](std::int64_t contact, std::string_view address) {
            const auto found = parties.find(partyKey(contact, address));
            return found == parties.end() ? std::int64_t{-1} : found->second;
        },
        [&](const Derived&) { ++wrong; });
    if (wrong > 0) {
        findings.push_back(
            std::to_string(wrong) +
            " calls carry another kind, party or day than their number, flags and date say (the days are "
            "those of the time zone of " +
            std::string(tzname[0]) + ").");
        return findings;
    }
    if (connection.integerOf("pragma user_version") >= versionThatKeepsAside) {
        std::int64_t keptWrong = 0;
        eachKeptWrong(connection, [&](std::int64_t, std::int64_t) { ++keptWrong; });
        if (keptWrong > 0) {
            findings.push_back(std::to_string(keptWrong) +
                               " deleted calls that are kept carry another day than their date says.");
        }
    }
    const Sums counted = makeSums(connection);
    compareSums(readSums(connection), counted, findings);
    if (!partyCallsAgree(connection, counted))
        findings.emplace_back("The parties' numbers of calls differ from the calls.");
    const std::int64_t days = daysOf(connection);
    if (days != static_cast<std::int64_t>(counted.days.size())) {
        findings.push_back("The number of days is " + std::to_string(days) + "; counted are " +
                           std::to_string(counted.days.size()) + ".");
    }
    return findings;
}

void rebuildDerived(Connection& connection) {
    putNumbersRight(connection);
    auto parties = readParties(connection);
    std::vector<Derived> wrong;
    eachWrong(
        connection,
        [&](std::int64_t contact, std::string_view address) {
            auto [found, isNew] = parties.try_emplace(partyKey(contact, address), 0);
            if (isNew) {
                connection.statement("insert into party (address, contact) values (?1, ?2)")
                    .bind(1, address)
                    .bind(2, contact)
                    .run();
                found->second = connection.lastRowId();
            }
            return found->second;
        },
        [&](const Derived& right) { wrong.push_back(right); });
    Statement& corrected =
        connection.statement("update call set kind = ?2, party = ?3, day = ?4, datetime = ?5 where ROWID = ?1");
    for (const Derived& right : wrong) {
        const std::string day = dayText(right.day);
        corrected.bind(1, right.rowId).bind(2, right.kind).bind(3, right.party).bind(4, right.day).bind(5, day).run();
    }
    std::vector<std::pair<std::int64_t, std::int64_t>> keptWrong;
    eachKeptWrong(connection, [&](std::int64_t rowId, std::int64_t day) { keptWrong.emplace_back(rowId, day); });
    Statement& moved = connection.statement("update deleted set day = ?2 where ROWID = ?1");
    for (const auto& [rowId, day] : keptWrong) moved.bind(1, rowId).bind(2, day).run();
    const Sums sums = makeSums(connection);
    replaceSums(connection, sums);
    rewritePartyCalls(connection, sums);
    connection
        .statement(
            "update state set revision = revision + 1, party_revision = party_revision + 1, touched = 0, "
            "last_row = coalesce((select seq from sqlite_sequence where name = 'call'), 0) where one = 1")
        .run();
}

}  // namespace quorvel::store
