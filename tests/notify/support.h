// Helpers of these tests: a directory that goes with the test, other processes, and waiting with a bound.
#pragma once

#include <gtest/gtest.h>
#include <poll.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <filesystem>
#include <functional>
#include <string>

namespace notify_tests {

/// An empty directory of its own for each test.
class Directory {
  public:
    Directory() {
        std::string pattern = (std::filesystem::temp_directory_path() / "notify-XXXXXX").string();
        if (!mkdtemp(pattern.data())) ADD_FAILURE() << "no directory for the test: " << pattern;
        path_ = pattern;
    }
    Directory(const Directory&) = delete;
    Directory& operator=(const Directory&) = delete;
    ~Directory() {
        std::error_code error;
        std::filesystem::remove_all(path_, error);
    }
    const std::filesystem::path& path() const { return path_; }
    std::filesystem::path operator/(const std::string& name) const { return path_ / name; }

  private:
    std::filesystem::path path_;
};

/// Another process that runs the function and ends with what it answers; ended by force when it outlives the test.
class Process {
  public:
    explicit Process(const std::function<int()>& function) : id_(fork()) {
        if (id_ != 0) return;
        alarm(60);
        _exit(function());
    }
    Process(const Process&) = delete;
    Process& operator=(const Process&) = delete;
    ~Process() { exitStatus(); }

    /// Waits for its end. What the function answered; -1 when it ended otherwise.
    int exitStatus() {
        if (id_ > 0) {
            int status = 0;
            waitpid(id_, &status, 0);
            status_ = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
            id_ = 0;
        }
        return status_;
    }

  private:
    pid_t id_;
    int status_ = -1;
};

/// A pipe by which one process tells another that it has come so far.
class Signal {
  public:
    Signal() {
        if (pipe(ends_) != 0) ADD_FAILURE() << "no pipe";
    }
    Signal(const Signal&) = delete;
    Signal& operator=(const Signal&) = delete;
    ~Signal() {
        close(ends_[0]);
        close(ends_[1]);
    }
    bool give() const { return write(ends_[1], "!", 1) == 1; }
    bool wait() const {
        pollfd entry{ends_[0], POLLIN, 0};
        char letter = 0;
        return poll(&entry, 1, 60'000) == 1 && read(ends_[0], &letter, 1) == 1;
    }

  private:
    int ends_[2]{};
};

/// Runs `step` each time the descriptor is readable, until it answers true. False when that takes more than a minute.
inline bool pollUntil(int descriptor, const std::function<bool()>& step) {
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(60);
    while (!step()) {
        const auto left =
            std::chrono::duration_cast<std::chrono::milliseconds>(deadline - std::chrono::steady_clock::now());
        if (left.count() <= 0) return false;
        pollfd entry{descriptor, POLLIN, 0};
        poll(&entry, 1, static_cast<int>(left.count()));
    }
    return true;
}

inline bool readable(int descriptor) {
    pollfd entry{descriptor, POLLIN, 0};
    return poll(&entry, 1, 0) == 1;
}

}  // namespace notify_tests
