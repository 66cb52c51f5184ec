// The vocabulary of the call log: filters, modes, a call as it is read and as it is written.
#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace quorvel::store {

/// The lists of the log. The dialled list holds the cancelled calls too.
enum class Filter : std::int64_t { all = 1, dialled = 2, received = 3, missed = 4 };

/// The filter of a code from outside: any value but 2, 3 and 4 means all.
constexpr Filter filterOf(std::int64_t code) {
    return code >= 2 && code <= 4 ? static_cast<Filter>(code) : Filter::all;
}

/// What a row of the list stands for. Grouping by date applies to the filter "all" only and goes before grouping by
/// contact.
struct Mode {
    bool groupByDate = false;
    bool groupByContact = false;
    friend bool operator==(const Mode&, const Mode&) = default;
};

enum class RowKind { call, run, day };

constexpr RowKind rowKindOf(Filter filter, Mode mode) {
    if (mode.groupByDate && filter == Filter::all) return RowKind::day;
    return mode.groupByContact ? RowKind::run : RowKind::call;
}

constexpr std::int32_t noContact = -1;

namespace flag {
constexpr std::int32_t outgoing = 1;
constexpr std::int32_t faceTime = 16;
/// Beside faceTime: audio rather than video.
constexpr std::int32_t faceTimeAudio = 32;
}  // namespace flag

constexpr bool isOutgoing(std::int32_t flags) { return (flags & flag::outgoing) != 0; }
constexpr bool isDialled(std::int32_t flags, std::int32_t duration) { return isOutgoing(flags) && duration > 0; }
constexpr bool isCancelled(std::int32_t flags, std::int32_t duration) { return isOutgoing(flags) && duration <= 0; }
constexpr bool isReceived(std::int32_t flags, std::int32_t duration) { return !isOutgoing(flags) && duration > 0; }
constexpr bool isMissed(std::int32_t flags, std::int32_t duration) { return !isOutgoing(flags) && duration <= 0; }
constexpr bool isFaceTime(std::int32_t flags) { return (flags & flag::faceTime) != 0; }
constexpr bool isFaceTimeVideo(std::int32_t flags) { return isFaceTime(flags) && (flags & flag::faceTimeAudio) == 0; }

/// The list besides "all" that a call belongs to.
constexpr Filter listOf(std::int32_t flags, std::int32_t duration) {
    if (isOutgoing(flags)) return Filter::dialled;
    return duration > 0 ? Filter::received : Filter::missed;
}

/// A call to be written. The store chooses the row identifier and the day.
struct NewCall {
    std::string address;        ///< Number or e-mail address in UTF-8; empty where the caller withheld it.
    std::int64_t date = 0;      ///< Start, seconds since 1970 in UTC; within 0 and 2^31 - 1.
    std::int32_t duration = 0;  ///< Seconds, not negative; 0 for a call that was not answered.
    std::int32_t flags = 0;     ///< Bits without a meaning here are kept.
    std::int32_t contactId = noContact;
    std::string name;   ///< The contact's name; empty for none. Where given, it becomes the name on all the contact's
                        ///< calls with this address.
    std::string label;  ///< The label of the number; as with the name.
    std::string location;  ///< Empty for none.
    std::int32_t faceTimeDataSize = 0;
    std::string extra = {};  ///< What else is known of the call, a JSON object; empty for nothing. Kept as it is.
};

/// A row of a list: one call, or the newest call of a run or of a day with what the row stands for.
struct CallRecord {
    std::int64_t rowId = 0;
    std::int64_t logId = 0;  ///< Identity in the log; the same as the row identifier.
    std::string address;     ///< Empty on the row of a day, as are name, label and location.
    std::string name;
    std::string label;
    std::string location;
    std::string day;  ///< "yyyy-MM-dd", local day.
    std::int64_t date = 0;
    std::int32_t contactId = noContact;
    std::int32_t duration = 0;
    std::int32_t flags = 0;
    std::int32_t faceTimeDataSize = 0;  ///< Filled by query() and wholeCalls() only, as is extra.
    std::string extra;
    std::int64_t count = 1;  ///< Calls that the row stands for.

    // On the row of a day only.
    std::int64_t dialledCount = 0;  ///< With the cancelled calls.
    std::int64_t receivedCount = 0;
    std::int64_t missedCount = 0;
    std::int64_t dialledDuration = 0;
    std::int64_t receivedDuration = 0;

    friend bool operator==(const CallRecord&, const CallRecord&) = default;
};

/// The last call that was read: a page goes on below it. Calls that arrive above do not shift what follows.
struct Cursor {
    std::int64_t date = INT64_MAX;
    std::int64_t rowId = INT64_MAX;
    std::int64_t day = INT64_MAX;  ///< Used by rows of days only; days since 1970.

    static Cursor top() { return {}; }
    friend bool operator==(const Cursor&, const Cursor&) = default;
};

/// Is shown calls one at a time. The record is only lent.
using SeeCall = std::function<void(const CallRecord&)>;

struct Page {
    std::vector<CallRecord> rows;
    Cursor next;         ///< Where the next page begins; unchanged where nothing was read.
    bool atEnd = false;  ///< No row follows.
};

/// How long a deleted call can be had back.
constexpr std::chrono::seconds keptAsideFor = std::chrono::hours(24 * 30);

/// A call that was deleted and is kept aside.
struct DeletedCall {
    CallRecord call;             ///< As it was; its row identifier is given to no other call.
    std::int64_t deletedAt = 0;  ///< Seconds since 1970 in UTC.
    friend bool operator==(const DeletedCall&, const DeletedCall&) = default;
};

struct DeletedPage {
    std::vector<DeletedCall> rows;
    Cursor next;         ///< Where the next page begins; unchanged where nothing was read.
    bool atEnd = false;  ///< No row follows.
};

/// Whose calls are meant: the contact's, where there is one, and those without a contact that have one of the
/// addresses.
struct Correspondent {
    std::int32_t contactId = noContact;
    std::vector<std::string> addresses;
};

/// An address that there are calls of, and what they say of it: a contact, a name and a label, empty for none.
struct NamedAddress {
    std::string address;
    std::int32_t contactId = noContact;
    std::string name;
    std::string label;
    friend bool operator==(const NamedAddress&, const NamedAddress&) = default;
};

struct Totals {
    std::int64_t rows = 0;      ///< Rows of the list in the mode asked for.
    std::int64_t calls = 0;     ///< Calls of the filter.
    std::int64_t duration = 0;  ///< Seconds of all calls of the filter.
    friend bool operator==(const Totals&, const Totals&) = default;
};

}  // namespace quorvel::store
