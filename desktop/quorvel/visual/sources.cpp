// The standard sources: the machine's clock and locale, and the companion's services by message.
#include "desktop/quorvel/visual/sources.h"

#include <unicode/locid.h>

#include <ctime>

#include "desktop/uikit/text.h"

namespace quorvel {
namespace {

std::string localeName() { return icu::Locale::getDefault().getName(); }

objc::Object settings() { return objc::sendClass<"QVSettingsDataController", "sharedInstance", objc::Object>(); }
bool picturesWanted() { return objc::send<"isShowContactImage", bool>(settings()); }
bool daysWanted() { return objc::send<"isGroupByDate", bool>(settings()); }

objc::Object cachedPicture(int record) {
    return objc::sendClass<"QuorvelUtils", "getContactImageFromCache:", objc::Object>(record);
}

std::string formattedNumber(const std::string& number) {
    if (number.empty() || number.find('@') != std::string::npos) return number;
    const auto formatted =
        objc::sendClass<"QuorvelUtils", "getFormattedPhoneNumber:", objc::Object>(uikit::nsString(number));
    const std::string text = uikit::utf8(formatted);
    return text.empty() ? number : text;
}

std::string localizedText(const char* key) {
    const auto text = objc::sendClass<"QuorvelUtils", "getLocalizedString:", objc::Object>(uikit::nsString(key));
    return text ? uikit::utf8(text) : key;
}

Sources standard() {
    return {[] { return static_cast<std::int64_t>(std::time(nullptr)); },
            &localeName,
            &picturesWanted,
            &daysWanted,
            &cachedPicture,
            &formattedNumber,
            &localizedText};
}

}  // namespace

Sources& sources() {
    static auto* const shared = new Sources(standard());
    return *shared;
}

void resetSources() { sources() = standard(); }

}  // namespace quorvel
