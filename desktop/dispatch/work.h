// What the library's files share: a work item, the count of unfinished ones, and the ways between queues and pool.
#pragma once

#include <cstdint>

#include "desktop/dispatch/queue.h"

/// Which queue it is; the object itself has no state.
struct dispatch_queue_s {
    enum class Kind { Main, High, Default, Low, Background };
    Kind kind;
};

namespace dispatch::detail {

struct Work {
    void* context;
    void (*function)(void*);
};

/// The pool's two sets of workers.
enum class Level { Ordinary, Background };

/// Runs the item inside an autorelease pool, then counts it as done. An exception that leaves it ends the process.
void run(Work work) noexcept;

/// Puts the item, which beginActivity() has counted, on the main queue.
void pushToMainQueue(Work work);

/// Makes mainQueueWakeUp() readable.
void wakeMainLoop();

/// Has a worker of that level call runNext(), once, soon.
void requestWorker(Level level);
/// Takes the oldest item of that level's queues and runs it. There is one for every requestWorker().
void runNext(Level level) noexcept;

/// Ends the process with that sentence on standard error.
[[noreturn]] void fail(const char* sentence);

}  // namespace dispatch::detail
