// The one record of calls that the application was given.
#include "desktop/phone/host_call_log.h"

#include <utility>

namespace phone {
namespace {
HostCallLog& log() {
    static HostCallLog one{[](bool, std::size_t) { return std::vector<HostCall>{}; },
                           [](std::int64_t) { return false; }};
    return one;
}
}  // namespace

void setHostCallLog(HostCallLog calls) { log() = std::move(calls); }
const HostCallLog& hostCallLog() { return log(); }

}  // namespace phone
