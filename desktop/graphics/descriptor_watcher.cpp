// Waits for file descriptors on a thread of its own.
#include "desktop/graphics/descriptor_watcher.h"

#include <poll.h>
#include <sys/eventfd.h>
#include <unistd.h>

#include <cstdint>

namespace graphics {

namespace {

std::vector<pollfd> requests(std::span<const int> descriptors) {
    std::vector<pollfd> result;
    for (const int descriptor : descriptors) result.push_back({descriptor, POLLIN, 0});
    return result;
}

}  // namespace

std::vector<int> readableNow(std::span<const int> descriptors) {
    std::vector<pollfd> polled = requests(descriptors);
    std::vector<int> readable;
    if (polled.empty() || poll(polled.data(), polled.size(), 0) <= 0) return readable;
    for (const pollfd& each : polled) {
        if (each.revents != 0) readable.push_back(each.fd);
    }
    return readable;
}

DescriptorWatcher::DescriptorWatcher(std::function<void()> notify)
    : notify_(std::move(notify)), control_(eventfd(0, EFD_NONBLOCK | EFD_CLOEXEC)) {
    if (isUsable()) thread_ = std::thread([this] { run(); });
}

DescriptorWatcher::~DescriptorWatcher() {
    if (!isUsable()) return;
    {
        const std::lock_guard lock(mutex_);
        ending_ = true;
        watching_ = false;
    }
    interrupt();
    thread_.join();
    close(control_);
}

void DescriptorWatcher::watch(std::span<const int> descriptors) {
    const std::lock_guard lock(mutex_);
    watched_.assign(descriptors.begin(), descriptors.end());
    watching_ = true;
    changed_.notify_all();
}

void DescriptorWatcher::stop() {
    std::unique_lock lock(mutex_);
    watching_ = false;
    if (!busy_) return;
    interrupt();
    changed_.wait(lock, [this] { return !busy_; });
}

void DescriptorWatcher::interrupt() {
    const std::uint64_t one = 1;
    // Fails only where the counter is full, and then poll() returns anyway.
    [[maybe_unused]] const ssize_t written = write(control_, &one, sizeof one);
    changed_.notify_all();
}

void DescriptorWatcher::run() {
    std::unique_lock lock(mutex_);
    while (true) {
        changed_.wait(lock, [this] { return ending_ || watching_; });
        if (ending_) return;
        std::vector<pollfd> polled = requests(watched_);
        polled.push_back({control_, POLLIN, 0});
        // What an earlier stop left behind must not end this watch.
        std::uint64_t count = 0;
        [[maybe_unused]] const ssize_t drained = read(control_, &count, sizeof count);
        busy_ = true;
        lock.unlock();
        poll(polled.data(), polled.size(), -1);
        lock.lock();
        const bool found = watching_;
        // Woken without being stopped: there is something to read. The owner looks for itself which.
        if (found) notify_();
        watching_ = false;
        busy_ = false;
        changed_.notify_all();
    }
}

}  // namespace graphics
