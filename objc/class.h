// Classes made of C++ types. A peer is a C++ object that lives as long as its object; its public members become the
// object's methods, and type strings come from their C++ types.
//
//     class Label : public View {
//       public:
//         using Super = View;                                    // or objc::Foreign<"NSObject">
//         static constexpr objc::Name className{"UILabel"};
//         static void define(objc::ClassDefinition<Label>& definition) {
//             definition.method<"setText:", &Label::setText>();
//         }
//     };
#pragma once

#include <cstdlib>
#include <new>

#include "objc/strong.h"

namespace objc {

/// A superclass that is not made of a peer: it is looked up by name.
template <Name name>
struct Foreign {
    static constexpr Name className = name;
};

template <class T>
class ClassDefinition;

namespace detail {

template <class T>
inline constexpr bool isForeign = false;
template <Name name>
inline constexpr bool isForeign<Foreign<name>> = true;

/// The class of T's line that holds the pointer to the peer: the first one above which stands a foreign class.
template <class T, bool isRoot = isForeign<typename T::Super>>
struct RootOf {
    using Type = T;
};
template <class T>
struct RootOf<T, false> {
    using Type = typename RootOf<typename T::Super>::Type;
};
template <class T>
using Root = typename RootOf<T>::Type;

/// The instance variable that ties object and peer.
struct PeerSlot {
    PeerBase* peer;
    void (*destroy)(PeerBase*);
};
template <class R>
inline std::ptrdiff_t peerSlotOffset = 0;

template <class T>
inline PeerSlot& peerSlot(id object) {
    return *reinterpret_cast<PeerSlot*>(reinterpret_cast<char*>(object) + peerSlotOffset<Root<T>>);
}

}  // namespace detail

/// The class of peer type T; registered, with all above it, at the first call. Null when a foreign superclass is not
/// there. The first call must come before other threads run (libraries register their classes at load).
template <class T>
Class classOf();

/// The peer of an object that is of T's class or one below it; null for null. Nothing is checked.
template <class T>
inline T* peerOf(id object) {
    return object ? static_cast<T*>(detail::peerSlot<T>(object).peer) : nullptr;
}
template <class T>
inline T* peerOf(Object object) {
    return peerOf<T>(object.self);
}
/// The same, or null when the object is of another class.
template <class T>
inline T* peerIf(Object object) {
    return isKindOf(object, classOf<T>()) ? peerOf<T>(object.self) : nullptr;
}

template <PeerPointer T>
struct Wire<T> {
    using Type = id;
    static Type to(T peer) { return peer ? peer->self : nullptr; }
    static T from(Type object) { return peerOf<std::remove_pointer_t<T>>(object); }
};
template <PeerPointer T>
struct Encoding<T> {
    static constexpr Name text{"@"};
};
template <class T>
struct Encoding<Strong<T>> {
    static constexpr Name text{"@"};
};

/// A strong reference to an object by its peer.
template <class T>
class Ref {
  public:
    Ref() = default;
    Ref(T* peer) : peer_(peer), owner_(peer ? Object{peer->self} : Object{}) {}  // NOLINT: as Strong
    T* get() const { return peer_; }
    T* operator->() const { return peer_; }
    T& operator*() const { return *peer_; }
    operator T*() const { return peer_; }  // NOLINT: an owner lends its peer
    explicit operator bool() const { return peer_ != nullptr; }
    id self() const { return owner_.self(); }

    /// A new object of T's class, after `init`.
    static Ref make() { return adopt(objc::make<Object>(classOf<T>())); }
    template <Name initialiser, class... Arguments>
    static Ref make(Arguments... arguments) {
        return adopt(objc::make<Object, initialiser>(classOf<T>(), arguments...));
    }
    static Ref adopt(Strong<Object> owner) {
        Ref ref;
        ref.peer_ = peerOf<T>(owner.self());
        ref.owner_ = std::move(owner);
        return ref;
    }
    /// Gives the reference away, and is empty after that.
    Strong<Object> takeOwner() {
        peer_ = nullptr;
        return std::move(owner_);
    }

  private:
    T* peer_ = nullptr;
    Strong<Object> owner_;
};

namespace detail {

template <class R>
struct Answer {
    static typename Wire<R>::Type to(R&& value) { return Wire<R>::to(value); }
};
template <class T>
struct Answer<Strong<T>> {
    static id to(Strong<T>&& owned) { return send<"autorelease", Object>(owned.take()).self; }
};

template <class T, auto member>
struct Thunk;

template <class T, class Owner, class R, class... Arguments, R (Owner::*member)(Arguments...)>
struct Thunk<T, member> {
    static constexpr auto types = methodEncoding<R, Arguments...>;
    static auto call(id self, SEL, typename Wire<std::remove_cvref_t<Arguments>>::Type... arguments) {
        auto* peer = peerOf<T>(self);
        if constexpr (std::is_void_v<R>) {
            (peer->*member)(Wire<std::remove_cvref_t<Arguments>>::from(arguments)...);
        } else {
            return Answer<std::remove_cvref_t<R>>::to(
                (peer->*member)(Wire<std::remove_cvref_t<Arguments>>::from(arguments)...));
        }
    }
};
template <class T, class Owner, class R, class... Arguments, R (Owner::*member)(Arguments...) const>
struct Thunk<T, member> {
    static constexpr auto types = methodEncoding<R, Arguments...>;
    static auto call(id self, SEL, typename Wire<std::remove_cvref_t<Arguments>>::Type... arguments) {
        const auto* peer = peerOf<T>(self);
        if constexpr (std::is_void_v<R>) {
            (peer->*member)(Wire<std::remove_cvref_t<Arguments>>::from(arguments)...);
        } else {
            return Answer<std::remove_cvref_t<R>>::to(
                (peer->*member)(Wire<std::remove_cvref_t<Arguments>>::from(arguments)...));
        }
    }
};

/// A function whose first argument is the receiver: class methods, and methods added to classes that have no peer.
template <auto function>
struct FreeThunk;
template <class R, class Receiver, class... Arguments, R (*function)(Receiver, Arguments...)>
struct FreeThunk<function> {
    static constexpr auto types = methodEncoding<R, Arguments...>;
    static auto call(id self, SEL, typename Wire<std::remove_cvref_t<Arguments>>::Type... arguments) {
        auto receiver = [self] {
            if constexpr (std::is_same_v<Receiver, Class>)
                return reinterpret_cast<Class>(self);
            else
                return Wire<Receiver>::from(self);
        }();
        if constexpr (std::is_void_v<R>) {
            function(receiver, Wire<std::remove_cvref_t<Arguments>>::from(arguments)...);
        } else {
            return Answer<std::remove_cvref_t<R>>::to(
                function(receiver, Wire<std::remove_cvref_t<Arguments>>::from(arguments)...));
        }
    }
};

/// `allocWithZone:` of T's class and of those below it without a peer type of their own.
template <class T>
id allocate(Class self, SEL name, void* zone) {
    Class rootMeta = object_getClass(raw(classOf<Root<T>>()));
    objc_super super{raw(self), class_getSuperclass(rootMeta)};
    id object = callSuper<id>(&super, name, zone);
    if (!object) return nullptr;
    void* memory = std::malloc(sizeof(T));
    if (!memory) std::abort();
    T* peer = new (memory) T();
    peer->self = object;
    peerSlot<T>(object) = {peer, [](PeerBase* base) {
                               T* typed = static_cast<T*>(base);
                               typed->~T();
                               std::free(static_cast<void*>(typed));
                           }};
    return object;
}

/// `dealloc` of a root: the peer goes first, then the object.
template <class R>
void deallocate(id self, SEL) {
    sanitizer::acquire(self);
    PeerSlot& slot = peerSlot<R>(self);
    if (slot.peer) slot.destroy(std::exchange(slot.peer, nullptr));
    sendSuper<"dealloc">(Object{self}, classOf<R>());
}

template <class Super>
Class superclassOf() {
    if constexpr (isForeign<Super>)
        return classNamed<Super::className>();
    else
        return classOf<Super>();
}

}  // namespace detail

/// Collects the methods of T's class while it is registered.
template <class T>
class ClassDefinition {
  public:
    explicit ClassDefinition(Class cls) : class_(cls) {}

    /// An instance method, carried out by a member of T or of a class that T derives from.
    template <Name name, auto member>
    ClassDefinition& method() {
        using Thunk = detail::Thunk<T, member>;
        class_addMethod(class_, selector<name>(), implementation(&Thunk::call), Thunk::types.text);
        return *this;
    }
    /// An instance method, carried out by a function that takes the peer, or the object's handle, first.
    template <Name name, auto implementedBy>
    ClassDefinition& function() {
        using Thunk = detail::FreeThunk<implementedBy>;
        class_addMethod(class_, selector<name>(), implementation(&Thunk::call), Thunk::types.text);
        return *this;
    }
    /// A class method, carried out by a function that takes the class first.
    template <Name name, auto function>
    ClassDefinition& classMethod() {
        using Thunk = detail::FreeThunk<function>;
        class_addMethod(object_getClass(raw(class_)), selector<name>(), implementation(&Thunk::call),
                        Thunk::types.text);
        return *this;
    }

  private:
    Class class_;
};

/// Adds a method to a class that exists already. Answers false when the class itself has one of that name.
template <Name name, auto function>
inline bool addMethod(Class cls) {
    using Thunk = detail::FreeThunk<function>;
    return class_addMethod(cls, selector<name>(), implementation(&Thunk::call), Thunk::types.text);
}

template <class T>
Class classOf() {
    static Class registered = nullptr;
    if (registered) return registered;
    Class superclass = detail::superclassOf<typename T::Super>();
    if (!superclass) return nullptr;
    Class cls = objc_allocateClassPair(superclass, T::className.text, 0);
    if (cls) {
        if constexpr (detail::isForeign<typename T::Super>) {
            constexpr auto slotName = detail::join(Name{"peer_"}, T::className);
            class_addIvar(cls, slotName.text, sizeof(detail::PeerSlot), 3, "^v");
            class_addMethod(cls, selector<"dealloc">(), implementation(&detail::deallocate<T>), "v@:");
        }
        class_addMethod(object_getClass(raw(cls)), selector<"allocWithZone:">(), implementation(&detail::allocate<T>),
                        "@@:^v");
        registered = cls;
        ClassDefinition<T> definition(cls);
        T::define(definition);
        objc_registerClassPair(cls);
    } else {
        // Another image that knows the same peer has registered it.
        registered = reinterpret_cast<Class>(objc_getClass(T::className.text));
    }
    if constexpr (detail::isForeign<typename T::Super>) {
        constexpr auto slotName = detail::join(Name{"peer_"}, T::className);
        if (auto slot = class_getInstanceVariable(registered, slotName.text))
            detail::peerSlotOffset<T> = ivar_getOffset(slot);
    }
    return registered;
}

/// Registers the classes of all these peers: a library's list of what it brings.
template <class... Peers>
inline void registerClasses() {
    (classOf<Peers>(), ...);
}

}  // namespace objc
