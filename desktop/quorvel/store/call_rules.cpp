// The rules are written once, for fields; a call to be written and a row of a file are both looked at as fields.
#include "desktop/quorvel/store/call_rules.h"

#include <unicode/utf8.h>

#include <array>
#include <utility>

namespace quorvel::store {
namespace {

constexpr std::size_t longestText = 100000;

enum Column { rowId, address, date, duration, flags, faceTimeDataSize, location, contact, extra };

struct Objection {
    const char* what;
    const char* advice;
};

bool isUtf8(std::string_view text) {
    const auto length = static_cast<std::int32_t>(text.size());
    for (std::int32_t at = 0; at < length;) {
        UChar32 letter = 0;
        U8_NEXT(text.data(), at, length, letter);
        // A zero would end the text for others that read the file.
        if (letter <= 0) return false;
    }
    return true;
}

std::optional<Objection> objectionToText(std::string_view text) {
    if (text.size() > longestText) return Objection{"texts are too long", "Give at most 100000 bytes each."};
    if (!isUtf8(text)) return Objection{"texts are not UTF-8, or hold a zero", "Convert them to UTF-8."};
    return std::nullopt;
}

std::optional<Objection> objectionToTimes(std::int64_t date, std::int64_t duration) {
    if (date < 0 || date > INT32_MAX)
        return Objection{"date lies outside the years 1970 to 2038", "Give seconds since 1970, up to 2147483647."};
    if (duration < 0) return Objection{"duration is negative", "Give seconds from 0 on."};
    if (duration > INT32_MAX) return Objection{"duration is too long", "Give seconds up to 2147483647."};
    return std::nullopt;
}

}  // namespace

std::optional<Error> objectionTo(const NewCall& call) {
    auto objection = objectionToTimes(call.date, call.duration);
    for (const std::string* text : {&call.address, &call.name, &call.label, &call.location, &call.extra})
        if (!objection) objection = objectionToText(*text);
    if (!objection) return std::nullopt;
    return Error{ErrorKind::badInput, std::string("The call's ") + objection->what + ". " + objection->advice +
                                          " The call was not written."};
}

std::optional<std::string> objectionToText(const Statement& row, int column) {
    if (!row.isText(column)) return "text is none";
    const auto objection = objectionToText(row.text(column));
    return objection ? std::optional<std::string>(objection->what) : std::nullopt;
}

std::optional<std::string> objectionToRow(const Statement& row) {
    for (const Column number : {date, duration, flags, faceTimeDataSize, contact})
        if (!row.isInteger(number)) return "numbers are none";
    for (const Column number : {flags, faceTimeDataSize, contact})
        if (!std::in_range<std::int32_t>(row.integer(number))) return "numbers are too large";
    if (const auto objection = objectionToTimes(row.integer(date), row.integer(duration))) return objection->what;
    if (auto objection = objectionToText(row, address)) return objection;
    for (const Column text : {location, extra}) {
        if (row.isNull(text)) continue;
        if (auto objection = objectionToText(row, text)) return objection;
    }
    return std::nullopt;
}

NewCall callOfRow(const Statement& row) {
    NewCall call;
    call.address = row.text(address);
    call.date = row.integer(date);
    call.duration = static_cast<std::int32_t>(row.integer(duration));
    call.flags = static_cast<std::int32_t>(row.integer(flags));
    call.contactId = static_cast<std::int32_t>(row.integer(contact));
    call.location = row.text(location);
    call.faceTimeDataSize = static_cast<std::int32_t>(row.integer(faceTimeDataSize));
    call.extra = row.text(extra);
    return call;
}

}  // namespace quorvel::store
