// Packing and unpacking calls.
#include "desktop/quorvel/store/packed_log.h"

#include <algorithm>
#include <utility>

#include "desktop/quorvel/store/reader.h"

namespace quorvel::store {

void PackedLog::logIs(std::int64_t version) {
    if (version == version_) return;
    *this = PackedLog();
    version_ = version;
}

bool PackedLog::hold(Connection& connection, std::int64_t calls) {
    if (version_ < 0 || state_ != State::unread) return isHeld();
    const std::int64_t version = version_;
    const auto room = static_cast<std::size_t>(std::clamp<std::int64_t>(calls, 0, mostCalls));
    parties_.reserve(room);
    calls_.reserve(room);
    const bool stopped = store::walk(connection, {}, [this](const CallRow& row, std::string_view location) {
        return static_cast<std::int64_t>(calls_.size()) < mostCalls && add(row, location);
    });
    if (stopped) {
        // What was read of it is given back; that it cannot be held is remembered until the log changes.
        *this = PackedLog();
        version_ = version;
    }
    state_ = stopped ? State::beyondHolding : State::held;
    return isHeld();
}

bool PackedLog::add(const CallRow& row, std::string_view location) {
    const bool fits = std::in_range<std::uint32_t>(row.party) && std::in_range<std::int32_t>(row.date) &&
                      std::in_range<std::int32_t>(row.kind) && std::in_range<std::int32_t>(row.duration) &&
                      std::in_range<std::int32_t>(row.flags) && std::in_range<std::int32_t>(row.contact) &&
                      std::in_range<std::int32_t>(row.day);
    if (!fits) return false;
    const auto packed = [](std::int64_t number) { return static_cast<std::int32_t>(number); };
    if (!location.empty()) locations_.emplace_back(calls_.size(), location);
    parties_.push_back(static_cast<std::uint32_t>(row.party));
    calls_.push_back({row.rowId, packed(row.date), packed(row.kind), packed(row.duration), packed(row.flags),
                      packed(row.contact), packed(row.day)});
    return true;
}

CallRow PackedLog::rowAt(std::size_t at) const {
    const Call& call = calls_[at];
    return {call.date, call.rowId, call.kind, call.duration, call.flags, parties_[at], call.contact, call.day};
}

}  // namespace quorvel::store
