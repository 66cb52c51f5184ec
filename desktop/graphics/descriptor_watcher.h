// Waits for file descriptors on a thread of its own, for a loop that can only wait for something else.
#pragma once

#include <condition_variable>
#include <functional>
#include <mutex>
#include <span>
#include <thread>
#include <vector>

namespace graphics {

/// The descriptors, in their order, that can be read now, are closed or have failed.
std::vector<int> readableNow(std::span<const int> descriptors);

class DescriptorWatcher {
  public:
    /// `notify` is called on the watcher's thread, at most once a watch.
    explicit DescriptorWatcher(std::function<void()> notify);
    ~DescriptorWatcher();
    DescriptorWatcher(const DescriptorWatcher&) = delete;
    DescriptorWatcher& operator=(const DescriptorWatcher&) = delete;

    /// False where the system gives no descriptor to stop the watcher with.
    bool isUsable() const { return control_ >= 0; }

    /// Begins to watch; `notify` is called as soon as one of the descriptors can be read.
    void watch(std::span<const int> descriptors);
    /// Returns once no descriptor is looked at any more.
    void stop();

  private:
    void run();
    void interrupt();

    std::function<void()> notify_;
    int control_;
    std::mutex mutex_;
    std::condition_variable changed_;
    std::vector<int> watched_;
    bool watching_ = false;
    bool busy_ = false;
    bool ending_ = false;
    std::thread thread_;
};

}  // namespace graphics
