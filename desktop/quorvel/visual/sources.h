// What the rows ask of the world around them: the time, the user's language, pictures and texts.
#pragma once

#include <cstdint>
#include <functional>
#include <string>

#include "objc/layer.h"

namespace quorvel {

/// Each can be replaced, by the companion at its start and by tests. Main thread.
struct Sources {
    /// Seconds since the start of 1970; the machine's clock until another is set.
    std::function<std::int64_t()> now;
    /// An ICU locale's name, "de" or "en_GB"; the process's locale until another is set.
    std::function<std::string()> language;
    /// Whether rows show pictures; asks the settings.
    std::function<bool()> showsPictures;
    /// Whether calls stand under their days, so that a row need not say the day; asks the settings.
    std::function<bool()> groupsByDay;
    /// A UIImage, or nil where it is not in memory; asks QuorvelUtils for the contact's record.
    std::function<objc::Object(int)> picture;
    /// A number as people write it; asks QuorvelUtils. Addresses that are not numbers come back as they are.
    std::function<std::string(const std::string&)> number;
    /// The text of a key in the user's language; asks QuorvelUtils, and answers the key where that is not there.
    std::function<std::string(const char*)> text;
};
Sources& sources();
/// Puts the standard ones back.
void resetSources();

}  // namespace quorvel
