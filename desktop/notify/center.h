// Who wants to hear which name, and what becomes of a name that arrives: delivered, held or dropped. No messages, no
// files and no threads of its own; the owner locks and calls.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "desktop/notify/notification_center.h"

namespace notify {

/// What happens to a name that arrives while the program is suspended.
enum class Suspension : long { Drop = 1, Coalesce = 2, Hold = 3, DeliverImmediately = 4 };

struct Observer {
    std::uint64_t serial = 0;  // given by Center::add()
    void* observer = nullptr;
    CFNotificationCallback callback = nullptr;
    std::string name;
    void* nameObject = nullptr;  // the NSString that was registered; the owner of the center retains it
    Suspension suspension = Suspension::Hold;
};

class Center {
  public:
    void add(Observer observer);
    /// Removes those of that observer, for that name or, with null, for all. A null observer removes nothing. Answers
    /// what was removed.
    std::vector<Observer> remove(const void* observer, const std::string* name);

    /// The name waits for takeDue(); a name that waits already does so once.
    void arrive(std::string_view name);
    bool hasArrived() const { return !arrived_.empty() || !resumed_.empty(); }

    void suspend() { suspended_ = true; }
    /// What was held is due, before what arrives from now on.
    void resume();
    bool isSuspended() const { return suspended_; }

    /// The observers to call now, in order, each at most once a name; what the suspension says to hold is held.
    std::vector<Observer> takeDue();
    /// Whether it is registered still; an earlier callback may have removed it.
    bool isRegistered(const Observer& observer) const;

  private:
    bool isHeld(std::uint64_t serial) const;

    std::vector<Observer> observers_;
    std::vector<std::string> arrived_;
    std::vector<std::uint64_t> held_;     // serials
    std::vector<std::uint64_t> resumed_;  // serials
    std::uint64_t nextSerial_ = 1;
    bool suspended_ = false;
};

}  // namespace notify
