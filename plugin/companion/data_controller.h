// QVDataController: the companion's call data service. Every operation may be called from any thread; a failed reading
// answers an empty list or 0, a failed deletion NO.
#pragma once

#include "plugin/companion/entry.h"
#include "plugin/companion/filter.h"

struct QVDataController : NSObject {
    static constexpr objc::Name className{"QVDataController"};

    static QVDataController sharedInstance() {
        return objc::send<"sharedInstance", QVDataController>(cls<QVDataController>());
    }

    // The loaded part of each list, newest first. The arrays are the service's own: its appends show in them. May be
    // nil.
    NSMutableArray callList() const { return objc::send<"callList", NSMutableArray>(*this); }
    NSMutableArray dldCallList() const { return objc::send<"dldCallList", NSMutableArray>(*this); }
    NSMutableArray rcdCallList() const { return objc::send<"rcdCallList", NSMutableArray>(*this); }
    NSMutableArray msdCallList() const { return objc::send<"msdCallList", NSMutableArray>(*this); }
    NSMutableArray dateCallsList() const { return objc::send<"dateCallsList", NSMutableArray>(*this); }
    void setCallList(NSMutableArray list) const { objc::send<"setCallList:">(*this, list); }
    void setDldCallList(NSMutableArray list) const { objc::send<"setDldCallList:">(*this, list); }
    void setRcdCallList(NSMutableArray list) const { objc::send<"setRcdCallList:">(*this, list); }
    void setMsdCallList(NSMutableArray list) const { objc::send<"setMsdCallList:">(*this, list); }
    void setDateCallsList(NSMutableArray list) const { objc::send<"setDateCallsList:">(*this, list); }

    // Rows that each list has in the database, as last counted.
    std::int64_t allCallsCount() const { return objc::send<"allCallsCount", std::int64_t>(*this); }
    std::int64_t dldCallsCount() const { return objc::send<"dldCallsCount", std::int64_t>(*this); }
    std::int64_t rcdCallsCount() const { return objc::send<"rcdCallsCount", std::int64_t>(*this); }
    std::int64_t msdCallsCount() const { return objc::send<"msdCallsCount", std::int64_t>(*this); }
    void setAllCallsCount(std::int64_t count) const { objc::send<"setAllCallsCount:">(*this, count); }
    void setDldCallsCount(std::int64_t count) const { objc::send<"setDldCallsCount:">(*this, count); }
    void setRcdCallsCount(std::int64_t count) const { objc::send<"setRcdCallsCount:">(*this, count); }
    void setMsdCallsCount(std::int64_t count) const { objc::send<"setMsdCallsCount:">(*this, count); }

    // Seconds of all calls of each filter; 0 while not known.
    std::int64_t allCallsDuration() const { return objc::send<"allCallsDuration", std::int64_t>(*this); }
    std::int64_t dldCallsDuration() const { return objc::send<"dldCallsDuration", std::int64_t>(*this); }
    std::int64_t rcdCallsDuration() const { return objc::send<"rcdCallsDuration", std::int64_t>(*this); }
    std::int64_t msdCallsDuration() const { return objc::send<"msdCallsDuration", std::int64_t>(*this); }

    bool isAnyRecDeleted() const { return objc::send<"isAnyRecDeleted", bool>(*this); }
    void setIsAnyRecDeleted(bool deleted) const { objc::send<"setIsAnyRecDeleted:">(*this, deleted); }

    /// Reads up to `count` further calls of the filter from `offset` on and appends them to that filter's list.
    void readCallsFromDB(std::int64_t count, std::int64_t offset, Filter filter) const {
        objc::send<"readCallsFromDB:offset:flag:">(*this, count, offset, filter);
    }
    std::int64_t getTotalCallCount(Filter filter) const {
        return objc::send<"getTotalCallCount:", std::int64_t>(*this, filter);
    }
    std::int64_t getTotalCallDuration(Filter filter) const {
        return objc::send<"getTotalCallDuration:", std::int64_t>(*this, filter);
    }
    /// The seconds as text for the foot of a list.
    NSString getAllCallsDuration(std::int64_t seconds) const {
        return objc::send<"getAllCallsDuration:", NSString>(*this, seconds);
    }
    /// Every call of the filter that matches the text, on that day or, with nil, on all days.
    NSArray getSearchedRecordsFromDB(Filter filter, NSString text, NSString day) const {
        return objc::send<"getSearchedRecordsFromDB:searchString:date:", NSArray>(*this, filter, text, day);
    }
    /// Deletes every call of the filter, on that day or, with nil, on all days.
    bool removeCallsFromDB(Filter filter, NSString day) const {
        return objc::send<"removeCallsFromDB:date:", bool>(*this, filter, day);
    }
    /// Deletes the listed calls.
    bool removeDataFromDB(NSArray entries, Filter filter, bool forDate) const {
        return objc::send<"removeDataFromDB:calFilterType:forDate:", bool>(*this, entries, filter, forDate);
    }
    /// Deletes one call, or what the entry folds.
    bool removeData(QVCallEntry entry, Filter filter, NSString day) const {
        return objc::send<"removeData:calFilterType:date:", bool>(*this, entry, filter, day);
    }
    /// Removes the entry from the service's lists in memory.
    void removeEntriesFromCallList(QVCallEntry entry, Filter filter) const {
        objc::send<"removeEntriesFromCallList:calFilterType:">(*this, entry, filter);
    }
    /// The calls that a query over the call table finds, one each row; empty for a query that fails or is not one
    /// reading statement. The list is the caller's to change.
    NSMutableArray getResult(NSString query) const { return objc::send<"getResult:", NSMutableArray>(*this, query); }

    // The history of one contact or number.
    /// All calls of the entry's contact or number, newest first.
    NSArray getHistoryForContact(QVCallEntry entry) const {
        return objc::send<"getHistoryForContact:", NSArray>(*this, entry);
    }
    /// Deletes one call of a history.
    bool removeLogEntry(QVCallEntry entry, Filter filter) const {
        return objc::send<"removeLogEntry:calFilterType:", bool>(*this, entry, filter);
    }
    /// Deletes all calls of the contact, of the kind that the entry's flag and duration name where a filter is given.
    bool removeLogEntryFromDB(QVCallEntry entry, Filter filter, NSString day, std::int64_t count) const {
        return objc::send<"removeLogEntryFromDB:calFilterType:date:currentCount:", bool>(*this, entry, filter, day,
                                                                                         count);
    }
    /// Deletes the listed calls of a history.
    bool removeLogEntriesFromDB(NSArray entries, Filter filter) const {
        return objc::send<"removeLogEntriesFromDB:calFilterType:", bool>(*this, entries, filter);
    }
    void allHistoryDeletedForEntry(QVCallEntry entry) const { objc::send<"allHistoryDeletedForEntry:">(*this, entry); }
    /// The newest remaining call of a history, over all and of each kind; each may be nil.
    void updateCallEntriesTimeStamp(QVCallEntry newest, QVCallEntry dialled, QVCallEntry received,
                                    QVCallEntry missed) const {
        objc::send<"updateCallEntriesTimeStamp:dldCallEntry:rcdCallEntry:msdCallEntry:">(*this, newest, dialled,
                                                                                         received, missed);
    }
    /// Reads the day's calls of the filter from `offset` on and appends them to that filter's list.
    void readCallsForDate(std::int64_t offset, Filter filter, NSString day) const {
        objc::send<"readCallsForDate:offset:flag:date:">(*this, objc::Object{}, offset, filter, day);
    }

    void setAllCallsDuration(std::int64_t seconds) const { objc::send<"setAllCallsDuration:">(*this, seconds); }
    void showErrorMessage(NSString text) const { objc::send<"showErrorMessage:">(*this, text); }
    /// Sorts newest first, in place.
    void sortArray(NSMutableArray list) const { objc::send<"sortArray:">(*this, list); }
};

/// The service's list of the filter; for all calls the days where calls are grouped by date. May be nil.
inline NSMutableArray listOfFilter(QVDataController service, Filter filter, bool groupedByDate) {
    switch (filter) {
        case Filter::Dialled:
            return service.dldCallList();
        case Filter::Received:
            return service.rcdCallList();
        case Filter::Missed:
            return service.msdCallList();
        default:
            return groupedByDate ? service.dateCallsList() : service.callList();
    }
}

inline std::int64_t countOfFilter(QVDataController service, Filter filter) {
    switch (filter) {
        case Filter::Dialled:
            return service.dldCallsCount();
        case Filter::Received:
            return service.rcdCallsCount();
        case Filter::Missed:
            return service.msdCallsCount();
        default:
            return service.allCallsCount();
    }
}

inline std::int64_t durationOfFilter(QVDataController service, Filter filter) {
    switch (filter) {
        case Filter::Dialled:
            return service.dldCallsDuration();
        case Filter::Received:
            return service.rcdCallsDuration();
        case Filter::Missed:
            return service.msdCallsDuration();
        default:
            return service.allCallsDuration();
    }
}
