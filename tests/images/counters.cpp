// An image with one thing that threads may do at once and one that they may not, for the thread sanitizer to tell
// apart.
#include <atomic>

#include "objc/class.h"

namespace {

class Counters : public objc::PeerBase {
  public:
    using Super = objc::Foreign<"NSObject">;
    static constexpr objc::Name className{"CountersOfImage"};
    static void define(objc::ClassDefinition<Counters>& definition) {
        definition.method<"addPlainly", &Counters::addPlainly>().method<"addAtomically", &Counters::addAtomically>();
    }
    long addPlainly() { return ++plain_; }
    long addAtomically() { return atomic_.fetch_add(1, std::memory_order_relaxed) + 1; }

  private:
    long plain_ = 0;
    std::atomic<long> atomic_ = 0;
};

[[gnu::constructor]] void registerAtLoad() { objc::registerClasses<Counters>(); }

}  // namespace
