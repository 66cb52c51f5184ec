// What an import holds while it is under way.
#pragma once

#include <bitset>
#include <unordered_map>

#include "desktop/quorvel/store/call_writer.h"
#include "desktop/quorvel/store/care.h"
#include "desktop/quorvel/store/import_session.h"
#include "desktop/quorvel/store/watch.h"

namespace quorvel::store {

class ImportSession::Impl {
  public:
    Impl(std::unique_ptr<Connection> connection, std::int64_t now)
        : connection_(std::move(connection)), transaction_(std::in_place, *connection_, Transaction::Kind::write) {
        if (Watch().look(*connection_).wasStranger) rebuildDerived(*connection_);
        writer_.emplace(*connection_, now);
    }

    bool isOpen() const { return transaction_.has_value(); }
    std::int64_t added() const { return added_; }

    Error overError() const {
        return {ErrorKind::failed, "The import into " + connection_->path().string() +
                                       " is over: it was finished, or an error ended it and nothing of it was written. "
                                       "Begin a new one."};
    }

    /// After an error the transaction may be half done, so it ends at once.
    template <class Work>
    auto guardedWork(Work&& work) {
        auto result = guarded(work);
        if (!result) close();
        return result;
    }

    std::int64_t add(const NewCall& call) {
        const std::int64_t rowId = writer_->insert(call);
        ++added_;
        return rowId;
    }

    bool contains(const NewCall& call) {
        const std::string day = dayText(days_.dayOf(call.date));
        Statement& found = connection_->statement(
            "select 1 from call indexed by call_by_address where address = ?1 and datetime = ?2 and date = ?3 and "
            "duration = "
            "?4 and (flags & 1) = ?5 limit 1");
        const ResetLater later(found);
        found.bind(1, call.address).bind(2, day).bind(3, call.date).bind(4, std::int64_t{call.duration});
        return found.bind(5, std::int64_t{isOutgoing(call.flags)}).step();
    }

    Done beginSource() {
        claimed_.clear();
        newestBefore_ = connection_->integerOf("select coalesce(max(ROWID), 0) from call");
        return {};
    }

    bool claim(const NewCall& call) {
        if (newestBefore_ == 0) return false;
        // The days of the log may have been counted in another time zone, up to 26 hours away.
        const std::int64_t day = days_.dayOf(call.date);
        Statement& found = connection_->statement(
            "select ROWID from call indexed by call_by_address where address = ?1 and datetime in (?2, ?3, ?4, ?5, ?6) "
            "and date = ?7 and duration = ?8 and (flags & 1) = ?9");
        const ResetLater later(found);
        found.bind(1, call.address).bind(7, call.date).bind(8, std::int64_t{call.duration});
        const std::string nearDays[] = {dayText(day - 2), dayText(day - 1), dayText(day), dayText(day + 1),
                                        dayText(day + 2)};
        for (int at = 0; at < 5; ++at) found.bind(2 + at, nearDays[at]);
        found.bind(9, std::int64_t{isOutgoing(call.flags)});
        while (found.step()) {
            const std::int64_t rowId = found.within(0, 1, greatestNumber, "a row identifier");
            if (rowId > newestBefore_) continue;
            auto claimed = claimed_[rowId / claimedInBlock][static_cast<std::size_t>(rowId % claimedInBlock)];
            if (claimed) continue;
            claimed = true;
            return true;
        }
        return false;
    }

    std::int64_t finish() {
        if (added_ > 0) {
            writer_->settle();
            transaction_->commit();
        }
        return added_;
    }

    /// Rolls back what was not committed and lets other writers in.
    void close() {
        writer_.reset();
        transaction_.reset();
    }

  private:
    static constexpr std::int64_t claimedInBlock = 4096;

    std::unique_ptr<Connection> connection_;
    std::optional<Transaction> transaction_;
    std::optional<CallWriter> writer_;
    LocalDays days_;
    std::int64_t added_ = 0;
    std::int64_t newestBefore_ = 0;
    /// A bit for each row identifier, by blocks of them.
    std::unordered_map<std::int64_t, std::bitset<claimedInBlock>> claimed_;
};

}  // namespace quorvel::store
