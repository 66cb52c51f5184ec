// The list of the companion's visual classes.
#include "desktop/quorvel/visual/visual.h"

#include "desktop/quorvel/visual/block_action_sheet.h"
#include "desktop/quorvel/visual/call_cell.h"
#include "desktop/quorvel/visual/categories.h"
#include "desktop/quorvel/visual/progress_hud.h"

namespace quorvel {

void registerVisualClasses() {
    objc::registerClasses<  //
        CallCell,           //
        LoadMoreCell,       //
        ProgressHud,        //
        BlockActionSheet>();
    addCategories();
}

}  // namespace quorvel
