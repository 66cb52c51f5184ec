// The texts and icons that belong to a filter, for every screen that has filters.
#pragma once

#include "plugin/companion/filter.h"
#include "plugin/companion/utilities.h"

namespace rows {

inline constexpr NSUInteger filterCount = 4;

/// The image of the product's application, by its path.
template <objc::Name path>
inline UIImage productImage() {
    return UIImage::imageWithContentsOfFile(text<path>());
}

/// The icon of a segment: all, dialled, received, missed; null where its file cannot be read.
UIImage filterIcon(NSUInteger segment);
/// The name of a scope of the search bar, by the same places.
NSString scopeTitle(NSUInteger segment);
/// The four icons in that order, as items of a segmented control; the name stands in for an icon that is not there.
objc::Strong<NSMutableArray> filterIcons();

/// The key of the format that says how many calls of the filter a list shows.
NSString showingKey(Filter filter);
/// The key of the question before all calls of the filter are deleted. The one of a contact or day is a format that
/// takes its name.
NSString confirmationKey(Filter filter, bool named);
/// The localised title of the button that deletes all calls of the filter.
NSString deleteAllTitle(Filter filter);

}  // namespace rows
