// Tells whether a result came too late: loads, searches and deletions put theirs in beside each other, without a lock.
#pragma once

#include <atomic>
#include <cstdint>

namespace rows {

/// Counts the results that were put into a list's state. Work begins, looks at the state, puts its result in and
/// finishes; where another result was finished meanwhile, either may rest on what is gone by now, and whoever finishes
/// last works it out again. So the last result in is always one that nothing overtook. Any thread.
class Edition {
  public:
    std::uint64_t begin() const { return number_.load(); }
    /// The result is in. False where another one was finished since `begun`.
    bool finish(std::uint64_t begun) { return number_.fetch_add(1) == begun; }
    /// Whether exactly one result was finished since `begun`: the caller's own.
    bool isNext(std::uint64_t begun) const { return number_.load() == begun + 1; }

  private:
    std::atomic<std::uint64_t> number_{0};
};

}  // namespace rows
