// The workers: two arenas of oneTBB, so that a rebuild in the background never keeps a reader's page waiting.
#include <oneapi/tbb/global_control.h>
#include <oneapi/tbb/task_arena.h>

#include <algorithm>
#include <thread>

#include "desktop/dispatch/work.h"

namespace dispatch::detail {
namespace {

/// Work items may block (on the database, on each other), so there are more workers than a small machine has cores.
int ordinaryWorkers() { return std::max(4, static_cast<int>(std::thread::hardware_concurrency())); }
int backgroundWorkers() { return std::max(2, ordinaryWorkers() / 2); }

struct Pool {
    // oneTBB starts no more threads than there are cores unless it is told to; the one more is the main thread.
    oneapi::tbb::global_control limit{oneapi::tbb::global_control::max_allowed_parallelism,
                                      static_cast<std::size_t>(ordinaryWorkers() + backgroundWorkers() + 1)};
    oneapi::tbb::task_arena ordinary{ordinaryWorkers(), 0, oneapi::tbb::task_arena::priority::normal};
    oneapi::tbb::task_arena background{backgroundWorkers(), 0, oneapi::tbb::task_arena::priority::low};
};

/// Never destroyed: workers may still run while the process exits.
Pool& pool() {
    static auto* const shared = new Pool;
    return *shared;
}

}  // namespace

void requestWorker(Level level) {
    if (level == Level::Background) {
        pool().background.enqueue([] { runNext(Level::Background); });
    } else {
        pool().ordinary.enqueue([] { runNext(Level::Ordinary); });
    }
}

}  // namespace dispatch::detail
