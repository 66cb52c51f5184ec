// The one place that changes the tables `call` and `party`.
#include "desktop/quorvel/store/call_writer.h"

#include <algorithm>
#include <utility>

#include "desktop/quorvel/store/call_rules.h"

namespace quorvel::store {
namespace {

constexpr const char* usedUp = "its numbers are used up; \"quorvelctl doctor --mend\" gives them anew";

/// Of the number that the table gave last. SQLite itself says at their end that the disk is full.
void requireNumbersLeft(Connection& connection, const char* table) {
    Statement& given = connection.statement("select seq from sqlite_sequence where name = ?1");
    const ResetLater later(given);
    if (!given.bind(1, std::string_view(table)).step() || given.integer(0) < greatestNumber) return;
    given.failDamaged(usedUp);
}

}  // namespace

CallWriter::CallWriter(Connection& connection, std::int64_t now)
    : connection_(connection), now_(now), kept_(connection, expiredAt(now)), ledger_(connection) {}

void CallWriter::requireNumbers() {
    if (std::exchange(hasNumbers_, true)) return;
    requireNumbersLeft(connection_, "call");
    requireNumbersLeft(connection_, "party");
}

CallWriter::Party& CallWriter::partyOf(std::string_view address, std::int64_t contact) {
    key_.assign(std::to_string(contact)).append(1, ' ').append(address);
    const auto known = parties_.find(key_);
    if (known != parties_.end()) return known->second;
    Party party;
    Statement& found = connection_.statement(
        "select party, name, label from party indexed by party_by_address where address = ?1 and contact = ?2");
    const ResetLater later(found);
    if (found.bind(1, address).bind(2, contact).step()) {
        party = {found.within(0, 1, greatestNumber, "a party"), std::string(found.text(1)), std::string(found.text(2))};
    } else {
        connection_.statement("insert into party (address, contact) values (?1, ?2)")
            .bind(1, address)
            .bind(2, contact)
            .run();
        party.number = connection_.lastRowId();
        if (party.number > greatestNumber) found.failDamaged(usedUp);
    }
    return parties_.emplace(key_, std::move(party)).first->second;
}

void CallWriter::nameParty(Party& party, std::string_view name, std::string_view label, bool always) {
    const bool newName = (always || !name.empty()) && party.name != name;
    const bool newLabel = (always || !label.empty()) && party.label != label;
    if (!newName && !newLabel) return;
    if (newName) party.name = name;
    if (newLabel) party.label = label;
    connection_.statement("update party set name = ?2, label = ?3 where party = ?1")
        .bind(1, party.number)
        .bind(2, party.name)
        .bind(3, party.label)
        .run();
    renamed_ = true;
}

std::int64_t CallWriter::insert(const NewCall& call) {
    requireNumbers();
    Party& party = partyOf(call.address, call.contactId);
    nameParty(party, call.name, call.label, false);
    CallRow row;
    row.date = call.date;
    row.kind = static_cast<std::int64_t>(listOf(call.flags, call.duration));
    row.duration = call.duration;
    row.flags = call.flags;
    row.party = party.number;
    row.contact = call.contactId;
    row.day = days_.dayOf(call.date);
    const std::string day = dayText(row.day);
    Statement& made = connection_.statement(
        "insert into call (address, date, duration, flags, face_time_data_size, location, id, datetime, kind, party, "
        "day, extra) values (?1, ?2, ?3, ?4, ?5, ?6, ?7, ?8, ?9, ?10, ?11, ?12)");
    made.bind(1, call.address).bind(2, row.date).bind(3, row.duration).bind(4, row.flags);
    made.bind(5, std::int64_t{call.faceTimeDataSize});
    if (call.location.empty()) {
        made.bindNull(6);
    } else {
        made.bind(6, call.location);
    }
    if (call.extra.empty()) {
        made.bindNull(12);
    } else {
        made.bind(12, call.extra);
    }
    made.bind(7, row.contact).bind(8, day).bind(9, row.kind).bind(10, row.party).bind(11, row.day).run();
    row.rowId = connection_.lastRowId();
    if (row.rowId == greatestNumber) hasNumbers_ = false;
    ledger_.add(row);
    return row.rowId;
}

std::int64_t CallWriter::erase(std::span<const std::int64_t> rowIds) {
    expectMany(static_cast<std::int64_t>(rowIds.size()));
    Statement& found = connection_.statement("select " QUORVEL_CALL_COLUMNS " from call where ROWID = ?1");
    Statement& erased = connection_.statement("delete from call where ROWID = ?1");
    std::int64_t count = 0;
    for (const std::int64_t rowId : rowIds) {
        CallRow row;
        {
            const ResetLater later(found);
            if (!found.bind(1, rowId).step()) continue;
            row = callRowOf(found);
        }
        ledger_.remove(row);
        kept_.keep(rowId, now_);
        erased.bind(1, rowId).run();
        ++count;
    }
    changes_ += count;
    return count;
}

std::int64_t CallWriter::putBack(std::span<const std::int64_t> rowIds) {
    expectMany(static_cast<std::int64_t>(rowIds.size()));
    Statement& taken = connection_.statement("select 1 from call where ROWID = ?1");
    std::int64_t count = 0;
    for (const std::int64_t rowId : rowIds) {
        const auto kept = kept_.find(rowId);
        if (!kept) continue;
        {
            // Only a writer that went past the store gives an identifier twice.
            const ResetLater later(taken);
            if (taken.bind(1, rowId).step()) continue;
        }
        const NewCall& call = kept->call;
        Party& party = partyOf(call.address, call.contactId);
        nameParty(party, party.name.empty() ? call.name : "", party.label.empty() ? call.label : "", false);
        CallRow row;
        row.date = call.date;
        row.rowId = rowId;
        row.kind = static_cast<std::int64_t>(listOf(call.flags, call.duration));
        row.duration = call.duration;
        row.flags = call.flags;
        row.party = party.number;
        row.contact = call.contactId;
        row.day = kept->day;
        kept_.putBack(rowId, row.kind, row.party, dayText(row.day));
        ledger_.add(row);
        ++count;
    }
    changes_ += count;
    return count;
}

void CallWriter::eraseAll() {
    kept_.keepAll(now_);
    connection_.execute("delete from call; delete from party;");
    replaceSums(connection_, {});
    parties_.clear();
}

std::int64_t CallWriter::link(std::string_view address, std::int64_t contact, std::string_view name,
                              std::string_view label) {
    std::vector<CallRow> calls;
    {
        Statement& found = connection_.statement("select " QUORVEL_CALL_COLUMNS
                                                 " from call indexed by call_by_address where address = ?1");
        const ResetLater later(found);
        found.bind(1, address);
        while (found.step()) calls.push_back(callRowOf(found));
    }
    if (calls.empty()) return 0;
    expectMany(static_cast<std::int64_t>(calls.size()));
    Party& party = partyOf(address, contact);
    nameParty(party, name, label, true);
    Statement& moved = connection_.statement("update call set id = ?2, party = ?3 where ROWID = ?1");
    for (CallRow& call : calls) {
        if (call.party == party.number) continue;
        ledger_.remove(call);
        call.contact = contact;
        call.party = party.number;
        moved.bind(1, call.rowId).bind(2, contact).bind(3, party.number).run();
        ledger_.add(call);
    }
    return static_cast<std::int64_t>(calls.size());
}

void CallWriter::settle() {
    ledger_.settle();
    // A single call that arrives does not pay for a whole log that was deleted a month ago.
    constexpr std::int64_t leastCleared = 1000;
    kept_.clear(std::max(leastCleared, changes_));
    connection_
        .statement(
            "update state set revision = revision + 1, party_revision = party_revision + ?1, "
            "last_row = coalesce((select seq from sqlite_sequence where name = 'call'), 0) where one = 1")
        .bind(1, std::int64_t{renamed_})
        .run();
}

}  // namespace quorvel::store
