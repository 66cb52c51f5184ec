// The telephone application's own record of calls: what its Recents list shows without the plug-in.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace phone {

struct HostCall {
    std::int64_t rowId = 0;
    std::string address;
    std::string name;  // empty without a contact
    std::string label;
    std::int64_t date = 0;  // seconds since the start of 1970
    bool outgoing = false;
    bool missed = false;
};

/// Where the application reads its newest calls and deletes one.
struct HostCallLog {
    /// The newest calls, newest first, at most that many; missed ones alone where asked.
    std::function<std::vector<HostCall>(bool missedOnly, std::size_t limit)> read;
    /// Deletes one call; answers whether it is gone.
    std::function<bool(std::int64_t rowId)> remove;
};

/// Set once, before the application starts.
void setHostCallLog(HostCallLog log);
const HostCallLog& hostCallLog();

}  // namespace phone
