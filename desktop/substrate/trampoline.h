// Trampolines of the message trace: code that stands in for a method, reports the call with all its arguments, and goes
// on to the method as if nothing had been there.
#pragma once

#include <cstdint>

#include "desktop/substrate/type_string.h"
#include "objc/layer.h"

namespace substrate::trace {

/// One method as the trace meets it.
struct TracedMethod {
    IMP implementation;
    /// Whether the result is a structure in memory, whose address then comes before the receiver.
    bool resultInMemory;
    /// The type string of the method, or null.
    const char* types;
};

/// The argument registers at the moment of the call.
struct SavedRegisters {
    std::uint64_t general[6];
    std::uint64_t vectorCount;
    std::uint64_t unused;
    double vectors[8][2];
};

/// Whether this processor has trampolines.
bool trampolinesAreSupported();

/// A function that records the call and runs the method. The same method has the same one; it lives for ever. Any
/// thread. Answers the implementation itself when it is a trampoline already or when memory is short.
IMP trampolineFor(const TracedMethod& method);

/// Prints the call if its receiver is traced at present. Called by the trampolines.
void recordCall(const TracedMethod& method, const SavedRegisters& registers, const std::uint64_t* stack);

}  // namespace substrate::trace
