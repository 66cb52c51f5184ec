// What calls add up to: in all, by month, by contact and by day.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "desktop/quorvel/store/call.h"

namespace tools {

struct CallSums {
    std::int64_t dialled = 0;
    std::int64_t cancelled = 0;
    std::int64_t received = 0;
    std::int64_t missed = 0;
    std::int64_t seconds = 0;  ///< Of talk.

    std::int64_t calls() const { return dialled + cancelled + received + missed; }
    void add(const quorvel::store::CallRecord& call);
    friend bool operator==(const CallSums&, const CallSums&) = default;
};

struct NamedSums {
    std::string name;
    CallSums sums;
    friend bool operator==(const NamedSums&, const NamedSums&) = default;
};

class Statistics {
  public:
    void add(const quorvel::store::CallRecord& call);

    const CallSums& all() const { return all_; }
    /// "2024-06" and so on, the first one first, and those without calls in between too.
    std::vector<NamedSums> months() const;
    /// At most so many, the one with the most calls first, then by talk and by name. Calls of a contact count as one's
    /// whatever the address; those without a contact by their address.
    std::vector<NamedSums> contacts(std::size_t most) const;
    /// "2024-06-15" and so on, at most so many, the one with the most calls first, then by talk and the earliest.
    std::vector<NamedSums> busiestDays(std::size_t most) const;

  private:
    struct Person {
        std::string name;
        CallSums sums;
    };
    CallSums all_;
    std::map<std::string, CallSums> months_;
    std::map<std::string, CallSums> days_;
    std::map<std::pair<std::int32_t, std::string>, Person> people_;
};

/// "1:02:03", hours without a bound.
std::string talkText(std::int64_t seconds);

}  // namespace tools
