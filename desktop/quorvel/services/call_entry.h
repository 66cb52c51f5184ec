// QVCallEntry: one call, or the calls of one contact in a row, or one day. Shared between lists and threads.
#pragma once

#include <atomic>

#include "desktop/quorvel/services/shared_texts.h"
#include "desktop/quorvel/store/call.h"
#include "objc/layer.h"

namespace quorvel {

class CallEntry : public objc::PeerBase {
  public:
    using Super = objc::Foreign<"NSObject">;
    static constexpr objc::Name className{"QVCallEntry"};
    static void define(objc::ClassDefinition<CallEntry>& definition);

    /// A new entry with the record's fields, owned by the caller.
    static objc::Ref<CallEntry> of(const store::CallRecord& record, SharedTexts& texts);
    /// Takes over the record's fields, one by one; a call without a place gets that of its number. What rows say of the
    /// number is worked out here, on the thread that read the record.
    void fill(const store::CallRecord& record, SharedTexts& texts);
    /// Whether it stands for a day.
    bool isDay() const { return dialledCount + receivedCount + missedCount > 0; }
    /// The list besides "all" that the call belongs to.
    store::Filter kind() const { return store::listOf(flag, duration); }
    /// The fields as the store takes them.
    store::CallRecord record() const;

    template <std::atomic<std::int32_t> CallEntry::*field>
    std::int32_t get32() const {
        return (this->*field).load(std::memory_order_relaxed);
    }
    template <std::atomic<std::int32_t> CallEntry::*field>
    void set32(std::int32_t value) {
        (this->*field).store(value, std::memory_order_relaxed);
    }
    template <std::atomic<std::int64_t> CallEntry::*field>
    std::int64_t get64() const {
        return (this->*field).load(std::memory_order_relaxed);
    }
    template <std::atomic<std::int64_t> CallEntry::*field>
    void set64(std::int64_t value) {
        (this->*field).store(value, std::memory_order_relaxed);
    }
    template <objc::Strong<> CounterpartTexts::*field>
    objc::Strong<> text() const {
        return texts_.load(field);
    }
    template <objc::Strong<> CounterpartTexts::*field>
    void setText(objc::Object text) {
        texts_.replace(field, copyOf(text));
    }
    objc::Strong<> dayText() const { return texts_.loadDay(); }
    void setDay(objc::Object text) { texts_.replaceDay(copyOf(text)); }
    objc::Strong<> phoneNumber() const { return text<&CounterpartTexts::phoneNumber>(); }
    bool isDeleted() const { return deleted.load(std::memory_order_relaxed); }
    void setIsDeleted(bool isDeletedNow) { deleted.store(isDeletedNow, std::memory_order_relaxed); }
    bool isDialed() const { return store::isDialled(flag, duration); }
    bool isReceived() const { return store::isReceived(flag, duration); }
    bool isMissed() const { return store::isMissed(flag, duration); }
    bool isCanceled() const { return store::isCancelled(flag, duration); }
    bool isOutGoing() const { return store::isOutgoing(flag); }
    bool isFaceTime() const { return store::isFaceTime(flag); }
    bool isFaceTimeVideo() const { return store::isFaceTimeVideo(flag); }

    std::atomic<std::int32_t> rowId{0};
    std::atomic<std::int32_t> logId{0};
    std::atomic<std::int32_t> contact{store::noContact};
    std::atomic<std::int32_t> date{0};
    std::atomic<std::int32_t> duration{0};
    std::atomic<std::int32_t> flag{0};
    std::atomic<std::int32_t> count{1};
    std::atomic<bool> deleted{false};
    std::atomic<std::int64_t> dialledCount{0};
    std::atomic<std::int64_t> receivedCount{0};
    std::atomic<std::int64_t> missedCount{0};
    std::atomic<std::int64_t> dialledDuration{0};
    std::atomic<std::int64_t> receivedDuration{0};

  private:
    static objc::Strong<> copyOf(objc::Object text) {
        return objc::Strong<>::adopt(objc::send<"copy", objc::Object>(text));
    }

    CallTextsSlot texts_;
};

}  // namespace quorvel
