// The queries for an entry's calls, and what stands in where they find none.
#include "plugin/rows/call_records.h"

#include "plugin/companion/data_controller.h"
#include "plugin/companion/utilities.h"
#include "plugin/rows/call_query_rule.h"

namespace rows {
namespace {

NSString dayOf(QVCallEntry entry) {
    auto formatter = QuorvelUtils::dateFormatter();
    formatter.setDateFormat(text<"yyyy-MM-dd">());
    return formatter.stringFromDate(NSDate::dateWithTimeIntervalSince1970(entry.date()));
}

NSString queryFor(QVCallEntry entry, Columns columns, Span span, NSString day) {
    const int record = entry.abRecID();
    const Whose whose = whoseCalls(record);
    auto format = NSString::stringWithUTF8String(queryFormat(columns, whose, span));
    // The latest call's query has no place for the day, which is passed over.
    return whose == Whose::Contact ? NSString::stringWithFormat(format, record, day)
                                   : NSString::stringWithFormat(format, entry.phoneNumber(), day);
}

/// The calls of the entry's day. Leaves the shared formatter with the day's format.
NSMutableArray callsOfDay(QVCallEntry entry, Columns columns) {
    return QVDataController::sharedInstance().getResult(queryFor(entry, columns, Span::Day, dayOf(entry)));
}
NSMutableArray latestCall(QVCallEntry entry, Columns columns) {
    return QVDataController::sharedInstance().getResult(queryFor(entry, columns, Span::Latest, {}));
}

}  // namespace

NSMutableArray callListForSelectedCall(CallList, QVCallEntry entry) {
    auto calls = callsOfDay(entry, Columns::Full);
    if (calls.count() == 0) calls = latestCall(entry, Columns::Full);
    if (calls.count() == 0 && entry) calls.addObject(entry);
    return calls;
}

objc::Strong<NSMutableDictionary> callListForTheDay(CallList, QVCallEntry entry) {
    auto calls = callsOfDay(entry, Columns::Short);
    if (calls.count() == 0) {
        calls = latestCall(entry, Columns::Short);
        if (calls.count() > 0) {
            auto latest = calls.objectAtIndex<QVCallEntry>(0);
            entry.setFlag(latest.flag());
            entry.setDuration(latest.duration());
            entry.setDate(latest.date());
        }
    }
    if (calls.count() == 0 && entry) calls.addObject(entry);

    const NSUInteger count = calls.count();
    auto byDirection = NSMutableDictionary::makeWithCapacity(count);
    auto outgoing = NSMutableArray::make();
    auto incoming = NSMutableArray::make();
    for (NSUInteger i = 0; i < count; ++i) {
        auto call = calls.objectAtIndex<QVCallEntry>(i);
        (call.isOutGoing() ? outgoing : incoming)->addObject(call);
    }
    byDirection->setObject(outgoing.get(), localized<"OUT_CALLS">());
    byDirection->setObject(incoming.get(), localized<"INC_CALLS">());
    calls.removeAllObjects();
    return byDirection;
}

}  // namespace rows
