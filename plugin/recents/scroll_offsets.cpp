// The four exported offsets.
#include "plugin/recents/scroll_offsets.h"

#include "plugin/companion/settings.h"

extern "C" {
__attribute__((visibility("default"))) float allCallsOffSetY = 0;
__attribute__((visibility("default"))) float dldCallsOffSetY = 0;
__attribute__((visibility("default"))) float rcdCallsOffSetY = 0;
__attribute__((visibility("default"))) float msdCallsOffSetY = 0;
}

namespace recents {
namespace {

void setAll(ScrollOffsets offsets) {
    allCallsOffSetY = offsets.all;
    dldCallsOffSetY = offsets.dialled;
    rcdCallsOffSetY = offsets.received;
    msdCallsOffSetY = offsets.missed;
}

}  // namespace

void resetScrollOffsets() {
    auto settings = QVSettingsDataController::sharedInstance();
    const float offset = !settings.isGroupByDate() && settings.isEnableCallSearch() ? searchBarOffset : 0.0F;
    setAll({offset, offset, offset, offset});
}

void rememberScrollOffset(Filter filter, double offset) {
    setAll(remembered({allCallsOffSetY, dldCallsOffSetY, rcdCallsOffSetY, msdCallsOffSetY}, filter, offset));
}

}  // namespace recents
