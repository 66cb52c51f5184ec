// The list of the companion's visual classes.
#include "desktop/quorvel/visual/visual.h"

#include "desktop/quorvel/visual/base_table_controller.h"
#include "desktop/quorvel/visual/block_action_sheet.h"
#include "desktop/quorvel/visual/call_cell.h"
#include "desktop/quorvel/visual/categories.h"
#include "desktop/quorvel/visual/load_more_cell.h"
#include "desktop/quorvel/visual/person_header.h"
#include "desktop/quorvel/visual/progress_hud.h"

namespace quorvel {

void registerVisualClasses() {
    objc::registerClasses<  //
        ProgressHud,        //
        BlockActionSheet,   //
        CallCell,           //
        LoadMoreCell,       //
        PersonHeader,       //
        BaseTableController>();
    addCategories();
}

}  // namespace quorvel
