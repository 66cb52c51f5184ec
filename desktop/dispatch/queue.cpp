// The C interface: the queues' symbols and how work gets on them. Global queues keep their items here, in order; the
// pool only says when a worker is free.
#include "desktop/dispatch/queue.h"

#include <Block.h>

#include <cstdio>
#include <cstdlib>
#include <deque>
#include <mutex>

#include "desktop/dispatch/main_loop.h"
#include "desktop/dispatch/timers.h"
#include "desktop/dispatch/work.h"

extern "C" {
constinit dispatch_queue_s _dispatch_main_q{dispatch_queue_s::Kind::Main};
}

namespace dispatch::detail {
namespace {

using Kind = dispatch_queue_s::Kind;

constinit dispatch_queue_s highQueue{Kind::High};
constinit dispatch_queue_s defaultQueue{Kind::Default};
constinit dispatch_queue_s lowQueue{Kind::Low};
constinit dispatch_queue_s backgroundQueue{Kind::Background};

/// The items of one level that no worker has taken yet, the more urgent queue's first.
class Waiting {
  public:
    void push(Work work, bool urgent) {
        const std::lock_guard lock(mutex_);
        (urgent ? urgent_ : ordinary_).push_back(work);
    }
    Work pop() {
        const std::lock_guard lock(mutex_);
        auto& items = urgent_.empty() ? ordinary_ : urgent_;
        const Work work = items.front();
        items.pop_front();
        return work;
    }

  private:
    std::mutex mutex_;
    std::deque<Work> urgent_;
    std::deque<Work> ordinary_;
};

/// Never destroyed: workers may still run while the process exits.
Waiting& waiting(Level level) {
    static auto* const levels = new Waiting[2];
    return levels[static_cast<std::size_t>(level)];
}

/// What the blocks runtime lays out in front of a block's own variables.
struct BlockHeader {
    void* isa;
    std::int32_t flags;
    std::int32_t reserved;
    void (*invoke)(const void* block);
};

void callBlock(void* block) {
    static_cast<const BlockHeader*>(block)->invoke(block);
    _Block_release(block);
}

Work workOfBlock(const void* block) {
    if (!block) fail("dispatch: a queue was given a null block");
    void* const copy = _Block_copy(block);
    if (!copy) fail("dispatch: a block could not be copied, memory is exhausted");
    return {copy, callBlock};
}

void check(dispatch_queue_s* queue, Work work) {
    if (!queue) fail("dispatch: work was sent to a null queue (global queues have priority 2, 0, -2 or -32768)");
    if (!work.function) fail("dispatch: a queue was given a null function");
}

}  // namespace

void fail(const char* sentence) {
    std::fprintf(stderr, "%s\n", sentence);
    std::abort();
}

void runNext(Level level) noexcept { run(waiting(level).pop()); }

void enqueue(dispatch_queue_s* queue, Work work) {
    beginActivity();
    if (queue->kind == Kind::Main) {
        pushToMainQueue(work);
        return;
    }
    const bool background = queue->kind == Kind::Low || queue->kind == Kind::Background;
    const Level level = background ? Level::Background : Level::Ordinary;
    waiting(level).push(work, queue->kind == Kind::High || queue->kind == Kind::Low);
    requestWorker(level);
}

}  // namespace dispatch::detail

extern "C" {

using namespace dispatch::detail;

dispatch_queue_s* dispatch_get_global_queue(long priority, unsigned long /*flags*/) {
    switch (priority) {
        case 2:
            return &highQueue;
        case 0:
            return &defaultQueue;
        case -2:
            return &lowQueue;
        case -32768:
            return &backgroundQueue;
        default:
            return nullptr;
    }
}

void dispatch_async_f(dispatch_queue_s* queue, void* context, void (*work)(void*)) {
    check(queue, {context, work});
    enqueue(queue, {context, work});
}

void dispatch_async(dispatch_queue_s* queue, const void* block) {
    const Work work = workOfBlock(block);
    check(queue, work);
    enqueue(queue, work);
}

void dispatch_after_f(std::uint64_t when, dispatch_queue_s* queue, void* context, void (*work)(void*)) {
    check(queue, {context, work});
    addTimer(when, queue, {context, work});
}

void dispatch_after(std::uint64_t when, dispatch_queue_s* queue, const void* block) {
    const Work work = workOfBlock(block);
    check(queue, work);
    addTimer(when, queue, work);
}
}
