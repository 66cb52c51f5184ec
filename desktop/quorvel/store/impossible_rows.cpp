// Every row is looked at with its types: SQLite keeps any kind of value in any column.
#include "desktop/quorvel/store/impossible_rows.h"

#include <algorithm>
#include <optional>
#include <utility>

#include "desktop/quorvel/store/call_row.h"
#include "desktop/quorvel/store/schema.h"

namespace quorvel::store {
namespace {

/// A log that is about to use up its numbers cannot take the calls of an import any more.
constexpr std::int64_t numbersLeft = 10'000'000;
/// A number that rises with each change, and may rise for as long as anybody lives.
constexpr std::int64_t greatestRevision = std::int64_t{1} << 62U;

std::int64_t versionOf(Connection& connection) { return connection.integerOf("pragma user_version"); }

enum class RowIds { checked, any };

/// Shows each row identifier of the table that is no call, with what is wrong.
template <class See>
void eachImpossible(Connection& connection, const char* text, bool isDeleted, RowIds rowIds, See&& see) {
    Statement& rows = connection.statement(text);
    const ResetLater later(rows);
    Rising order;
    while (rows.step()) {
        const std::int64_t rowId = order.expect(rows, 0);
        std::optional<std::string> objection = objectionToRow(rows);
        if (!objection && rowIds == RowIds::checked && !isNumber(rowId))
            objection = "row identifier lies outside 1 to 2147483647";
        if (isDeleted) {
            for (const int name : {9, 10})
                if (!objection) objection = objectionToText(rows, name);
            if (!objection && !rows.isInteger(11)) objection = "moment of deletion is none";
        }
        if (objection) see(rowId, *objection);
    }
}

template <class See>
void eachImpossibleCall(Connection& connection, RowIds rowIds, See&& see) {
    eachImpossible(connection,
                   versionOf(connection) < versionWithExtra
                       ? "select " QUORVEL_OWN_COLUMNS ", null from call order by ROWID"
                       : "select " QUORVEL_OWN_COLUMNS ", extra from call order by ROWID",
                   false, rowIds, see);
}

template <class See>
void eachImpossibleDeleted(Connection& connection, RowIds rowIds, See&& see) {
    if (versionOf(connection) < versionThatKeepsAside) return;
    eachImpossible(connection,
                   versionOf(connection) < versionWithExtra
                       ? "select " QUORVEL_OWN_COLUMNS ", null, name, label, moment from deleted order by ROWID"
                       : "select " QUORVEL_OWN_COLUMNS ", extra, name, label, moment from deleted order by ROWID",
                   true, rowIds, see);
}

/// Counts what is shown to it and remembers the first.
struct Tally {
    const char* what;
    std::int64_t count = 0;
    std::string first = {};

    void operator()(std::int64_t number, const std::string& objection) {
        if (count++ == 0) first = "number " + std::to_string(number) + "'s " + objection;
    }
    void sayTo(std::vector<std::string>& findings) const {
        if (count == 0) return;
        findings.push_back(std::to_string(count) + ' ' + what + " cannot be as they stand there; " + first + '.');
    }
};

void tallyParties(Connection& connection, Tally& tally) {
    Statement& parties = connection.statement("select party, address, name, label, contact from party order by party");
    const ResetLater later(parties);
    Rising order;
    while (parties.step()) {
        const std::int64_t party = order.expect(parties, 0);
        std::optional<std::string> objection;
        if (!isNumber(party)) objection = "own number lies outside 1 to 2147483647";
        for (const int text : {1, 2, 3})
            if (!objection) objection = objectionToText(parties, text);
        if (!objection && !(parties.isInteger(4) && std::in_range<std::int32_t>(parties.integer(4))))
            objection = "contact is none";
        if (objection) tally(party, *objection);
    }
}

/// The number that the table gave last, as the file has it; nothing for none yet, or for what is no number.
std::optional<std::int64_t> lastGiven(Connection& connection, std::string_view table) {
    Statement& given = connection.statement("select seq from sqlite_sequence where name = ?1");
    const ResetLater later(given);
    if (!given.bind(1, table).step() || !given.isInteger(0)) return std::nullopt;
    return given.integer(0);
}

/// The greatest number in use, of calls that are there or kept aside.
std::int64_t greatestCall(Connection& connection) {
    std::int64_t greatest = connection.integerOf("select coalesce(max(ROWID), 0) from call");
    if (versionOf(connection) >= versionThatKeepsAside)
        greatest = std::max(greatest, connection.integerOf("select coalesce(max(ROWID), 0) from deleted"));
    return greatest;
}

std::int64_t greatestParty(Connection& connection) {
    return connection.integerOf("select coalesce(max(party), 0) from party");
}

void findWrongNumbers(Connection& connection, std::vector<std::string>& findings) {
    for (const auto& [table, greatest] :
         {std::pair{"call", greatestCall(connection)}, {"party", greatestParty(connection)}}) {
        const auto given = lastGiven(connection, table);
        const bool isOne = connection.integerOf(std::string("select count(*) from sqlite_sequence where name = '") +
                                                table + '\'') == (given ? 1 : 0);
        if (!isOne || given.value_or(0) < greatest || given.value_or(0) > greatestNumber - numbersLeft) {
            findings.push_back(std::string("The next number of the table ") + table +
                               " is none that can be given; the last in use is " + std::to_string(greatest) + '.');
        }
    }
    Statement& state =
        connection.statement("select revision, party_revision, last_row, touched from state where one = 1");
    const ResetLater later(state);
    const bool isThere = state.step();
    bool isRight = isThere && state.isInteger(3) && state.isInteger(2) &&
                   state.integer(2) == lastGiven(connection, "call").value_or(0);
    for (const int revision : {0, 1})
        isRight = isRight && state.isInteger(revision) && state.integer(revision) >= 0 &&
                  state.integer(revision) < greatestRevision;
    if (!isRight) findings.emplace_back("The numbers that rise with each change are not right.");
}

/// Makes the table give numbers behind all that it has.
void setLastGiven(Connection& connection, std::string_view table, std::int64_t greatest) {
    const auto given = lastGiven(connection, table);
    const bool isUsable = given && *given >= greatest && *given <= greatestNumber - numbersLeft;
    const std::int64_t right = isUsable ? *given : greatest;
    connection.statement("delete from sqlite_sequence where name = ?1").bind(1, table).run();
    connection.statement("insert into sqlite_sequence (name, seq) values (?1, ?2)").bind(1, table).bind(2, right).run();
}

struct NamedParty {
    std::int64_t number = 0, contact = 0;
    std::string address, name, label;
};

}  // namespace

std::vector<std::string> findImpossible(Connection& connection) {
    std::vector<std::string> findings;
    for (const SchemaPart& part : foreignParts(connection))
        findings.push_back("The " + part.type + " \"" + part.name + "\" is not the log's own.");
    Tally calls{"calls"}, deleted{"deleted calls that are kept"}, parties{"numbers and names"};
    eachImpossibleCall(connection, RowIds::checked,
                       [&](auto rowId, const auto& objection) { calls(rowId, objection); });
    eachImpossibleDeleted(connection, RowIds::checked,
                          [&](auto rowId, const auto& objection) { deleted(rowId, objection); });
    tallyParties(connection, parties);
    for (const Tally* each : {&calls, &deleted, &parties}) each->sayTo(findings);
    findWrongNumbers(connection, findings);
    return findings;
}

void dropForeignParts(Connection& connection) {
    for (const SchemaPart& part : foreignParts(connection)) {
        std::string name;
        for (const char letter : part.name) name += letter == '"' ? std::string("\"\"") : std::string(1, letter);
        connection.execute(("drop " + part.type + " \"" + name + '"').c_str());
    }
}

std::int64_t takeOutImpossible(Connection& connection) {
    std::vector<std::int64_t> calls, deleted;
    eachImpossibleCall(connection, RowIds::any, [&](std::int64_t rowId, const auto&) { calls.push_back(rowId); });
    eachImpossibleDeleted(connection, RowIds::any, [&](std::int64_t rowId, const auto&) { deleted.push_back(rowId); });
    Statement& takeCall = connection.statement("delete from call where ROWID = ?1");
    for (const std::int64_t rowId : calls) takeCall.bind(1, rowId).run();
    if (deleted.empty()) return static_cast<std::int64_t>(calls.size());
    Statement& takeDeleted = connection.statement("delete from deleted where ROWID = ?1");
    for (const std::int64_t rowId : deleted) takeDeleted.bind(1, rowId).run();
    return static_cast<std::int64_t>(calls.size() + deleted.size());
}

void putNumbersRight(Connection& connection) {
    std::vector<NamedParty> misnumbered;
    {
        Statement& found = connection.statement(
            "select party, contact, address, name, label from party where party not between 1 and ?1 order by party");
        const ResetLater later(found);
        found.bind(1, greatestNumber);
        Rising order;
        while (found.step()) {
            order.expect(found, 0);
            misnumbered.push_back({found.integer(0), found.integer(1), std::string(found.text(2)),
                                   std::string(found.text(3)), std::string(found.text(4))});
        }
    }
    for (const NamedParty& party : misnumbered)
        connection.statement("delete from party where party = ?1").bind(1, party.number).run();
    setLastGiven(connection, "party", greatestParty(connection));
    setLastGiven(connection, "call", greatestCall(connection));
    for (const NamedParty& party : misnumbered) {
        connection.statement("insert or ignore into party (contact, address, name, label) values (?1, ?2, ?3, ?4)")
            .bind(1, party.contact)
            .bind(2, party.address)
            .bind(3, party.name)
            .bind(4, party.label)
            .run();
    }
    Statement& revisions = connection.statement(
        "update state set touched = touched is not 0, "
        "revision = iif(typeof(revision) = 'integer' and revision between 0 and ?1, revision, 0), "
        "party_revision = iif(typeof(party_revision) = 'integer' and party_revision between 0 and ?1, "
        "party_revision, 0) where one = 1");
    revisions.bind(1, greatestRevision - 1).run();
}

}  // namespace quorvel::store
