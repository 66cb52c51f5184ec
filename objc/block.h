// Blocks, laid out by hand: a C++ lambda fills one, and a block that arrives is called as a function.
#pragma once

#include <new>

#include "objc/thread_sanitizer.h"
#include "objc/wire.h"

extern "C" {
extern void* _NSConcreteStackBlock[32];
void* _Block_copy(const void* block);
void _Block_release(const void* block);
}

namespace objc {

/// The fields that every block begins with.
struct BlockHeader {
    void* isa;
    std::int32_t flags;
    std::int32_t reserved;
    void* invoke;
    const void* descriptor;
};

template <class Signature>
class Block;

/// A block of that signature, owned. Any thread may hold and call a copy.
template <class R, class... Arguments>
class Block<R(Arguments...)> {
  public:
    Block() = default;
    /// Copies a block that somebody lends; null stays null.
    static Block copyOf(const void* borrowed) {
        Block block;
        if (borrowed) block.block_ = _Block_copy(borrowed);
        return block;
    }
    template <class Function>
    requires(std::is_invocable_r_v<R, Function&, Arguments...> && !std::is_same_v<std::decay_t<Function>, Block>)
        Block(Function function) {  // NOLINT: a lambda is meant to convert
        Literal<Function> literal{{_NSConcreteStackBlock, hasCopyAndDispose, 0,
                                   reinterpret_cast<void*>(&Literal<Function>::invoke), &Literal<Function>::descriptor},
                                  std::move(function)};
        block_ = _Block_copy(&literal);
    }
    Block(const Block& other) : Block(copyOf(other.block_)) {}
    Block(Block&& other) noexcept : block_(std::exchange(other.block_, nullptr)) {}
    Block& operator=(Block other) noexcept {
        std::swap(block_, other.block_);
        return *this;
    }
    ~Block() {
        if (!block_) return;
        // The blocks runtime's counting is not instrumented.
        sanitizer::release(block_);
        _Block_release(block_);
    }

    explicit operator bool() const { return block_ != nullptr; }
    /// The block as messages pass it; borrowed.
    const void* get() const { return block_; }
    id self() const { return static_cast<id>(const_cast<void*>(block_)); }

    R operator()(Arguments... arguments) const {
        auto* header = static_cast<const BlockHeader*>(block_);
        using Function = R (*)(const void*, Arguments...);
        return reinterpret_cast<Function>(header->invoke)(block_, arguments...);
    }

  private:
    static constexpr std::int32_t hasCopyAndDispose = 1 << 25;

    template <class Function>
    struct Literal {
        struct Descriptor {
            std::uintptr_t reserved;
            std::uintptr_t size;
            void (*copy)(Literal*, const Literal*);
            void (*dispose)(Literal*);
        };
        BlockHeader header;
        Function function;

        static R invoke(Literal* self, Arguments... arguments) { return self->function(arguments...); }
        static inline const Descriptor descriptor{
            0, sizeof(Literal),
            [](Literal* to, const Literal* from) { new (static_cast<void*>(&to->function)) Function(from->function); },
            [](Literal* literal) {
                sanitizer::acquire(literal);
                literal->function.~Function();
            }};
    };

    const void* block_ = nullptr;
};

}  // namespace objc
