// Made-up calls: people called with skew, unknown numbers, runs, several years, FaceTime, addresses.
#pragma once

#include <cstdint>
#include <functional>
#include <span>

#include "desktop/quorvel/store/call.h"

namespace quorvel {

/// Somebody who is called: the contact of their calls is their place in the list, counted from 1.
struct MadeUpPerson {
    const char* prefix;
    const char* firstName;
    const char* lastName;
    const char* address;  ///< a number or an e-mail address
    const char* label;    ///< mobile, home, work or other
    const char* location;
};
std::span<const MadeUpPerson> madeUpPeople();

struct GenerateOptions {
    std::int64_t calls = 400;
    std::uint64_t seed = 1;
    std::int64_t until = 0;  ///< the newest call's time, seconds since 1970
};

/// Gives the calls one after another, oldest first; the same for the same options on every machine. Ends early where
/// `take` answers false.
void generateCalls(const GenerateOptions& options, const std::function<bool(const store::NewCall&)>& take);

}  // namespace quorvel
