// Switching between the filters' lists.
#pragma once

#include "plugin/rows/call_list.h"

namespace recents {

using rows::CallList;

/// The segmented control's action: leaves edit mode, then switches. Main thread.
void segmentAction(CallList list, UISegmentedControl control);
/// Switches to the control's filter and loads it on the background queue. Main thread.
void segMentBackGroundAction(CallList list, UISegmentedControl control);
/// The first step of a switch: remembers the offset of the list that is left, and takes the control's filter.
void takeFilterOf(const CallList& list, UISegmentedControl control);
/// The last steps: loads the filter's list on the background queue, then shows it on the main queue.
void loadFilterLater(const CallList& list);
/// Remembers how far the list is scrolled, for its filter.
void scrollViewDidEndDecelerating(CallList list, UIScrollView scroll);
/// Drops the companion's lists that the present mode does not show.
void clearCallLists(CallList list);
/// Nothing on the Recents screen, which has no day of its own; the day's screen answers the same selector.
void updateDateEntry(CallList list);

}  // namespace recents
