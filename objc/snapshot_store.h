// What stands behind a snapshot array: a buffer that only grows at its end, and a slot through which it is replaced.
// Any number of threads read and write without a lock; each reader sees one consistent state.
#pragma once

#include <atomic>
#include <cstdlib>
#include <new>
#include <span>

#include "objc/counted_slot.h"
#include "objc/strong.h"

namespace objc {
namespace detail {

/// Objects, each retained once, that are written one after the other and never changed. The first empty place may be
/// sealed (with the buffer's own address): then nothing can be added any more.
struct SnapshotBuffer : CountedNode {
    std::atomic<std::size_t> count{0};
    std::size_t capacity = 0;

    static SnapshotBuffer* make(std::size_t capacity) {
        void* memory = std::malloc(sizeof(SnapshotBuffer) + capacity * sizeof(std::atomic<id>));
        if (!memory) std::abort();
        auto* buffer = new (memory) SnapshotBuffer();
        buffer->capacity = capacity;
        for (std::size_t i = 0; i < capacity; ++i) new (buffer->places() + i) std::atomic<id>(nullptr);
        return buffer;
    }
    static void destroy(SnapshotBuffer* buffer) {
        std::size_t end = buffer->count.load(std::memory_order_relaxed);
        for (std::size_t i = 0; i < end; ++i) release(Object{buffer->places()[i].load(std::memory_order_relaxed)});
        buffer->~SnapshotBuffer();
        std::free(static_cast<void*>(buffer));
    }

    std::atomic<id>* places() { return reinterpret_cast<std::atomic<id>*>(this + 1); }
    id seal() { return reinterpret_cast<id>(this); }

    /// Adds to a buffer that no other thread knows yet.
    void fill(Object object) {
        retain(object);
        std::size_t end = count.load(std::memory_order_relaxed);
        places()[end].store(object.self, std::memory_order_relaxed);
        count.store(end + 1, std::memory_order_relaxed);
    }
    /// Adds an object, whose reference the buffer takes over. False when the buffer is full or sealed.
    bool append(id object) {
        std::size_t end = count.load(std::memory_order_acquire);
        while (end < capacity) {
            id present = nullptr;
            bool added = places()[end].compare_exchange_strong(present, object, std::memory_order_acq_rel,
                                                               std::memory_order_acquire);
            if (!added && present == seal()) return false;
            // Whoever finds a place taken counts it on behalf of the one that took it.
            std::size_t counted = end;
            count.compare_exchange_strong(counted, end + 1, std::memory_order_acq_rel, std::memory_order_acquire);
            if (added) return true;
            ++end;
        }
        return false;
    }
    /// Adds an object, whose reference the buffer takes over, as the one at `end`. False when that place is taken or
    /// sealed.
    bool appendAt(std::size_t end, id object) {
        id present = nullptr;
        if (!places()[end].compare_exchange_strong(present, object, std::memory_order_acq_rel,
                                                   std::memory_order_acquire))
            return false;
        count.compare_exchange_strong(end, end + 1, std::memory_order_acq_rel, std::memory_order_acquire);
        return true;
    }
    /// Sees to it that `end` objects is all that the buffer will ever hold. False when there are more already.
    bool sealAt(std::size_t end) {
        if (end == capacity) return true;
        id present = nullptr;
        if (places()[end].compare_exchange_strong(present, seal(), std::memory_order_acq_rel,
                                                  std::memory_order_acquire) ||
            present == seal())
            return true;
        count.compare_exchange_strong(end, end + 1, std::memory_order_acq_rel, std::memory_order_acquire);
        return false;
    }
};
static_assert(sizeof(SnapshotBuffer) % alignof(std::atomic<id>) == 0 && sizeof(std::atomic<id>) == sizeof(id));

}  // namespace detail

/// One state of an array, unchanging. While it lives its objects live. Not shared between threads without a copy.
class Snapshot {
  public:
    Snapshot() = default;
    Snapshot(const Snapshot& other) : buffer_(other.buffer_), count_(other.count_) {
        if (buffer_) Slot::keep(buffer_);
    }
    Snapshot(Snapshot&& other) noexcept
        : buffer_(std::exchange(other.buffer_, nullptr)), count_(std::exchange(other.count_, 0)) {}
    Snapshot& operator=(Snapshot other) noexcept {
        std::swap(buffer_, other.buffer_);
        std::swap(count_, other.count_);
        return *this;
    }
    ~Snapshot() { Slot::drop(buffer_); }

    std::size_t size() const { return count_; }
    /// The object at that index, borrowed from the snapshot; null past the end.
    Object operator[](std::size_t index) const {
        if (index >= count_) return {};
        return Object{buffer_->places()[index].load(std::memory_order_relaxed)};
    }
    /// The objects in a row, as the runtime's calls take them.
    id* objects() const { return buffer_ ? reinterpret_cast<id*>(buffer_->places()) : nullptr; }

  private:
    friend class SnapshotStore;
    using Slot = detail::CountedSlot<detail::SnapshotBuffer>;
    /// Takes over a reference of the buffer.
    Snapshot(detail::SnapshotBuffer* buffer, std::size_t count) : buffer_(buffer), count_(count) {}

    detail::SnapshotBuffer* buffer_ = nullptr;
    std::size_t count_ = 0;
};

/// The states of one array. Every operation is safe on any thread and takes no lock.
class SnapshotStore {
  public:
    std::size_t size() const {
        return read([](Buffer*, std::size_t count) { return count; });
    }

    /// The object at that index, owned; null past the end.
    Strong<Object> at(std::size_t index) const {
        return read([index](Buffer* buffer, std::size_t count) {
            if (index >= count) return Strong<Object>();
            return Strong<Object>(Object{buffer->places()[index].load(std::memory_order_relaxed)});
        });
    }

    Snapshot snapshot() const {
        return read([](Buffer* buffer, std::size_t count) {
            if (!buffer) return Snapshot();
            Slot::keep(buffer);
            return Snapshot(buffer, count);
        });
    }

    /// Adds an object at the end: into the present buffer where it has room, so that this costs the same however long
    /// the array is. Null is not added.
    void append(Object object) {
        if (!object) return;
        retain(object);
        for (;;) {
            Buffer* buffer = slot_.arrive();
            if (buffer && buffer->append(object.self)) return slot_.leave(buffer);
            // Full or sealed: what it holds is final.
            std::size_t count = buffer ? buffer->count.load(std::memory_order_acquire) : 0;
            Buffer* grown = Buffer::make(capacityFor(count + 1));
            for (std::size_t i = 0; i < count; ++i) grown->fill(objectAt(buffer, i));
            grown->fill(object);
            if (publish(buffer, grown)) return release(object);
        }
    }

    /// Makes these objects, whose references it takes over, the content of an empty array that nobody else knows yet.
    /// None may be null.
    void adopt(std::span<Strong<Object>> objects) {
        if (objects.empty()) return;
        Buffer* buffer = Buffer::make(objects.size());
        for (std::size_t i = 0; i < objects.size(); ++i)
            buffer->places()[i].store(objects[i].take().self, std::memory_order_relaxed);
        buffer->count.store(objects.size(), std::memory_order_relaxed);
        Slot::drop(slot_.take(buffer));
    }

    /// Replaces the whole content in one step by what `build` answers: build(const Snapshot& present, Draft& draft)
    /// adds objects to the draft, or answers false for no change. It may run several times, and every time but the last
    /// is without effect. Answers the content that was replaced (the present one when nothing changed).
    class Draft;
    template <class Build>
    Snapshot change(Build build);

    /// Replaces the whole content in one step, and answers the former one.
    Snapshot replaceAll(std::span<const Object> objects);

    // For work that takes time: they carry it out only on the very state that it rests on. False where the content is
    // another state by now: something was added, removed or replaced since, even where it holds the same objects, or
    // none, again.

    /// Replaces the whole content in one step. When this answers false nothing has changed.
    bool replaceFrom(const Snapshot& seen, std::span<const Object> objects);
    /// Adds the objects at the end; `seen` shows the new state then. When this answers false `seen` is as it was, and
    /// the first of the objects may have been added before the content changed.
    bool appendFrom(Snapshot& seen, std::span<const Object> objects);

  private:
    using Buffer = detail::SnapshotBuffer;
    using Slot = detail::CountedSlot<Buffer>;

    static Object objectAt(Buffer* buffer, std::size_t index) {
        return Object{buffer->places()[index].load(std::memory_order_relaxed)};
    }
    static std::size_t capacityFor(std::size_t count) { return count < 4 ? 8 : count * 2; }

    /// What `reader` answers for the present buffer (null: none) and count; the buffer lives that long.
    template <class Reader>
    std::invoke_result_t<Reader, Buffer*, std::size_t> read(Reader reader) const {
        Buffer* buffer = slot_.arrive();
        auto answer = reader(buffer, buffer ? buffer->count.load(std::memory_order_acquire) : 0);
        if (buffer) slot_.leave(buffer);
        return answer;
    }

    /// Puts `next` in the place of `present`, whose content is final. The arrival at `present` is over in either case;
    /// `next` is gone when this fails.
    bool publish(Buffer* present, Buffer* next) {
        if (slot_.replace(present, next)) return true;
        if (present) slot_.leave(present);
        Buffer::destroy(next);
        return false;
    }

    /// Puts the draft's content in the place of `present`, unless another state is there by now.
    bool publishFrom(const Snapshot& present, Draft& draft);

    mutable Slot slot_;
};

/// The content that SnapshotStore::change is about to put in.
class SnapshotStore::Draft {
  public:
    ~Draft() {
        if (buffer_) Buffer::destroy(buffer_);
    }
    Draft() = default;
    Draft(const Draft&) = delete;
    Draft& operator=(const Draft&) = delete;

    /// Adds an object at the end; null is not added.
    void add(Object object) {
        if (!object) return;
        std::size_t count = buffer_ ? buffer_->count.load(std::memory_order_relaxed) : 0;
        if (!buffer_ || count == buffer_->capacity) reserve(capacityFor(count + 1));
        buffer_->fill(object);
    }
    /// Makes room for so many objects in all.
    void reserve(std::size_t capacity) {
        if (buffer_ && capacity <= buffer_->capacity) return;
        Buffer* larger = Buffer::make(capacity);
        std::size_t count = buffer_ ? buffer_->count.load(std::memory_order_relaxed) : 0;
        for (std::size_t i = 0; i < count; ++i) larger->fill(objectAt(buffer_, i));
        if (buffer_) Buffer::destroy(buffer_);
        buffer_ = larger;
    }

  private:
    friend class SnapshotStore;
    Buffer* buffer_ = nullptr;
};

template <class Build>
Snapshot SnapshotStore::change(Build build) {
    for (;;) {
        Snapshot present = snapshot();
        Draft draft;
        if (!build(present, draft) || publishFrom(present, draft)) return present;
    }
}

inline bool SnapshotStore::publishFrom(const Snapshot& present, Draft& draft) {
    // An empty content has a buffer too: it is another state than the empty one before it.
    if (!draft.buffer_) draft.buffer_ = Buffer::make(0);
    Buffer* arrived = slot_.arrive();
    if (arrived == present.buffer_ && (!arrived || arrived->sealAt(present.count_)) &&
        slot_.replace(arrived, draft.buffer_)) {
        draft.buffer_ = nullptr;
        return true;
    }
    if (arrived) slot_.leave(arrived);
    return false;
}

inline bool SnapshotStore::replaceFrom(const Snapshot& seen, std::span<const Object> objects) {
    Draft draft;
    draft.reserve(objects.size());
    for (Object object : objects) draft.add(object);
    return publishFrom(seen, draft);
}

inline bool SnapshotStore::appendFrom(Snapshot& seen, std::span<const Object> objects) {
    const std::size_t end = seen.count_ + objects.size();
    if (!seen.buffer_ || end > seen.buffer_->capacity) {
        Draft draft;
        // What was added to once is likely to be added to again.
        draft.reserve(seen.count_ == 0 ? end : end * 2);
        for (std::size_t i = 0; i < seen.count_; ++i) draft.add(seen[i]);
        for (Object object : objects) draft.add(object);
        Buffer* next = draft.buffer_;
        const std::size_t count = next->count.load(std::memory_order_relaxed);
        Slot::keep(next);
        if (!publishFrom(seen, draft)) return false;
        seen = Snapshot(next, count);
        return true;
    }
    Buffer* arrived = slot_.arrive();
    bool isSame = arrived == seen.buffer_ && arrived->count.load(std::memory_order_acquire) == seen.count_;
    std::size_t added = 0;
    for (; isSame && added < objects.size(); ++added) {
        retain(objects[added]);
        isSame = arrived->appendAt(seen.count_ + added, objects[added].self);
        if (!isSame) release(objects[added]);
    }
    if (arrived) slot_.leave(arrived);
    if (isSame) seen.count_ = end;
    return isSame;
}

inline Snapshot SnapshotStore::replaceAll(std::span<const Object> objects) {
    return change([objects](const Snapshot&, Draft& draft) {
        if (!objects.empty()) draft.reserve(objects.size());
        for (Object object : objects) draft.add(object);
        return true;
    });
}

}  // namespace objc
