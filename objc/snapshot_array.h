// An NSMutableArray that any number of threads read and change without a lock, each reader seeing one consistent state.
#pragma once

#include <array>

#include "objc/class.h"
#include "objc/snapshot_store.h"

namespace objc {
namespace detail {

struct FastEnumerationState {
    unsigned long state;
    id* items;
    unsigned long* mutations;
    unsigned long extra[5];
};
struct IndexRange {
    unsigned long location;
    unsigned long length;
};

/// What `copy` of a snapshot array answers: an immutable array of one state, whose objects live as long as it does. It
/// costs the same however long the array is.
template <Name name>
class SnapshotCopy : public PeerBase {
  public:
    using Super = Foreign<"NSArray">;
    static constexpr auto className = join(name, Name{"Copy"});
    static void define(ClassDefinition<SnapshotCopy>& definition) {
        definition.template method<"init", &SnapshotCopy::init>();
        definition.template method<"count", &SnapshotCopy::count>();
        definition.template method<"objectAtIndex:", &SnapshotCopy::objectAtIndex>();
        definition.template method<"copyWithZone:", &SnapshotCopy::copyWithZone>();
        definition.template method<"countByEnumeratingWithState:objects:count:", &SnapshotCopy::countByEnumerating>();
    }
    static Ref<SnapshotCopy> of(Snapshot snapshot) {
        auto copy = Ref<SnapshotCopy>::make();
        copy->snapshot = std::move(snapshot);
        return copy;
    }

    Object init() { return {self}; }
    unsigned long count() const { return snapshot.size(); }
    Object objectAtIndex(unsigned long index) const { return snapshot[index]; }
    Object copyWithZone(void*) const { return Strong<Object>(Object{self}).take(); }
    unsigned long countByEnumerating(FastEnumerationState* state, id*, unsigned long) const {
        static unsigned long unchanging = 0;
        if (state->state != 0) return 0;
        state->state = 1;
        state->items = snapshot.objects();
        state->mutations = &unchanging;
        return snapshot.size();
    }

    Snapshot snapshot;
};

/// The objects of any array in one state, for reading them in order: a snapshot where it has one, else a copy.
template <class Array, class Copy>
class ElementsOf {
  public:
    explicit ElementsOf(Object array) {
        if (auto* other = peerIf<Array>(array))
            snapshot_ = other->snapshot();
        else if (auto* copy = peerIf<Copy>(array))
            snapshot_ = copy->snapshot;
        else
            copy_ = Strong<Object>::adopt(send<"copy", Object>(array));
        size_ = copy_ ? send<"count", unsigned long>(copy_) : snapshot_.size();
    }

    unsigned long size() const { return size_; }
    template <class See>
    void each(See see) const {
        for (std::size_t i = 0; i < snapshot_.size(); ++i) see(snapshot_[i]);
        if (!copy_) return;
        FastEnumerationState state{};
        std::array<id, 16> room;
        while (unsigned long count = send<"countByEnumeratingWithState:objects:count:", unsigned long>(
                   copy_, &state, room.data(), room.size()))
            for (unsigned long i = 0; i < count; ++i) see(Object{state.items[i]});
    }

  private:
    Snapshot snapshot_;
    Strong<Object> copy_;
    unsigned long size_ = 0;
};

}  // namespace detail

template <>
struct Encoding<detail::IndexRange> {
    static constexpr Name text{"{_NSRange=QQ}"};
};

/// The peer of an array class of that name. Each image registers the class under a name of its own, before other
/// threads run: classOf<SnapshotArray<"QVCallArray">>().
///
/// As an NSMutableArray it differs in this: reading past the end answers nil, removing and replacing there do nothing,
/// inserting there appends, and a null object is not added. An object that it answers stays alive until the caller's
/// autorelease pool ends, an enumeration runs over the state that it began with, and `copy` is an immutable array of
/// one state, which answers nil past its end too. Two messages in a row may meet two states: who needs several answers
/// that fit together asks a copy, an enumeration or a Snapshot. Adding at the end and `copy` cost the same however long
/// the array is; every other change copies it.
template <Name name>
class SnapshotArray : public PeerBase {
  public:
    using Super = Foreign<"NSMutableArray">;
    static constexpr auto className = name;
    static void define(ClassDefinition<SnapshotArray>& definition);

    /// The C++ side of the same array, for callers that want one consistent state or one step.
    SnapshotStore& store() { return store_; }
    Snapshot snapshot() const { return store_.snapshot(); }
    void append(Object object) { store_.append(object); }
    /// Replaces the whole content in one step, and answers the former one.
    Snapshot replaceAll(std::span<const Object> objects) { return store_.replaceAll(objects); }
    /// The same on the very state that was seen; see SnapshotStore.
    bool replaceFrom(const Snapshot& seen, std::span<const Object> objects) {
        return store_.replaceFrom(seen, objects);
    }
    bool appendFrom(Snapshot& seen, std::span<const Object> objects) { return store_.appendFrom(seen, objects); }
    /// Removes, in one step, the objects for which `unwanted(Object)` is true. It may be asked more than once.
    template <class Predicate>
    void removeIf(Predicate unwanted);

    Object init() { return {self}; }
    Object initWithCapacity(unsigned long) { return {self}; }
    Object initWithObjects(const id* objects, unsigned long count);

    unsigned long count() const { return store_.size(); }
    Strong<Object> objectAtIndex(unsigned long index) const { return store_.at(index); }
    void addObject(Object object) { store_.append(object); }
    void addObjectsFromArray(Object array);
    void insertObject(Object object, unsigned long index);
    void removeObjectAtIndex(unsigned long index) { removeRange({index, 1}); }
    void removeObjectsInRange(detail::IndexRange range) { removeRange(range); }
    void removeObject(Object object);
    void removeObjectIdenticalTo(Object object);
    void removeObjectsInArray(Object array);
    void removeLastObject();
    void removeAllObjects() { store_.replaceAll({}); }
    void replaceObject(unsigned long index, Object object);
    void setArray(Object array);

    Object copyWithZone(void*) const { return Copy::of(store_.snapshot()).takeOwner().take(); }
    Object mutableCopyWithZone(void*) const;
    Strong<Object> objectEnumerator() const;
    unsigned long countByEnumerating(detail::FastEnumerationState* state, id*, unsigned long);

  private:
    using Copy = detail::SnapshotCopy<name>;
    using Elements = detail::ElementsOf<SnapshotArray, Copy>;

    static std::span<const Object> all(const Snapshot& snapshot) {
        return {reinterpret_cast<const Object*>(snapshot.objects()), snapshot.size()};
    }
    void removeRange(detail::IndexRange range);

    SnapshotStore store_;
};

template <Name name>
void SnapshotArray<name>::define(ClassDefinition<SnapshotArray>& definition) {
    classOf<Copy>();
    definition.template method<"init", &SnapshotArray::init>();
    definition.template method<"initWithCapacity:", &SnapshotArray::initWithCapacity>();
    definition.template method<"initWithObjects:count:", &SnapshotArray::initWithObjects>();
    definition.template method<"count", &SnapshotArray::count>();
    definition.template method<"objectAtIndex:", &SnapshotArray::objectAtIndex>();
    definition.template method<"addObject:", &SnapshotArray::addObject>();
    definition.template method<"addObjectsFromArray:", &SnapshotArray::addObjectsFromArray>();
    definition.template method<"insertObject:atIndex:", &SnapshotArray::insertObject>();
    definition.template method<"removeObjectAtIndex:", &SnapshotArray::removeObjectAtIndex>();
    definition.template method<"removeObjectsInRange:", &SnapshotArray::removeObjectsInRange>();
    definition.template method<"removeObject:", &SnapshotArray::removeObject>();
    definition.template method<"removeObjectIdenticalTo:", &SnapshotArray::removeObjectIdenticalTo>();
    definition.template method<"removeObjectsInArray:", &SnapshotArray::removeObjectsInArray>();
    definition.template method<"removeLastObject", &SnapshotArray::removeLastObject>();
    definition.template method<"removeAllObjects", &SnapshotArray::removeAllObjects>();
    definition.template method<"replaceObjectAtIndex:withObject:", &SnapshotArray::replaceObject>();
    definition.template method<"setArray:", &SnapshotArray::setArray>();
    definition.template method<"copyWithZone:", &SnapshotArray::copyWithZone>();
    definition.template method<"mutableCopyWithZone:", &SnapshotArray::mutableCopyWithZone>();
    definition.template method<"objectEnumerator", &SnapshotArray::objectEnumerator>();
    definition.template method<"countByEnumeratingWithState:objects:count:", &SnapshotArray::countByEnumerating>();
}

template <Name name>
template <class Predicate>
void SnapshotArray<name>::removeIf(Predicate unwanted) {
    store_.change([&](const Snapshot& present, SnapshotStore::Draft& draft) {
        bool found = false;
        for (Object object : all(present)) {
            if (unwanted(object))
                found = true;
            else
                draft.add(object);
        }
        return found;
    });
}

template <Name name>
Object SnapshotArray<name>::initWithObjects(const id* objects, unsigned long count) {
    store_.replaceAll({reinterpret_cast<const Object*>(objects), count});
    return {self};
}

template <Name name>
void SnapshotArray<name>::addObjectsFromArray(Object array) {
    const Elements added(array);
    if (added.size() == 0) return;
    store_.change([&](const Snapshot& present, SnapshotStore::Draft& draft) {
        // What was added to once is likely to be added to again.
        draft.reserve(present.size() == 0 ? added.size() : (present.size() + added.size()) * 2);
        for (Object object : all(present)) draft.add(object);
        added.each([&](Object object) { draft.add(object); });
        return true;
    });
}

template <Name name>
void SnapshotArray<name>::insertObject(Object object, unsigned long index) {
    if (!object) return;
    store_.change([&](const Snapshot& present, SnapshotStore::Draft& draft) {
        for (std::size_t i = 0; i < present.size(); ++i) {
            if (i == index) draft.add(object);
            draft.add(present[i]);
        }
        if (index >= present.size()) draft.add(object);
        return true;
    });
}

template <Name name>
void SnapshotArray<name>::removeRange(detail::IndexRange range) {
    store_.change([&](const Snapshot& present, SnapshotStore::Draft& draft) {
        if (range.length == 0 || range.location >= present.size()) return false;
        for (std::size_t i = 0; i < present.size(); ++i) {
            if (i < range.location || i - range.location >= range.length) draft.add(present[i]);
        }
        return true;
    });
}

template <Name name>
void SnapshotArray<name>::removeObject(Object object) {
    removeIf([object](Object present) { return present == object || send<"isEqual:", bool>(present, object); });
}

template <Name name>
void SnapshotArray<name>::removeObjectIdenticalTo(Object object) {
    removeIf([object](Object present) { return present == object; });
}

template <Name name>
void SnapshotArray<name>::removeObjectsInArray(Object array) {
    // A set, so that many out of many cost no more than one look at each.
    auto copy = Strong<Object>::adopt(send<"copy", Object>(array));
    auto unwanted = make<Object, "initWithArray:">(classNamed<"NSSet">(), copy.get());
    removeIf([&](Object present) { return send<"containsObject:", bool>(unwanted, present); });
}

template <Name name>
void SnapshotArray<name>::removeLastObject() {
    store_.change([](const Snapshot& present, SnapshotStore::Draft& draft) {
        if (present.size() == 0) return false;
        for (std::size_t i = 0; i + 1 < present.size(); ++i) draft.add(present[i]);
        return true;
    });
}

template <Name name>
void SnapshotArray<name>::replaceObject(unsigned long index, Object object) {
    if (!object) return;
    store_.change([&](const Snapshot& present, SnapshotStore::Draft& draft) {
        if (index >= present.size()) return false;
        for (std::size_t i = 0; i < present.size(); ++i) draft.add(i == index ? object : present[i]);
        return true;
    });
}

template <Name name>
void SnapshotArray<name>::setArray(Object array) {
    const Elements wanted(array);
    store_.change([&](const Snapshot&, SnapshotStore::Draft& draft) {
        if (wanted.size() > 0) draft.reserve(wanted.size());
        wanted.each([&](Object object) { draft.add(object); });
        return true;
    });
}

template <Name name>
Object SnapshotArray<name>::mutableCopyWithZone(void*) const {
    Ref<SnapshotArray> copy = Ref<SnapshotArray>::make();
    copy->replaceAll(all(store_.snapshot()));
    return copy.takeOwner().take();
}

template <Name name>
Strong<Object> SnapshotArray<name>::objectEnumerator() const {
    const auto copy = Copy::of(store_.snapshot());
    return Strong<Object>(send<"objectEnumerator", Object>(Object{copy.self()}));
}

template <Name name>
unsigned long SnapshotArray<name>::countByEnumerating(detail::FastEnumerationState* state, id*, unsigned long) {
    if (state->state != 0) return 0;
    auto copy = Copy::of(store_.snapshot());
    const unsigned long count = copy->countByEnumerating(state, nullptr, 0);
    autorelease(copy.takeOwner());
    return count;
}

}  // namespace objc
