// What the parts of the message trace share: whether it runs, for which classes, and how a call's arguments print.
#pragma once

#include <atomic>
#include <string>

#include "desktop/substrate/trampoline.h"

namespace substrate::trace {

/// Whether any trace runs: the one test that a message costs while none does.
extern std::atomic<bool> active;

/// True on a thread while the trace itself works: what it sends is not traced.
bool& traceIsAtWork();

/// Whether a trace runs for that class (or metaclass) or one above it. Any thread.
bool isTraced(Class cls);

/// The arguments of a call, each with a space before it.
std::string printedArguments(const Signature& signature, bool resultInMemory, const SavedRegisters& registers,
                             const std::uint64_t* stack);

}  // namespace substrate::trace
