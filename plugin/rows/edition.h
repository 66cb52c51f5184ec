// Tells whether a result comes too late: loads, searches and deletions work at a list beside each other, without a
// lock.
#pragma once

#include <atomic>
#include <cstdint>

namespace rows {

/// Counts what happens to a list's state. An edition lasts until what its results rest on changes: the text of a
/// search, the filter, the calls themselves. A result carries the moment at which it was asked for, and goes in only
/// while the edition of that moment lasts; the code that begins a new edition works the list out again. Within an
/// edition results may overtake each other: either may rest on what is gone by then, so the one that finishes last is
/// worked out again. The last result in is therefore one of the last edition that nothing overtook. Any thread.
class Edition {
  public:
    /// The moment at which a result is asked for: before the work looks at anything.
    using Moment = std::uint64_t;
    Moment now() const { return number_.load(); }

    /// Begins a new edition: after the change that ends the present one, and before anything is emptied for it. The
    /// caller works the list out again.
    void invalidate() { number_.fetch_add(oneEdition); }
    /// Whether the edition of that moment lasts.
    bool isCurrent(Moment asked) const { return number_.load() / oneEdition == asked / oneEdition; }

    /// A result that was asked for at that moment is in. False where the edition ended or another result came in since;
    /// otherwise `asked` becomes the moment after it.
    bool finish(Moment& asked) {
        if (number_.fetch_add(1) != asked) return false;
        ++asked;
        return true;
    }
    /// A row was taken out or put in: results that are under way are overtaken by it.
    void change() { number_.fetch_add(1); }

  private:
    // Editions are counted in the upper half, what came in during one in the lower.
    static constexpr Moment oneEdition = Moment{1} << 32;
    std::atomic<Moment> number_{0};
};

}  // namespace rows
