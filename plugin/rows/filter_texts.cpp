// The texts and icons that belong to a filter.
#include "plugin/rows/filter_texts.h"

namespace rows {

UIImage filterIcon(NSUInteger segment) {
    switch (segment) {
        case 0:
            return productImage<"/Applications/Quorvel.app/all_icon.png">();
        case 1:
            return productImage<"/Applications/Quorvel.app/dialled_icon.png">();
        case 2:
            return productImage<"/Applications/Quorvel.app/received_icon.png">();
        default:
            return productImage<"/Applications/Quorvel.app/missed_icon.png">();
    }
}

NSString scopeTitle(NSUInteger segment) {
    switch (segment) {
        case 0:
            return text<"All">();
        case 1:
            return text<"Dialed">();
        case 2:
            return text<"Received">();
        default:
            return text<"Missed">();
    }
}

objc::Strong<NSMutableArray> filterIcons() {
    auto icons = NSMutableArray::make();
    for (NSUInteger segment = 0; segment < filterCount; ++segment) {
        if (auto icon = filterIcon(segment))
            icons->addObject(icon);
        else
            icons->addObject(scopeTitle(segment));
    }
    return icons;
}

NSString showingKey(Filter filter) {
    switch (filter) {
        case Filter::Dialled:
            return text<"DLD_SHOWING_D">();
        case Filter::Received:
            return text<"RCD_SHOWING_D">();
        case Filter::Missed:
            return text<"MSD_SHOWING_D">();
        default:
            return text<"ALL_SHOWING_D">();
    }
}

NSString confirmationKey(Filter filter, bool named) {
    switch (filter) {
        case Filter::Dialled:
            return named ? text<"DLD_DEL_ALL_CONTACT_CONFIRM_MSG">() : text<"DLD_DEL_ALL_CONFIRM_MSG">();
        case Filter::Received:
            return named ? text<"RCD_DEL_ALL_CONTACT_CONFIRM_MSG">() : text<"RCD_DEL_ALL_CONFIRM_MSG">();
        case Filter::Missed:
            return named ? text<"MSD_DEL_ALL_CONTACT_CONFIRM_MSG">() : text<"MSD_DEL_ALL_CONFIRM_MSG">();
        default:
            return named ? text<"ALL_DEL_ALL_CONTACT_CONFIRM_MSG">() : text<"ALL_DEL_ALL_CONFIRM_MSG">();
    }
}

NSString deleteAllTitle(Filter filter) {
    switch (filter) {
        case Filter::Dialled:
            return localized<"DEL_ALL_DLD">();
        case Filter::Received:
            return localized<"DEL_ALL_RCD">();
        case Filter::Missed:
            return localized<"DEL_ALL_MSD">();
        default:
            return localized<"DEL_ALL">();
    }
}

}  // namespace rows
