// Names as template arguments: selectors and classes are spelt once, in the code that uses them.
#pragma once

#include <atomic>

#include "objc/target.h"

namespace objc {

/// A string literal that can be a template argument.
template <std::size_t size>
struct Name {
    char text[size];

    constexpr Name(const char (&literal)[size]) {  // NOLINT: a literal is meant to convert
        for (std::size_t i = 0; i < size; ++i) text[i] = literal[i];
    }

    /// How many arguments a selector of this name takes: its colons.
    constexpr std::size_t colons() const {
        std::size_t count = 0;
        for (char letter : text) count += letter == ':';
        return count;
    }
};

/// The selector of that name, registered at its first use. Any thread.
template <Name name>
inline SEL selector() {
    static std::atomic<SEL> slot{nullptr};
    SEL known = slot.load(std::memory_order_acquire);
    if (!known) {
        known = sel_registerName(name.text);
        slot.store(known, std::memory_order_release);
    }
    return known;
}

/// A function as the runtime stores methods.
template <class Function>
inline IMP implementation(Function* function) {
    return reinterpret_cast<IMP>(reinterpret_cast<void (*)()>(function));
}

/// The class of that name, or null while no such class is registered. Looked up again until it is there. Any thread.
template <Name name>
inline Class classNamed() {
    static std::atomic<Class> slot{nullptr};
    Class known = slot.load(std::memory_order_acquire);
    if (!known) {
        known = reinterpret_cast<Class>(objc_getClass(name.text));
        slot.store(known, std::memory_order_release);
    }
    return known;
}

}  // namespace objc
