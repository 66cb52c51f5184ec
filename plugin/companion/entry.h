// QVCallEntry: one call, or one group of calls, as the companion hands it out. Entries are shared objects.
#pragma once

#include "platform/foundation.h"

struct QVCallEntry : NSObject {
    static constexpr objc::Name className{"QVCallEntry"};

    int ROWID() const { return objc::send<"ROWID", int>(*this); }
    void setROWID(int rowId) const { objc::send<"setROWID:">(*this, rowId); }
    int iLogOID() const { return objc::send<"iLogOID", int>(*this); }
    void setILogOID(int identity) const { objc::send<"setILogOID:">(*this, identity); }
    /// The call table's flags: direction and kind.
    int flag() const { return objc::send<"flag", int>(*this); }
    void setFlag(int flag) const { objc::send<"setFlag:">(*this, flag); }
    NSString phoneNumber() const { return objc::send<"phoneNumber", NSString>(*this); }
    void setPhoneNumber(NSString number) const { objc::send<"setPhoneNumber:">(*this, number); }
    NSString name() const { return objc::send<"name", NSString>(*this); }
    void setName(NSString name) const { objc::send<"setName:">(*this, name); }
    NSString phoneLabel() const { return objc::send<"phoneLabel", NSString>(*this); }
    void setPhoneLabel(NSString label) const { objc::send<"setPhoneLabel:">(*this, label); }
    /// Where the caller is, as far as the number tells; may be null.
    NSString location() const { return objc::send<"location", NSString>(*this); }
    bool isDeleted() const { return objc::send<"isDeleted", bool>(*this); }
    void setIsDeleted(bool deleted) const { objc::send<"setIsDeleted:">(*this, deleted); }
    /// The contact's record in the address book; -1 without a contact.
    int abRecID() const { return objc::send<"abRecID", int>(*this); }
    void setAbRecID(int record) const { objc::send<"setAbRecID:">(*this, record); }
    /// Seconds since the start of 1970.
    int date() const { return objc::send<"date", int>(*this); }
    void setDate(int seconds) const { objc::send<"setDate:">(*this, seconds); }
    /// Seconds.
    int duration() const { return objc::send<"duration", int>(*this); }
    void setDuration(int seconds) const { objc::send<"setDuration:">(*this, seconds); }
    /// How many calls the entry stands for.
    int count() const { return objc::send<"count", int>(*this); }
    void setCount(int count) const { objc::send<"setCount:">(*this, count); }
    /// The day of the entry, "yyyy-MM-dd".
    NSString grpByDate() const { return objc::send<"grpByDate", NSString>(*this); }
    bool isDialed() const { return objc::send<"isDialed", bool>(*this); }
    bool isReceived() const { return objc::send<"isReceived", bool>(*this); }
    bool isMissed() const { return objc::send<"isMissed", bool>(*this); }
    bool isCanceled() const { return objc::send<"isCanceled", bool>(*this); }
    bool isFaceTime() const { return objc::send<"isFaceTime", bool>(*this); }
    bool isFaceTimeVideo() const { return objc::send<"isFaceTimeVideo", bool>(*this); }
    bool isOutGoing() const { return objc::send<"isOutGoing", bool>(*this); }

    // Of an entry that stands for a day: its calls, and the seconds of those that have any.
    std::int64_t dldCallsCnt() const { return objc::send<"dldCallsCnt", std::int64_t>(*this); }
    std::int64_t rcdCallsCnt() const { return objc::send<"rcdCallsCnt", std::int64_t>(*this); }
    std::int64_t msdCallsCnt() const { return objc::send<"msdCallsCnt", std::int64_t>(*this); }
    std::int64_t dldCallsDuration() const { return objc::send<"dldCallsDuration", std::int64_t>(*this); }
    std::int64_t rcdCallsDuration() const { return objc::send<"rcdCallsDuration", std::int64_t>(*this); }
    void setDldCallsCnt(std::int64_t count) const { objc::send<"setDldCallsCnt:">(*this, count); }
    void setRcdCallsCnt(std::int64_t count) const { objc::send<"setRcdCallsCnt:">(*this, count); }
    void setMsdCallsCnt(std::int64_t count) const { objc::send<"setMsdCallsCnt:">(*this, count); }
    void setDldCallsDuration(std::int64_t seconds) const { objc::send<"setDldCallsDuration:">(*this, seconds); }
    void setRcdCallsDuration(std::int64_t seconds) const { objc::send<"setRcdCallsDuration:">(*this, seconds); }
    /// How many calls the day has left; it may be below zero after deletions of what the day did not count.
    std::int64_t callsOfDay() const { return dldCallsCnt() + rcdCallsCnt() + msdCallsCnt(); }
};
