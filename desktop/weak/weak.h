// Weak references: they do not keep their object, and are null once it is gone. Delegates, targets and data sources of
// the desktop are held in this way. The plug-in never uses this header: the table behind it takes a lock.
#pragma once

#include <utility>

#include "objc/class.h"

namespace weak {

struct Entry;

/// A weak reference to an object of any class. Reading it is safe while other threads release the object. Otherwise it
/// is as thread-safe as a plain pointer: one thread must not assign to it while another one uses it.
class Object {
  public:
    Object() = default;
    /// Null refers to nothing. The caller guarantees that the object lives during the call. A reference that is made of
    /// an object in its own dealloc must not be read before that has ended, and is null from then on.
    Object(objc::Object borrowed);  // NOLINT: a reference to what is given is what assignment means
    Object(const Object& other);
    Object(Object&& other) noexcept : entry_(std::exchange(other.entry_, nullptr)) {}
    Object& operator=(Object other) noexcept {
        std::swap(entry_, other.entry_);
        return *this;
    }
    ~Object();

    /// The object, kept alive by the result, or null once its last owner has released it. Any thread.
    objc::Strong<> load() const;

  private:
    Entry* entry_ = nullptr;
};

/// The same for an object that is known by its peer. T may be incomplete where the reference is declared. Must not be
/// made of a peer in that peer's own constructor, which runs before it has an object.
template <class T>
class Peer {
  public:
    Peer() = default;
    Peer(T* borrowed) : object_(borrowed ? objc::Object{borrowed->self} : objc::Object{}) {}  // NOLINT: as Object

    /// The peer with its object kept alive, or null once the object's last owner has released it. Any thread.
    objc::Ref<T> load() const { return objc::Ref<T>::adopt(object_.load()); }

  private:
    Object object_;
};

/// A callback that does the work while the peer's object lives, which stays alive during the work, and does nothing
/// later. For functions that are stored where the object does not own them.
template <class T, class Work>
auto whileAlive(T* peer, Work work) {
    return [reference = Peer<T>(peer), work = std::move(work)](const auto&... arguments) {
        if (const auto kept = reference.load()) work(arguments...);
    };
}

}  // namespace weak
