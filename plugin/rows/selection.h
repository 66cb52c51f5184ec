// What taps on rows do: call back, or open the contact or the day. Main thread.
#pragma once

#include "plugin/rows/call_list.h"

namespace rows {

// The table's delegate, for any screen: they send the screen `handleTableRowSelection:` and
// `handleDidSelectRowAtIndexAction:`.
void didSelectRow(CallList list, UITableView table, NSIndexPath path);
void accessoryButtonTapped(CallList list, UITableView table, NSIndexPath path);
/// Null, and nobody is called: the host never places a call by itself.
objc::Object callAtTableViewIndex(CallList list, objc::Object index);

// A screen whose rows are calls.
/// Calls the row's entry back where the user wants that of a tap, else opens a call row.
void tapCallRow(CallList list, NSIndexPath path);
/// Opens the contact of the row's entry, with the entry's calls of that day above the card.
void openCallRow(CallList list, NSIndexPath path);

// A screen whose rows are days while calls are grouped by date: a tap and the detail button open the day then.
void tapRow(CallList list, NSIndexPath path);
void openRow(CallList list, NSIndexPath path);

}  // namespace rows
