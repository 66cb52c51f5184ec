// Rows are copied by SQLite from table to table, so that no field changes its value or type on the way.
#include "desktop/quorvel/store/kept_aside.h"

#include <algorithm>

#include "desktop/quorvel/store/local_days.h"

namespace quorvel::store {
namespace {

#define QUORVEL_KEEP                                                                                                  \
    "insert or replace into deleted (ROWID, address, date, duration, flags, face_time_data_size, location, id, day, " \
    "name, label, moment, extra) select call.ROWID, call.address, call.date, call.duration, call.flags, "             \
    "call.face_time_data_size, call.location, call.id, call.day, coalesce(party.name, ''), "                          \
    "coalesce(party.label, ''), ?1, call.extra from call left join party on party.party = call.party"

#define QUORVEL_DELETED_COLUMNS                                                       \
    "moment, ROWID, address, date, duration, flags, location, id, day, name, label, " \
    "face_time_data_size from deleted "

DeletedCall deletedCallOf(const Statement& row) {
    DeletedCall deleted;
    deleted.deletedAt = row.integer(0);
    CallRecord& call = deleted.call;
    call.rowId = call.logId = row.within(1, 1, greatestNumber, "a row identifier");
    call.address = row.text(2);
    call.date = row.integer(3);
    call.duration = static_cast<std::int32_t>(row.integer(4));
    call.flags = static_cast<std::int32_t>(row.integer(5));
    call.location = row.text(6);
    call.contactId = static_cast<std::int32_t>(row.integer(7));
    call.day = dayText(row.integer(8));
    call.name = row.text(9);
    call.label = row.text(10);
    call.faceTimeDataSize = static_cast<std::int32_t>(row.integer(11));
    return deleted;
}

}  // namespace

void KeptAside::keep(std::int64_t rowId, std::int64_t now) {
    connection_.statement(QUORVEL_KEEP " where call.ROWID = ?2").bind(1, now).bind(2, rowId).run();
}

void KeptAside::keepAll(std::int64_t now) {
    connection_.statement(QUORVEL_KEEP " order by call.ROWID").bind(1, now).run();
}

void KeptAside::clear(std::int64_t limit) {
    connection_
        .statement(
            "delete from deleted where ROWID in (select ROWID from deleted indexed by deleted_by_moment "
            "where moment <= ?1 order by moment limit ?2)")
        .bind(1, expired_)
        .bind(2, limit)
        .run();
}

DeletedPage KeptAside::page(const Cursor& after, std::int64_t limit) {
    DeletedPage page;
    page.next = after;
    // The rest of the second that the cursor stands in, then what was deleted before.
    Statement& same = connection_.statement("select " QUORVEL_DELETED_COLUMNS
                                            "indexed by deleted_by_moment where moment = ?1 and ROWID < ?2 and "
                                            "moment > ?3 order by ROWID desc");
    Statement& older = connection_.statement("select " QUORVEL_DELETED_COLUMNS
                                             "indexed by deleted_by_moment where moment < ?1 and moment > ?3 "
                                             "order by moment desc, ROWID desc");
    NewestFirst order(after.date, after.rowId);
    for (Statement* part : {&same, &older}) {
        const ResetLater later(*part);
        part->bind(1, after.date).bind(3, expired_);
        if (part == &same) part->bind(2, after.rowId);
        while (part->step()) {
            if (static_cast<std::int64_t>(page.rows.size()) >= limit) return page;
            order.expect(*part);
            page.rows.push_back(deletedCallOf(*part));
            page.next = {page.rows.back().deletedAt, page.rows.back().call.rowId, INT64_MAX};
        }
    }
    page.atEnd = true;
    return page;
}

std::vector<std::int64_t> KeptAside::rowIds() {
    std::vector<std::int64_t> rowIds;
    Statement& found =
        connection_.statement("select ROWID from deleted indexed by deleted_by_moment where moment > ?1");
    const ResetLater later(found);
    found.bind(1, expired_);
    while (found.step()) rowIds.push_back(found.within(0, 1, greatestNumber, "a row identifier"));
    std::sort(rowIds.begin(), rowIds.end());
    return rowIds;
}

std::optional<KeptCall> KeptAside::find(std::int64_t rowId) {
    Statement& found = connection_.statement("select " QUORVEL_OWN_COLUMNS
                                             ", extra, day, name, label from deleted where ROWID = ?1 and moment > ?2");
    const ResetLater later(found);
    if (!found.bind(1, rowId).bind(2, expired_).step()) return std::nullopt;
    // The table may have been written by others.
    if (const auto objection = objectionToRow(found))
        found.failDamaged("the " + *objection + " in the deleted call " + std::to_string(rowId));
    KeptCall kept{rowId, callOfRow(found), found.within(9, firstDay, lastDay, "a day")};
    kept.call.name = found.text(10);
    kept.call.label = found.text(11);
    return kept;
}

void KeptAside::putBack(std::int64_t rowId, std::int64_t kind, std::int64_t party, std::string_view day) {
    connection_
        .statement(
            "insert into call (ROWID, address, date, duration, flags, face_time_data_size, location, id, day, "
            "extra, datetime, kind, party) select ROWID, address, date, duration, flags, face_time_data_size, "
            "location, id, day, extra, ?2, ?3, ?4 from deleted where ROWID = ?1")
        .bind(1, rowId)
        .bind(2, day)
        .bind(3, kind)
        .bind(4, party)
        .run();
    connection_.statement("delete from deleted where ROWID = ?1").bind(1, rowId).run();
}

}  // namespace quorvel::store
