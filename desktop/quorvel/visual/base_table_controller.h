// QVBaseTableViewController: the screen that the companion's own lists are made from, with indicator and sheet.
#pragma once

#include "desktop/quorvel/visual/block_action_sheet.h"
#include "desktop/quorvel/visual/progress_hud.h"
#include "desktop/uikit/table_view_controller.h"

namespace quorvel {

/// Main thread.
class BaseTableController : public uikit::TableViewController {
  public:
    using Super = uikit::TableViewController;
    static constexpr objc::Name className{"QVBaseTableViewController"};
    static void define(objc::ClassDefinition<BaseTableController>& definition);
    /// A screen that goes while its indicator shows unblocks the window.
    ~BaseTableController() override;

    /// Makes the search display controller, whose delegates and data source are the screen. The search bar, with four
    /// scopes, stands in the list only when a subclass makes it the table's header view.
    void viewDidLoad() override;
    objc::Object actionSheet() const { return actionSheet_; }
    void setActionSheet(objc::Object sheet) { actionSheet_ = objc::Strong<>(sheet); }

    /// `showHUD:`: blocks the key window and covers the screen until hideHUD. One that still shows is left alone.
    void showHud(objc::Object text);
    /// `showHUD:detailText:delegate:mode:selector:`: the same; where a selector is given it is sent to the delegate on
    /// a thread of its own, after which the indicator leaves and the delegate is sent `hudWasHidden:`.
    void showHudRunning(objc::Object text, objc::Object detail, objc::Object delegate, int mode, SEL selector);
    /// `hideHUD`: unblocks the window, whether an indicator shows or not.
    void hideHud();
    /// `hudWasHidden:`: unblocks the window and lets the indicator go. Subclasses that override it send super.
    void hudWasHidden(objc::Object hud);

    /// The indicator that was shown last, or null.
    ProgressHud* hud() const { return hud_; }

  private:
    objc::Strong<> actionSheet_;
    objc::Ref<ProgressHud> hud_;
};

}  // namespace quorvel
