// The workers: two pools of Asio's, so that a rebuild in the background never keeps a reader's page waiting, and the
// other way round.
#include <algorithm>
#include <asio/post.hpp>
#include <asio/thread_pool.hpp>
#include <thread>

#include "desktop/dispatch/main_loop.h"
#include "desktop/dispatch/work.h"

namespace dispatch::detail {
namespace {

/// Work items may block (on the database, on each other), so there are more workers than a small machine has cores.
std::size_t ordinaryWorkers() { return std::max(4U, std::thread::hardware_concurrency()); }
std::size_t backgroundWorkers() { return std::max<std::size_t>(2, ordinaryWorkers() / 2); }

/// Never destroyed: workers may still run while the process exits.
asio::thread_pool& ordinaryPool() {
    static auto* const shared = new asio::thread_pool(ordinaryWorkers());
    return *shared;
}
asio::thread_pool& backgroundPool() {
    static auto* const shared = new asio::thread_pool(backgroundWorkers());
    return *shared;
}

/// Foundation turns itself into a library of many threads when it meets the second one, and is not safe while it does:
/// that happens here, with nobody beside it.
void meetTheSecondThread() {
    std::thread([] { const AutoreleaseScope scope; }).join();
}

}  // namespace

void requestWorker(Level level) {
    static const bool met = (meetTheSecondThread(), true);
    static_cast<void>(met);
    if (level == Level::Background) {
        asio::post(backgroundPool(), [] { runNext(Level::Background); });
    } else {
        asio::post(ordinaryPool(), [] { runNext(Level::Ordinary); });
    }
}

}  // namespace dispatch::detail
