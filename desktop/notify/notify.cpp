// The notify centre's one state in the process, and the main loop's interface to it.
#include "desktop/notify/notify.h"

#include <sys/epoll.h>
#include <sys/eventfd.h>
#include <unistd.h>

#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <utility>

#include "desktop/notify/state.h"
#include "objc/strong.h"

namespace notify {
namespace {

/// Pool of one delivery. Without Foundation there is none, and nothing that would need one.
class AutoreleasePool {
  public:
    AutoreleasePool() = default;
    AutoreleasePool(const AutoreleasePool&) = delete;
    AutoreleasePool& operator=(const AutoreleasePool&) = delete;
    ~AutoreleasePool() { objc::send<"drain">(pool_); }

  private:
    objc::Object pool_ = objc::sendClass<"NSAutoreleasePool", "new", objc::Object>();
};

bool watch(int poll, int descriptor) {
    epoll_event event{};
    event.events = EPOLLIN;
    return epoll_ctl(poll, EPOLL_CTL_ADD, descriptor, &event) == 0;
}

/// What the rendezvous has brought waits in the centre. Under the lock.
void collect(State& shared) {
    std::uint64_t count = 0;
    while (read(shared.local, &count, sizeof count) < 0 && errno == EINTR) {
    }
    if (!shared.rendezvous) return;
    for (const std::string& name : shared.rendezvous->collect()) shared.center.arrive(name);
}

}  // namespace

void State::signal() {
    const std::uint64_t one = 1;
    while (write(local, &one, sizeof one) < 0 && errno == EINTR) {
    }
}

State& state() {
    static auto* const shared = [] {
        auto* made = new State;
        made->poll = epoll_create1(EPOLL_CLOEXEC);
        made->local = eventfd(0, EFD_NONBLOCK | EFD_CLOEXEC);
        if (made->poll < 0 || made->local < 0 || !watch(made->poll, made->local)) {
            std::fprintf(stderr, "No descriptor for notifications; too many files are open.\n");
            std::abort();
        }
        return made;
    }();
    return *shared;
}

std::optional<Failure> openRendezvous(const std::filesystem::path& directory) {
    auto opened = Rendezvous::open(directory);
    if (auto* failure = std::get_if<Failure>(&opened)) return std::move(*failure);
    auto& rendezvous = std::get<Rendezvous>(opened);
    if (!watch(state().poll, rendezvous.descriptor())) {
        return Failure{"The directory for notifications cannot be polled: " + directory.string() +
                       ". Close other programs that watch files."};
    }
    closeRendezvous();
    const std::lock_guard lock(state().mutex);
    state().rendezvous = std::move(rendezvous);
    return std::nullopt;
}

void closeRendezvous() {
    const std::lock_guard lock(state().mutex);
    collect(state());
    state().rendezvous.reset();
    if (state().center.hasArrived()) state().signal();
}

std::optional<Failure> post(std::string_view name) {
    std::filesystem::path directory;
    {
        const std::lock_guard lock(state().mutex);
        if (!state().rendezvous) {
            if (name.empty()) return Failure{"A notification without a name cannot be posted. Give it a name."};
            state().center.arrive(name);
            state().signal();
            return std::nullopt;
        }
        directory = state().rendezvous->directory();
    }
    return postInto(directory, name);
}

int descriptor() { return state().poll; }

bool pending() {
    const std::lock_guard lock(state().mutex);
    collect(state());
    if (!state().center.hasArrived()) return false;
    state().signal();  // a loop that polls next still sees what was collected here
    return true;
}

std::size_t deliverPending() {
    std::vector<Observer> due;
    {
        const std::lock_guard lock(state().mutex);
        collect(state());
        due = state().center.takeDue();
    }
    std::size_t calls = 0;
    for (const Observer& each : due) {
        objc::Strong<> name;  // an observer that removes itself in its callback is called with its name all the same
        {
            const std::lock_guard lock(state().mutex);
            if (!state().center.isRegistered(each)) continue;
            name = objc::Object{static_cast<id>(each.nameObject)};
        }
        const AutoreleasePool pool;
        each.callback(CFNotificationCenterGetDarwinNotifyCenter(), each.observer, name.self(), nullptr, nullptr);
        ++calls;
    }
    return calls;
}

void suspend() {
    const std::lock_guard lock(state().mutex);
    state().center.suspend();
}

void resume() {
    const std::lock_guard lock(state().mutex);
    state().center.resume();
    if (state().center.hasArrived()) state().signal();
}

bool isSuspended() {
    const std::lock_guard lock(state().mutex);
    return state().center.isSuspended();
}

}  // namespace notify
