// All calls of one state of the log in memory, for terms that are found so often that reading along an index is most of
// the work.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "desktop/quorvel/store/call_row.h"

namespace quorvel::store {

/// One thread at a time.
class PackedLog {
  public:
    /// A longer log is not held: at some 36 bytes a call these are 72 megabytes.
    static constexpr std::int64_t mostCalls = 2'000'000;

    /// What the log's version is now; what is held of another is given back. Versions are compared for equality only,
    /// and none is negative.
    void logIs(std::int64_t version);
    bool isHeld() const { return state_ == State::held; }
    /// Whether this was asked before of this version: reading the log costs as much as some searches of it.
    bool isWantedAgain() { return std::exchange(wasWanted_, true); }
    /// Reads the log, of so many calls, where it is not held. Answers whether it is held then: not where it is too
    /// long, where a number in it is too large, or where its version is not known. Expects a reading transaction.
    bool hold(Connection& connection, std::int64_t calls);

    /// Shows the filter's calls of the parties that are wanted, newest first, until it is answered false. Answers
    /// whether it was.
    template <class Wanted, class See>
    bool walk(Filter filter, Wanted&& isWanted, See&& see) const;

  private:
    enum class State { unread, held, beyondHolding };
    struct Call {
        std::int64_t rowId;
        std::int32_t date, kind, duration, flags, contact, day;
    };
    bool add(const CallRow& row, std::string_view location);
    CallRow rowAt(std::size_t at) const;

    // The parties stand by themselves, close together: most calls are passed over for theirs.
    std::vector<std::uint32_t> parties_;
    std::vector<Call> calls_;
    std::vector<std::pair<std::size_t, std::string>> locations_;  // of the few calls that have one, by their place
    std::int64_t version_ = -1;
    State state_ = State::unread;
    bool wasWanted_ = false;
};

template <class Wanted, class See>
bool PackedLog::walk(Filter filter, Wanted&& isWanted, See&& see) const {
    auto location = locations_.begin();
    for (std::size_t at = 0; at < parties_.size(); ++at) {
        if (!isWanted(parties_[at])) continue;
        if (filter != Filter::all && calls_[at].kind != static_cast<std::int32_t>(filter)) continue;
        while (location != locations_.end() && location->first < at) ++location;
        const bool isPlaced = location != locations_.end() && location->first == at;
        if (!see(rowAt(at), isPlaced ? std::string_view(location->second) : std::string_view())) return true;
    }
    return false;
}

}  // namespace quorvel::store
