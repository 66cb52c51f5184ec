// What a call may be: the one set of rules for every way into the log, and for the rows of a file.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "desktop/quorvel/store/call.h"
#include "desktop/quorvel/store/database.h"

namespace quorvel::store {

/// The greatest number that the log gives to a call or a party: programs hold them in 32 bits.
constexpr std::int64_t greatestNumber = INT32_MAX;
constexpr bool isNumber(std::int64_t number) { return number >= 1 && number <= greatestNumber; }

/// The reason why the call cannot be written, or nothing.
std::optional<Error> objectionTo(const NewCall& call);

/// A call's own columns in the tables `call` and `deleted`, those that nothing is derived into. The column `extra`
/// follows them, or null where the file has none.
#define QUORVEL_OWN_COLUMNS "ROWID, address, date, duration, flags, face_time_data_size, location, id"

/// What keeps a row of QUORVEL_OWN_COLUMNS and `extra` from being a call, as "date lies outside ..."; nothing for a
/// good one. Its row identifier is not looked at: it can be replaced.
std::optional<std::string> objectionToRow(const Statement& row);
/// The call of such a row that nothing is objected to. It has no name and label.
NewCall callOfRow(const Statement& row);

/// What keeps a text of a file from being one of a call, a name or a number; nothing for a good one.
std::optional<std::string> objectionToText(const Statement& row, int column);

}  // namespace quorvel::store
