// Contact pictures: read from the companion's cache at once, loaded on the background queue otherwise.
#include "platform/dispatch.h"
#include "plugin/companion/settings.h"
#include "plugin/companion/utilities.h"
#include "plugin/rows/presentation.h"

namespace rows {

void bringContactImage(QVCallEntry entry, QVUITableViewCell cell) {
    if (!QVSettingsDataController::sharedInstance().isShowContactImage() || entry.abRecID() < 1) return;
    if (QuorvelUtils::getContactImageFromCache(entry.abRecID())) return;
    dispatch::async(dispatch::globalQueue(dispatch::Priority::Background),
                    [entry = objc::Strong(entry), cell = objc::Strong(cell)] {
                        if (!QuorvelUtils::getContactImage(entry->abRecID())) return;
                        // The cell may show another row by now: drawing again does that one no harm.
                        dispatch::asyncOnMain([cell] { cell->setNeedsDisplay(); });
                    });
}

}  // namespace rows
