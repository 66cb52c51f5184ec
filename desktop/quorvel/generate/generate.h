// Made-up calls: people called with skew, unknown numbers, runs, several years, FaceTime, addresses.
#pragma once

#include <cstdint>
#include <functional>

#include "desktop/quorvel/store/call.h"

namespace quorvel {

struct GenerateOptions {
    std::int64_t calls = 400;
    std::uint64_t seed = 1;
    std::int64_t until = 0;  ///< the newest call's time, seconds since 1970
};

/// Gives the calls one after another, oldest first; the same for the same options on every machine. Ends early where
/// `take` answers false. The contact of a call is the place of its person among madeUpPeople(), counted from 1.
void generateCalls(const GenerateOptions& options, const std::function<bool(const store::NewCall&)>& take);

}  // namespace quorvel
