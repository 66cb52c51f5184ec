// An NSMutableArray that any number of threads read and change without a lock, each reader seeing one consistent state.
#pragma once

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

/// Keeps a snapshot for as long as the object lives.
template <Name name>
class SnapshotHolder : public PeerBase {
  public:
    using Super = Foreign<"NSObject">;
    static constexpr auto className = join(name, Name{"Snapshot"});
    static void define(ClassDefinition<SnapshotHolder>&) {}

    Snapshot snapshot;
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
/// autorelease pool ends, an enumeration runs over the state that it began with, and `copy` is an ordinary immutable
/// array of one state. Two messages in a row may meet two states: who needs several answers that fit together asks a
/// copy, an enumeration or a Snapshot. Adding at the end costs the same however long the array is; every other change
/// copies it.
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

    Object copyWithZone(void*) const { return asArray(store_.snapshot()).take(); }
    Object mutableCopyWithZone(void*) const;
    Strong<Object> objectEnumerator() const;
    unsigned long countByEnumerating(detail::FastEnumerationState* state, id*, unsigned long);

  private:
    static Strong<Object> asArray(const Snapshot& snapshot);
    static std::span<const Object> all(const Snapshot& snapshot) {
        return {reinterpret_cast<const Object*>(snapshot.objects()), snapshot.size()};
    }
    /// One state of any array: through a copy, which is free for an immutable one.
    static Snapshot stateOf(Object array);
    void removeRange(detail::IndexRange range);

    SnapshotStore store_;
};

template <Name name>
void SnapshotArray<name>::define(ClassDefinition<SnapshotArray>& definition) {
    classOf<detail::SnapshotHolder<name>>();
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
    Snapshot added = stateOf(array);
    if (added.size() == 0) return;
    store_.change([&](const Snapshot& present, SnapshotStore::Draft& draft) {
        draft.reserve((present.size() + added.size()) * 2);
        for (Object object : all(present)) draft.add(object);
        for (Object object : all(added)) draft.add(object);
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
    auto unwanted = make<Object, "initWithArray:">(classNamed<"NSSet">(), asArray(stateOf(array)).get());
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
    store_.replaceAll(all(stateOf(array)));
}

template <Name name>
Object SnapshotArray<name>::mutableCopyWithZone(void*) const {
    Ref<SnapshotArray> copy = Ref<SnapshotArray>::make();
    copy->replaceAll(all(store_.snapshot()));
    return copy.takeOwner().take();
}

template <Name name>
Strong<Object> SnapshotArray<name>::objectEnumerator() const {
    return Strong<Object>(send<"objectEnumerator", Object>(asArray(store_.snapshot())));
}

template <Name name>
unsigned long SnapshotArray<name>::countByEnumerating(detail::FastEnumerationState* state, id*, unsigned long) {
    static unsigned long unchanging = 0;
    if (state->state != 0) return 0;
    auto holder = Ref<detail::SnapshotHolder<name>>::make();
    holder->snapshot = store_.snapshot();
    state->state = 1;
    state->items = holder->snapshot.objects();
    state->mutations = &unchanging;
    unsigned long count = holder->snapshot.size();
    autorelease(holder.takeOwner());
    return count;
}

template <Name name>
Strong<Object> SnapshotArray<name>::asArray(const Snapshot& snapshot) {
    return make<Object, "initWithObjects:count:">(classNamed<"NSArray">(), static_cast<const id*>(snapshot.objects()),
                                                  static_cast<unsigned long>(snapshot.size()));
}

template <Name name>
Snapshot SnapshotArray<name>::stateOf(Object array) {
    if (auto* other = peerIf<SnapshotArray>(array)) return other->snapshot();
    auto copy = Strong<Object>::adopt(send<"copy", Object>(array));
    SnapshotStore state;
    unsigned long count = send<"count", unsigned long>(copy);
    state.change([&](const Snapshot&, SnapshotStore::Draft& draft) {
        if (count != 0) draft.reserve(count);
        for (unsigned long i = 0; i < count; ++i) draft.add(send<"objectAtIndex:", Object>(copy, i));
        return true;
    });
    return state.snapshot();
}

}  // namespace objc
