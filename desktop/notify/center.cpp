// Observers and what is due to them.
#include "desktop/notify/center.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace notify {
namespace {

template <class Value, class List>
bool contains(const List& list, const Value& value) {
    return std::find(list.begin(), list.end(), value) != list.end();
}

}  // namespace

void Center::add(Observer observer) {
    observer.serial = nextSerial_++;
    observers_.push_back(std::move(observer));
}

std::vector<Observer> Center::remove(const void* observer, const std::string* name) {
    if (!observer) return {};
    const auto stays = [&](const Observer& each) { return each.observer != observer || (name && each.name != *name); };
    const auto middle = std::stable_partition(observers_.begin(), observers_.end(), stays);
    std::vector<Observer> removed(std::make_move_iterator(middle), std::make_move_iterator(observers_.end()));
    observers_.erase(middle, observers_.end());
    for (const Observer& each : removed) {
        std::erase(held_, each.serial);
        std::erase(resumed_, each.serial);
    }
    return removed;
}

void Center::arrive(std::string_view name) {
    if (!contains(arrived_, name)) arrived_.emplace_back(name);
}

void Center::resume() {
    suspended_ = false;
    resumed_.insert(resumed_.end(), held_.begin(), held_.end());
    held_.clear();
}

std::vector<Observer> Center::takeDue() {
    const auto resumed = std::exchange(resumed_, {});
    const auto arrived = std::exchange(arrived_, {});
    std::vector<const Observer*> reached;
    for (const std::uint64_t serial : resumed) {
        const auto found = std::find_if(observers_.begin(), observers_.end(),
                                        [&](const Observer& each) { return each.serial == serial; });
        if (found != observers_.end()) reached.push_back(&*found);
    }
    for (const std::string& name : arrived) {
        for (const Observer& each : observers_) {
            if (each.name == name && !contains(reached, &each)) reached.push_back(&each);
        }
    }
    std::vector<Observer> due;
    for (const Observer* each : reached) {
        if (!suspended_ || each->suspension == Suspension::DeliverImmediately) {
            due.push_back(*each);
        } else if (each->suspension != Suspension::Drop && !contains(held_, each->serial)) {
            held_.push_back(each->serial);
        }
    }
    return due;
}

bool Center::isRegistered(const Observer& observer) const {
    return std::any_of(observers_.begin(), observers_.end(),
                       [&](const Observer& each) { return each.serial == observer.serial; });
}

}  // namespace notify
