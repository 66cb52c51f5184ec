// QVCallEntry: one call, or one group of calls, as the companion hands it out. Entries are shared objects.
#pragma once

#include "platform/foundation.h"

struct QVCallEntry : NSObject {
    static constexpr objc::Name className{"QVCallEntry"};

    int ROWID() const { return objc::send<"ROWID", int>(*this); }
    int iLogOID() const { return objc::send<"iLogOID", int>(*this); }
    NSString phoneNumber() const { return objc::send<"phoneNumber", NSString>(*this); }
    NSString name() const { return objc::send<"name", NSString>(*this); }
    /// The contact's record in the address book; -1 without a contact.
    int abRecID() const { return objc::send<"abRecID", int>(*this); }
    /// Seconds since the start of 1970.
    int date() const { return objc::send<"date", int>(*this); }
    /// Seconds.
    int duration() const { return objc::send<"duration", int>(*this); }
    /// How many calls the entry stands for.
    int count() const { return objc::send<"count", int>(*this); }
    void setCount(int count) const { objc::send<"setCount:">(*this, count); }
    /// The day of the entry, "yyyy-MM-dd".
    NSString grpByDate() const { return objc::send<"grpByDate", NSString>(*this); }
    bool isDialed() const { return objc::send<"isDialed", bool>(*this); }
    bool isReceived() const { return objc::send<"isReceived", bool>(*this); }
    bool isMissed() const { return objc::send<"isMissed", bool>(*this); }
    bool isCanceled() const { return objc::send<"isCanceled", bool>(*this); }
};
