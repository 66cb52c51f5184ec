// Keeps everything derived in step with the calls within one writing transaction: by the neighbours of each call where
// few change, by one pass over all where many do.
#pragma once

#include "desktop/quorvel/store/sums.h"

namespace quorvel::store {

/// Lives within one writing transaction on the connection.
class Ledger {
  public:
    explicit Ledger(Connection& connection);

    /// The call is about to be written or has just been; either way only its neighbours are looked at.
    void add(const CallRow& call);
    /// The call is about to be deleted or has just been.
    void remove(const CallRow& call);
    /// From here on neighbours are not looked at: settle() makes all sums anew.
    void expectMany(std::int64_t changes);

    /// Writes the sums and deletes parties that have no calls left. Once, before the transaction is committed.
    void settle();

  private:
    void countNeighbours(const CallRow& call, std::int64_t filter, std::int64_t sign);
    std::optional<CallRow> neighbour(const CallRow& call, std::int64_t filter, bool newer);
    void settleTotals();
    void settleDays();
    void settleSpans();
    void settleParties();

    Connection& connection_;
    Sums changes_;
    std::int64_t callsBefore_;
    std::int64_t changed_ = 0;
    bool many_ = false;
};

}  // namespace quorvel::store
