// QuorvelUtils: the companion's texts and contact pictures.
#pragma once

#include "platform/uikit_views.h"

struct QuorvelUtils : NSObject {
    static constexpr objc::Name className{"QuorvelUtils"};

    /// The text of the key in the user's language; may be a format.
    static NSString getLocalizedString(NSString key) {
        return objc::send<"getLocalizedString:", NSString>(cls<QuorvelUtils>(), key);
    }
    static bool canAccessAddressBook() { return objc::send<"canAccessAddressBook", bool>(cls<QuorvelUtils>()); }
    /// The contact's picture where it is in memory already, else nil. Any thread.
    static UIImage getContactImageFromCache(int record) {
        return objc::send<"getContactImageFromCache:", UIImage>(cls<QuorvelUtils>(), record);
    }
    /// Loads the contact's picture into the cache; nil when there is none. Slow: not for the main thread.
    static UIImage getContactImage(int record) {
        return objc::send<"getContactImage:", UIImage>(cls<QuorvelUtils>(), record);
    }
};

/// The localised text of a literal key.
template <objc::Name key>
inline NSString localized() {
    return QuorvelUtils::getLocalizedString(text<key>());
}
