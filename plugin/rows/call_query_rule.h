// The queries for the calls that an entry stands for: eight texts, and which of them is asked.
#pragma once

#include "plugin/rows/selection_rule.h"

namespace rows {

/// What a query tells of each call.
enum class Columns { Full, Short };
/// Whose calls: those of a contact's record, or of a number or address.
enum class Whose { Contact, Address };
/// Which of them.
enum class Span { Day, Latest };

/// The record alone decides; a record of 0 is one, on purpose.
constexpr Whose whoseCalls(int record) { return hasContact(record) ? Whose::Contact : Whose::Address; }

/// The query as a format: of the record (%d) or the address (%@), then, for a day, of its text (%@). Nothing that is
/// put in is escaped, on purpose: the companion answers an empty list to a text that came out malformed.
constexpr const char* queryFormat(Columns columns, Whose whose, Span span) {
    const bool isFull = columns == Columns::Full;
    const bool isContact = whose == Whose::Contact;
    if (span == Span::Day) {
        if (isFull && isContact)
            return "select ROWID, date, duration, flags, face_time_data_size, location from call where id=%d and "
                   "datetime='%@' order by date desc";
        if (isFull)
            return "select ROWID, date, duration, flags, face_time_data_size, location from call where address='%@' "
                   "and datetime='%@' order by date desc";
        if (isContact)
            return "select ROWID, date, duration, flags from call where id=%d and datetime='%@' order by date desc";
        return "select ROWID, date, duration, flags from call where address='%@' and datetime='%@' order by date desc";
    }
    if (isFull && isContact)
        return "select ROWID, date, duration, flags, face_time_data_size, location from call where id=%d order by date "
               "desc LIMIT 1";
    if (isFull)
        return "select ROWID, date, duration, flags, face_time_data_size, location from call where address='%@' order "
               "by date desc LIMIT 1";
    if (isContact) return "select ROWID, date, duration, flags from call where id=%d order by date desc LIMIT 1";
    return "select ROWID, date, duration, flags from call where address='%@' order by date desc LIMIT 1";
}

}  // namespace rows
