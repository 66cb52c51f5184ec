// A strong reference that several threads replace and read without a lock.
#pragma once

#include <cstdlib>
#include <new>

#include "objc/counted_slot.h"
#include "objc/strong.h"

namespace objc {

/// A place for one object. Every operation is safe on any thread, at any time, and takes no lock. Empty at first; a
/// global one needs no initialiser. (Object addresses may be tagged, so the slot points at a node of its own instead;
/// counted_slot.h shows why nobody is left with an object that is gone.)
template <class T = Object>
class StrongSlot {
  public:
    constexpr StrongSlot() = default;
    explicit StrongSlot(T borrowed) { store(borrowed); }

    /// The object that is there now, owned; null when there is none.
    Strong<T> load() const {
        Node* node = slot_.arrive();
        if (!node) return {};
        Strong<T> object(as<T>(node->object));
        slot_.leave(node);
        return object;
    }

    /// Puts an object, or null, there; the slot owns it. The one that was there is released.
    void store(Strong<T> object) { Slot::drop(slot_.take(nodeFor(std::move(object)))); }

    /// The same, and answers the one that was there.
    Strong<T> exchange(Strong<T> object) {
        Node* old = slot_.take(nodeFor(std::move(object)));
        if (!old) return {};
        Strong<T> former(as<T>(old->object));
        Slot::drop(old);
        return former;
    }

    /// Puts `desired` there if `expected` is there (the same object, or both null). Answers whether it was; when not,
    /// nothing has changed.
    bool compareExchange(T expected, Strong<T> desired) {
        Node* replacement = nodeFor(std::move(desired));
        for (;;) {
            Node* present = slot_.arrive();
            if ((present ? present->object : nullptr) != expected.self) {
                if (present) slot_.leave(present);
                discard(replacement);
                return false;
            }
            if (slot_.replace(present, replacement)) return true;
            if (present) slot_.leave(present);
        }
    }

  private:
    struct Node : detail::CountedNode {
        id object;
        static void destroy(Node* node) {
            Strong<T>::adopt(as<T>(node->object));
            discardMemory(node);
        }
        static void discardMemory(Node* node) {
            node->~Node();
            std::free(static_cast<void*>(node));
        }
    };
    using Slot = detail::CountedSlot<Node>;

    static Node* nodeFor(Strong<T> object) {
        if (!object) return nullptr;
        void* memory = std::malloc(sizeof(Node));
        if (!memory) std::abort();
        Node* node = new (memory) Node();
        node->object = object.take().self;
        return node;
    }
    static void discard(Node* neverShared) {
        if (neverShared) Node::destroy(neverShared);
    }

    mutable Slot slot_;
};

}  // namespace objc
