// What an import holds while it is under way.
#pragma once

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
    std::unique_ptr<Connection> connection_;
    std::optional<Transaction> transaction_;
    std::optional<CallWriter> writer_;
    LocalDays days_;
    std::int64_t added_ = 0;
};

}  // namespace quorvel::store
