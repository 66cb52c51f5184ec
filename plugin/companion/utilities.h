// QuorvelUtils: the companion's texts, its contacts and their pictures, numbers and dates.
#pragma once

#include "platform/addressbook.h"
#include "platform/uikit_views.h"
#include "plugin/companion/entry.h"

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

    /// The one formatter that everybody shares. It keeps the format that it was last given: set it before each use, on
    /// the main thread.
    static NSDateFormatter dateFormatter() { return objc::send<"dateFormatter", NSDateFormatter>(cls<QuorvelUtils>()); }

    /// The companion's address book; null where the user denies it.
    static ABAddressBook getAddressBook() { return objc::send<"getAddressBook", ABAddressBook>(cls<QuorvelUtils>()); }
    /// The person of that record; null where there is none.
    static ABPerson getPersonRecordFromDB(int record) {
        return objc::send<"getPersonRecordFromDB:", ABPerson>(cls<QuorvelUtils>(), record);
    }
    // Which of the person's numbers, or addresses, is the entry's; negative for none.
    static NSInteger highlightedPhoneNumber(ABPerson person, QVCallEntry entry) {
        return objc::send<"getHighlitedPhoneNumberPropertyIndex:entry:", NSInteger>(cls<QuorvelUtils>(), person, entry);
    }
    static NSInteger highlightedEmail(ABPerson person, QVCallEntry entry) {
        return objc::send<"getHighlitedEmailPropertyIndex:entry:", NSInteger>(cls<QuorvelUtils>(), person, entry);
    }
    /// Gives the stored calls of the person's numbers to the contact of that record. Slow: not for the main thread.
    static void updateQuorvelCallsHistory(ABPerson person, int record) {
        objc::send<"updateQuorvelCallsHistory:rowID:">(cls<QuorvelUtils>(), person, record);
    }

    static bool isEmailAddress(NSString text) { return objc::send<"isEmailAddress:", bool>(cls<QuorvelUtils>(), text); }
    /// The number as people write it.
    static NSString getFormattedPhoneNumber(NSString number) {
        return objc::send<"getFormattedPhoneNumber:", NSString>(cls<QuorvelUtils>(), number);
    }

    // Which version of the system this is.
    static bool isPreIOS_4() { return objc::send<"isPreIOS_4", bool>(cls<QuorvelUtils>()); }
    static bool isIOS_7_0() { return objc::send<"isIOS_7_0", bool>(cls<QuorvelUtils>()); }
};

/// The localised text of a literal key.
template <objc::Name key>
inline NSString localized() {
    return QuorvelUtils::getLocalizedString(text<key>());
}
