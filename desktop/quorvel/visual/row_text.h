// What a row says: the texts that a call, a day or a call of a history is drawn with.
#pragma once

#include <string>
#include <vector>

#include "desktop/quorvel/visual/call_facts.h"

namespace quorvel {

enum class RowKind { Call, Day, History };

/// Which parts are used depends on the kind; what there is nothing to say for stays empty.
struct RowText {
    std::string title;     // the name or number; a day's headline; the exact time of a history's call
    std::string count;     // "(3)"
    std::string subtitle;  // the number's label, FaceTime, the place; a history's number
    std::string side;      // when it was; how long a history's call was
    std::string initials;
    // A day's counts and durations.
    std::string dialled;
    std::string dialledDuration;
    std::string received;
    std::string receivedDuration;
    std::string missed;

    /// In reading order, without empty ones.
    std::vector<std::string> all() const;
};

/// `counts` is whether the number of folded calls is shown, where it is more than one. Main thread.
RowText rowText(const CallFacts& facts, RowKind kind, bool counts);

}  // namespace quorvel
