// Grand Central Dispatch: work sent to queues as C++ functions.
#pragma once

#include <cstdlib>
#include <new>

#include "objc/strong.h"

extern "C" {
struct dispatch_queue_s;
extern struct dispatch_queue_s _dispatch_main_q;
struct dispatch_queue_s* dispatch_get_global_queue(long priority, unsigned long flags);
void dispatch_async_f(struct dispatch_queue_s* queue, void* context, void (*work)(void*));
}

namespace dispatch {

enum class Priority : long { Default = 0, Background = -32768 };

inline dispatch_queue_s* mainQueue() { return &_dispatch_main_q; }
inline dispatch_queue_s* globalQueue(Priority priority) {
    return dispatch_get_global_queue(static_cast<long>(priority), 0);
}

/// Runs the function once on the queue, later. What it captures is kept until it has run, and given back there.
template <class Function>
inline void async(dispatch_queue_s* queue, Function function) {
    void* memory = std::malloc(sizeof(Function));
    if (!memory) std::abort();
    auto* boxed = new (memory) Function(std::move(function));
    dispatch_async_f(queue, boxed, [](void* context) {
        auto* work = static_cast<Function*>(context);
        (*work)();
        work->~Function();
        std::free(context);
    });
}
template <class Function>
inline void asyncOnMain(Function function) {
    async(mainQueue(), std::move(function));
}

}  // namespace dispatch
