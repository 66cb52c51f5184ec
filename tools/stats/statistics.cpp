// One pass over the calls; the days are those that the log keeps.
#include "tools/stats/statistics.h"

#include <algorithm>
#include <cstdio>

namespace tools {
namespace {

using quorvel::store::CallRecord;

std::string monthAfter(const std::string& month) {
    int year = std::stoi(month.substr(0, 4));
    int number = std::stoi(month.substr(5, 2)) + 1;
    if (number > 12) {
        number = 1;
        ++year;
    }
    char text[32];
    std::snprintf(text, sizeof text, "%04d-%02d", year, number);
    return text;
}

std::vector<NamedSums> greatest(std::vector<NamedSums> rows, std::size_t most) {
    std::sort(rows.begin(), rows.end(), [](const NamedSums& one, const NamedSums& other) {
        if (one.sums.calls() != other.sums.calls()) return one.sums.calls() > other.sums.calls();
        if (one.sums.seconds != other.sums.seconds) return one.sums.seconds > other.sums.seconds;
        return one.name < other.name;
    });
    if (rows.size() > most) rows.resize(most);
    return rows;
}

}  // namespace

void CallSums::add(const CallRecord& call) {
    using namespace quorvel::store;
    if (isDialled(call.flags, call.duration)) ++dialled;
    if (isCancelled(call.flags, call.duration)) ++cancelled;
    if (isReceived(call.flags, call.duration)) ++received;
    if (isMissed(call.flags, call.duration)) ++missed;
    seconds += call.duration;
}

void Statistics::add(const CallRecord& call) {
    all_.add(call);
    days_[call.day].add(call);
    months_[call.day.substr(0, 7)].add(call);
    const bool isContacts = call.contactId != quorvel::store::noContact;
    Person& person = people_[{call.contactId, isContacts ? std::string() : call.address}];
    // Calls come newest first, so the name is the one of today.
    if (person.name.empty()) person.name = call.name.empty() ? call.address : call.name;
    person.sums.add(call);
}

std::vector<NamedSums> Statistics::months() const {
    std::vector<NamedSums> rows;
    for (const auto& [month, sums] : months_) {
        while (!rows.empty() && monthAfter(rows.back().name) < month)
            rows.push_back({monthAfter(rows.back().name), {}});
        rows.push_back({month, sums});
    }
    return rows;
}

std::vector<NamedSums> Statistics::contacts(std::size_t most) const {
    std::vector<NamedSums> rows;
    for (const auto& [key, person] : people_)
        rows.push_back({person.name.empty() ? "(withheld)" : person.name, person.sums});
    return greatest(std::move(rows), most);
}

std::vector<NamedSums> Statistics::busiestDays(std::size_t most) const {
    std::vector<NamedSums> rows;
    for (const auto& [day, sums] : days_) rows.push_back({day, sums});
    return greatest(std::move(rows), most);
}

std::string talkText(std::int64_t seconds) {
    char text[64];
    std::snprintf(text, sizeof text, "%lld:%02d:%02d", static_cast<long long>(seconds / 3600),
                  static_cast<int>(seconds / 60 % 60), static_cast<int>(seconds % 60));
    return text;
}

}  // namespace tools
