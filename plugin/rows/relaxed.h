// Scalars that several threads read and write without a lock.
#pragma once

#include <atomic>

namespace rows {

/// A scalar with relaxed atomic access: never torn, no order promised to other memory.
template <class T>
class Relaxed {
  public:
    constexpr Relaxed() = default;
    constexpr Relaxed(T value) : value_(value) {}  // NOLINT: stands for a T
    Relaxed& operator=(T value) {
        value_.store(value, std::memory_order_relaxed);
        return *this;
    }
    operator T() const { return value_.load(std::memory_order_relaxed); }  // NOLINT: stands for a T
    T get() const { return value_.load(std::memory_order_relaxed); }
    void add(T amount) { value_.fetch_add(amount, std::memory_order_relaxed); }

  private:
    std::atomic<T> value_{};
};

}  // namespace rows
