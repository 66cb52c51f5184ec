// Texts that count the rows of a list, in words for what its rows are: calls, the calls of one contact in a row, days.
#pragma once

#include "objc/layer.h"

namespace quorvel {

/// The text of the key, as QuorvelUtils answers it. While a list is asked for the title of its section, a format that
/// counts calls is answered in the words of what that list counts: days or entries on Recents, by the settings, entries
/// or calls on the screen of a day, which says its day too, and calls everywhere else. The format takes the same
/// arguments in each case. Any thread.
objc::Strong<> textForList(objc::Object key);

}  // namespace quorvel
