// The calls that an entry stands for: those of its contact, or of its number, on its day. Main thread; the queries run
// at once.
#pragma once

#include "plugin/companion/entry.h"
#include "plugin/rows/call_list.h"

namespace rows {

/// The calls of the entry's day, newest first; where none is left, the latest call of any day; without any, the entry
/// itself. So it is never empty, but null should the companion answer null.
NSMutableArray callListForSelectedCall(CallList list, QVCallEntry entry);

/// The same calls by direction: two lists, newest first, under the localised texts of "OUT_CALLS" and "INC_CALLS".
/// Where the entry's day has no call left, the entry takes over flags, duration and date of the latest one.
objc::Strong<NSMutableDictionary> callListForTheDay(CallList list, QVCallEntry entry);

}  // namespace rows
