// What is traced at present, and the lines that the calls make.
#include "desktop/substrate/trace.h"

#include <algorithm>
#include <map>
#include <memory>
#include <mutex>

#include "desktop/substrate/trace_state.h"

namespace substrate::trace {

std::atomic<bool> active{false};

namespace {

struct Trace {
    std::vector<Class> classes;  // each with its metaclass
    Sink sink;
    Ownership ownership;
};

struct State {
    std::mutex mutex;
    std::shared_ptr<const Trace> current;
    std::map<std::string, std::string> described;
    /// Held while the sink is called, so that lines come one at a time and none after the end. Taken before `mutex`.
    std::mutex printing;
};

State& state() {
    static auto* only = new State;  // methods are sent until the very end of the process
    return *only;
}

std::shared_ptr<const Trace> current() {
    std::lock_guard lock(state().mutex);
    return state().current;
}

void become(std::shared_ptr<const Trace> trace) {
    std::lock_guard printing(state().printing);
    std::lock_guard lock(state().mutex);
    active.store(trace != nullptr, std::memory_order_relaxed);
    state().current = std::move(trace);
}

bool covers(const Trace& trace, Class cls) {
    for (; cls; cls = class_getSuperclass(cls)) {
        if (std::find(trace.classes.begin(), trace.classes.end(), cls) != trace.classes.end()) return true;
    }
    return false;
}

bool isOwnership(std::string_view selector) {
    return selector == "retain" || selector == "release" || selector == "autorelease";
}

Signature signatureOf(const std::string& selector, const char* types) {
    std::string described;
    {
        std::lock_guard lock(state().mutex);
        if (auto found = state().described.find(selector); found != state().described.end()) described = found->second;
    }
    return readSignature(selector, described.empty() ? types : described.c_str());
}

void print(const Trace& trace, const TracedMethod& method, const SavedRegisters& registers,
           const std::uint64_t* stack) {
    const std::uint64_t* call = registers.general + (method.resultInMemory ? 1 : 0);
    id receiver = reinterpret_cast<id>(call[0]);
    std::string selector = sel_getName(reinterpret_cast<SEL>(call[1]));
    if (trace.ownership == Ownership::leftOut && isOwnership(selector)) return;
    Class cls = object_getClass(receiver);
    bool toClass = class_isMetaClass(cls);
    std::string line = toClass ? "+[" : "-[";
    line += class_getName(toClass ? reinterpret_cast<Class>(receiver) : cls);
    line += " " + selector + "]" +
            printedArguments(signatureOf(selector, method.types), method.resultInMemory, registers, stack);
    std::lock_guard printing(state().printing);
    if (current().get() == &trace) trace.sink(line);
}

}  // namespace

bool& traceIsAtWork() {
    thread_local bool atWork = false;
    return atWork;
}

bool isTraced(Class cls) {
    auto trace = current();
    return trace && covers(*trace, cls);
}

void recordCall(const TracedMethod& method, const SavedRegisters& registers, const std::uint64_t* stack) {
    if (!active.load(std::memory_order_relaxed) || traceIsAtWork()) return;
    traceIsAtWork() = true;
    auto trace = current();
    id receiver = reinterpret_cast<id>(registers.general[method.resultInMemory ? 1 : 0]);
    if (trace && receiver && covers(*trace, object_getClass(receiver))) print(*trace, method, registers, stack);
    traceIsAtWork() = false;
}

std::optional<std::string> begin(const std::vector<std::string>& classes, Sink sink, Ownership ownership) {
    if (!trampolinesAreSupported()) return "messages cannot be traced on this processor; use an x86-64 machine";
    auto trace = std::make_shared<Trace>();
    for (const auto& name : classes) {
        Class cls = reinterpret_cast<Class>(objc_getClass(name.c_str()));
        if (!cls) return "there is no class \"" + name + "\" to trace; name one that is loaded";
        trace->classes.push_back(cls);
        trace->classes.push_back(object_getClass(objc::raw(cls)));
    }
    trace->sink = std::move(sink);
    trace->ownership = ownership;
    become(std::move(trace));
    return std::nullopt;
}

void end() { become(nullptr); }

void describe(const std::string& selector, const std::string& types) {
    std::lock_guard lock(state().mutex);
    state().described[selector] = types;
}

}  // namespace substrate::trace
