// A set of record numbers, for the searches that meet thousands of records.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdlib>

namespace recents {

/// Grows as it is filled; adding and asking cost the same however many it holds. One thread at a time.
class RecordSet {
  public:
    RecordSet() = default;
    ~RecordSet() { std::free(places_); }
    RecordSet(const RecordSet&) = delete;
    RecordSet& operator=(const RecordSet&) = delete;

    /// Answers whether it was not there before.
    bool add(std::int32_t record) {
        if (2 * (count_ + 1) > capacity_) grow();
        return put(record);
    }
    bool holds(std::int32_t record) const { return capacity_ > 0 && places_[placeOf(record)] != empty; }

  private:
    static constexpr std::int64_t empty = INT64_MAX;  // no record's number
    static constexpr std::size_t firstCapacity = 128;

    /// Where the record is, or where it would be put.
    std::size_t placeOf(std::int32_t record) const {
        // An odd multiplier; the high bits of the product are the well mixed ones.
        std::size_t place = (static_cast<std::uint32_t>(record) * 2654435769U >> 8U) & (capacity_ - 1);
        while (places_[place] != empty && places_[place] != record) place = (place + 1) & (capacity_ - 1);
        return place;
    }
    bool put(std::int32_t record) {
        auto& place = places_[placeOf(record)];
        if (place != empty) return false;
        place = record;
        ++count_;
        return true;
    }
    void grow() {
        const std::size_t former = capacity_;
        auto* const held = places_;
        capacity_ = former == 0 ? firstCapacity : 2 * former;
        places_ = static_cast<std::int64_t*>(std::malloc(capacity_ * sizeof(std::int64_t)));
        if (!places_) std::abort();
        for (std::size_t i = 0; i < capacity_; ++i) places_[i] = empty;
        count_ = 0;
        for (std::size_t i = 0; i < former; ++i)
            if (held[i] != empty) put(static_cast<std::int32_t>(held[i]));
        std::free(held);
    }

    std::int64_t* places_ = nullptr;
    std::size_t capacity_ = 0;  // a power of two, at most half full
    std::size_t count_ = 0;
};

}  // namespace recents
