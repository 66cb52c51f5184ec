// This program's dispatch_async_f stands before the library's.
#include "tests/messages/rows_queues.h"

#include <dlfcn.h>

#include <thread>
#include <utility>

#include "desktop/dispatch/main_loop.h"
#include "platform/dispatch.h"

namespace rowsmessages {
namespace {

struct Item {
    std::string queue;
    void* context;
    void (*work)(void*);
};
std::vector<Item> held;

}  // namespace

std::vector<std::string> heldWork() {
    std::vector<std::string> queues;
    for (const auto& item : held) queues.push_back(item.queue);
    return queues;
}

void runHeldWork() {
    std::thread([items = std::exchange(held, {})] {
        const dispatch::AutoreleaseScope scope;
        for (const auto& item : items) item.work(item.context);
    }).join();
}

}  // namespace rowsmessages

void dispatch_async_f(dispatch_queue_s* queue, void* context, void (*work)(void*)) {
    using Function = void (*)(dispatch_queue_s*, void*, void (*)(void*));
    static const auto next = reinterpret_cast<Function>(dlsym(RTLD_NEXT, "dispatch_async_f"));
    if (queue == dispatch::globalQueue(dispatch::Priority::Default))
        rowsmessages::held.push_back({"default", context, work});
    else if (queue == dispatch::globalQueue(dispatch::Priority::Background))
        rowsmessages::held.push_back({"background", context, work});
    else
        next(queue, context, work);
}
