// The table `deleted`: calls that were deleted, whole and with their names, until they are too old to be had back.
#pragma once

#include <optional>
#include <vector>

#include "desktop/quorvel/store/call_row.h"

namespace quorvel::store {

/// Calls that were deleted at this moment or before can no longer be had back.
constexpr std::int64_t expiredAt(std::int64_t now) { return now - keptAsideFor.count(); }

/// A deleted call as it is brought back: what the table `call` does not hold, and what a party needs.
struct KeptCall {
    std::int64_t rowId = 0;
    NewCall call;
    std::int64_t day = 0;
};

/// Lives within one transaction on the connection; for whatever writes, a writing one.
class KeptAside {
  public:
    /// Calls that were deleted at `expired` or before count as gone.
    KeptAside(Connection& connection, std::int64_t expired) : connection_(connection), expired_(expired) {}

    /// Copies the call of the table `call`, if there is one; it is about to be deleted there.
    void keep(std::int64_t rowId, std::int64_t now);
    void keepAll(std::int64_t now);
    /// Deletes what is too old, the oldest first, `limit` calls at most.
    void clear(std::int64_t limit);

    DeletedPage page(const Cursor& after, std::int64_t limit);
    std::vector<std::int64_t> rowIds();
    std::optional<KeptCall> find(std::int64_t rowId);
    /// Copies the call back with the derived columns given, and forgets it here.
    void putBack(std::int64_t rowId, std::int64_t kind, std::int64_t party, std::string_view day);

  private:
    Connection& connection_;
    std::int64_t expired_;
};

}  // namespace quorvel::store
