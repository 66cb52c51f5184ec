// A call entry as the rows need it, read from the entry's object once.
#pragma once

#include <cstdint>
#include <string>

#include "objc/layer.h"

namespace quorvel {

enum class Direction { Outgoing, Incoming, Missed };

struct CallFacts {
    std::string name;
    std::string number;
    std::string label;
    std::string location;
    std::string day;  // "yyyy-MM-dd"; of a day's entry
    std::int64_t date = 0;
    std::int64_t duration = 0;
    int contact = -1;  // the address book's record; below 1 without one
    int count = 0;     // calls that the entry folds
    Direction direction = Direction::Incoming;
    bool faceTime = false;
    bool faceTimeVideo = false;

    // Of a day's entry.
    std::int64_t dialled = 0;
    std::int64_t received = 0;
    std::int64_t missed = 0;
    std::int64_t dialledSeconds = 0;
    std::int64_t receivedSeconds = 0;
};

/// Asks a QVCallEntry for everything; nothing at all for null.
CallFacts readCall(objc::Object entry);

}  // namespace quorvel
