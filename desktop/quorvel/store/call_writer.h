// Writes calls, with their parties and all sums, within one writing transaction.
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "desktop/quorvel/store/ledger.h"
#include "desktop/quorvel/store/local_days.h"

namespace quorvel::store {

/// The reason why the call cannot be written, or nothing.
std::optional<Error> objectionTo(const NewCall& call);

/// Lives within one writing transaction on the connection.
class CallWriter {
  public:
    explicit CallWriter(Connection& connection) : connection_(connection), ledger_(connection) {}

    void expectMany(std::int64_t changes) { ledger_.expectMany(changes); }
    std::int64_t insert(const NewCall& call);
    /// Returns how many of the calls there were.
    std::int64_t erase(std::span<const std::int64_t> rowIds);
    void eraseAll();
    std::int64_t link(std::string_view address, std::int64_t contact, std::string_view name, std::string_view label);
    /// Writes the sums and the new revision. Once, before the transaction is committed.
    void settle();

  private:
    struct Party {
        std::int64_t number = 0;
        std::string name, label;
    };

    Party& partyOf(std::string_view address, std::int64_t contact);
    /// Empty texts leave what there is, unless `always`.
    void nameParty(Party& party, std::string_view name, std::string_view label, bool always);

    Connection& connection_;
    Ledger ledger_;
    LocalDays days_;
    std::unordered_map<std::string, Party> parties_;
    std::string key_;
    bool renamed_ = false;
};

}  // namespace quorvel::store
