// Writes calls, with their parties and all sums, within one writing transaction.
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "desktop/quorvel/store/kept_aside.h"
#include "desktop/quorvel/store/ledger.h"
#include "desktop/quorvel/store/local_days.h"

namespace quorvel::store {

/// Lives within one writing transaction on the connection.
class CallWriter {
  public:
    /// `now` in seconds since 1970: the moment of what is deleted, and what kept calls are too old by.
    CallWriter(Connection& connection, std::int64_t now);

    void expectMany(std::int64_t changes) { ledger_.expectMany(changes); }
    std::int64_t insert(const NewCall& call);
    /// Returns how many of the calls there were. They are kept aside.
    std::int64_t erase(std::span<const std::int64_t> rowIds);
    /// Brings back those of the calls that are kept aside, and returns how many.
    std::int64_t putBack(std::span<const std::int64_t> rowIds);
    std::int64_t putBackAll() { return putBack(kept_.rowIds()); }
    void eraseAll();
    /// Returns how many calls the address has.
    std::int64_t link(std::string_view address, std::int64_t contact, std::string_view name, std::string_view label);
    /// Writes the sums and the new revision, and clears away what was kept for long enough. Once, before the
    /// transaction is committed.
    void settle();

  private:
    struct Party {
        std::int64_t number = 0;
        std::string name, label;
    };

    /// Throws where the log has no numbers left for calls or parties; asked once.
    void requireNumbers();
    Party& partyOf(std::string_view address, std::int64_t contact);
    /// Empty texts leave what there is, unless `always`.
    void nameParty(Party& party, std::string_view name, std::string_view label, bool always);

    Connection& connection_;
    std::int64_t now_;
    KeptAside kept_;
    Ledger ledger_;
    LocalDays days_;
    std::unordered_map<std::string, Party> parties_;
    std::string key_;
    std::int64_t changes_ = 0;
    bool renamed_ = false;
    bool hasNumbers_ = false;
};

}  // namespace quorvel::store
