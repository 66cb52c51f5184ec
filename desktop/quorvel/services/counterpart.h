// The other side of an entry's calls: a contact with all its numbers, or a number in whatever form it is written.
#pragma once

#include <cstdint>
#include <set>
#include <string>

#include "desktop/quorvel/services/call_entry.h"
#include "desktop/quorvel/store/call_store.h"

namespace quorvel {

class Counterpart {
  public:
    /// Of the entry's contact where it has one, with the numbers and addresses of its card; else of its number. While
    /// access to contacts is denied a contact has no numbers. Any thread.
    explicit Counterpart(const CallEntry& entry);

    /// Whether a call with that contact and address is with it. Calls that are linked to a contact are that contact's
    /// alone.
    bool isOn(std::int32_t contact, const std::string& address) const;
    bool isOn(const CallEntry& call) const;
    /// As the log knows it now: with every spelling that the log has.
    store::Result<store::Correspondent> in(const store::CallStore& calls) const;

  private:
    void take(const std::string& address);
    bool hasKeyOf(const std::string& address) const;

    std::int32_t contact_;
    std::set<std::string> spellings_;  // as they were given
    std::set<std::string> keys_;       // as addresses are compared
    std::set<int> keyEnds_;            // the last digits of the keys that have some
};

}  // namespace quorvel
