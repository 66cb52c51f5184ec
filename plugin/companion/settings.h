// QVSettingsDataController: the user's settings, read at the moment of use, and the two flags that say what is stale.
#pragma once

#include "platform/foundation.h"

struct QVSettingsDataController : NSObject {
    static constexpr objc::Name className{"QVSettingsDataController"};

    static QVSettingsDataController sharedInstance() {
        return objc::send<"sharedInstance", QVSettingsDataController>(cls<QVSettingsDataController>());
    }
    /// Reads everything again from the settings' store.
    void reloadSettings() const { objc::send<"reloadSettings">(*this); }

    bool isReplaceRecentsOn() const { return objc::send<"isReplaceRecentsOn", bool>(*this); }
    /// The page size: rows shown at first and added by each load-more.
    int minRec_Call() const { return objc::send<"intValue", int>(objc::send<"minRec_Call", Object>(*this)); }
    bool isGroupByDate() const { return objc::send<"isGroupByDate", bool>(*this); }
    bool isGroupContacts_Call() const { return objc::send<"isGroupContacts_Call", bool>(*this); }
    bool isEnableCallSearch() const { return objc::send<"isEnableCallSearch", bool>(*this); }
    bool isShowHeader_Call() const { return objc::send<"isShowHeader_Call", bool>(*this); }
    bool isShowFooter_Call() const { return objc::send<"isShowFooter_Call", bool>(*this); }
    bool isShowContactImage() const { return objc::send<"isShowContactImage", bool>(*this); }

    /// A tap on a call calls back rather than opening the contact.
    bool isCallOnTap_Call() const { return objc::send<"isCallOnTap_Call", bool>(*this); }
    bool isFaceTimeEnabled() const { return objc::send<"isFaceTimeEnabled", bool>(*this); }

    bool isNeedToLoadData() const { return objc::send<"isNeedToLoadData", bool>(*this); }
    void setIsNeedToLoadData(bool need) const { objc::send<"setIsNeedToLoadData:">(*this, need); }
    bool isCallSettingsChanged() const { return objc::send<"isCallSettingsChanged", bool>(*this); }
    void setIsCallSettingsChanged(bool changed) const { objc::send<"setIsCallSettingsChanged:">(*this, changed); }
};

/// Whether the user wants the replaced Recents screen, asked of the settings at each call.
inline bool isReplaceRecentsOn() { return QVSettingsDataController::sharedInstance().isReplaceRecentsOn(); }
