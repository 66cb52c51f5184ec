// Where code runs: this program's dispatch_async_f stands before the library's and notes the queue of each item.
#include <dlfcn.h>
#include <pthread.h>

#include <memory>

#include "tests/messages/call_companion.h"

struct dispatch_queue_s;

extern "C" {
extern dispatch_queue_s _dispatch_main_q;
dispatch_queue_s* dispatch_get_global_queue(long priority, unsigned long flags);
void dispatch_async_f(dispatch_queue_s* queue, void* context, void (*work)(void*));
}

namespace {

const auto mainThread = pthread_self();
thread_local const char* current = nullptr;

struct Item {
    const char* place;
    void* context;
    void (*work)(void*);
};

const char* nameOf(dispatch_queue_s* queue) {
    if (queue == &_dispatch_main_q) return "main";
    if (queue == dispatch_get_global_queue(0, 0)) return "default";
    constexpr long background = -32768;
    return queue == dispatch_get_global_queue(background, 0) ? "background" : "another queue";
}

void run(void* context) {
    const std::unique_ptr<Item> item(static_cast<Item*>(context));
    const char* const before = std::exchange(current, item->place);
    item->work(item->context);
    current = before;
}

}  // namespace

void dispatch_async_f(dispatch_queue_s* queue, void* context, void (*work)(void*)) {
    using Function = void (*)(dispatch_queue_s*, void*, void (*)(void*));
    static const auto next = reinterpret_cast<Function>(dlsym(RTLD_NEXT, "dispatch_async_f"));
    next(queue, new Item{nameOf(queue), context, work}, run);
}

namespace callcompanion {

const char* place() {
    if (current) return current;
    return pthread_equal(pthread_self(), mainThread) ? "main" : "worker";
}

}  // namespace callcompanion
