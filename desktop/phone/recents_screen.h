// PHRecentsViewController: the telephone application's own Recents screen, all calls and missed ones, which a plug-in
// may replace method by method.
#pragma once

#include "desktop/phone/host_call_log.h"
#include "desktop/uikit/segmented_control.h"
#include "desktop/uikit/table_view.h"
#include "desktop/uikit/view_controller.h"

namespace phone {

class RecentsScreen : public uikit::ViewController {
  public:
    using Super = uikit::ViewController;
    static constexpr objc::Name className{"PHRecentsViewController"};
    static void define(objc::ClassDefinition<RecentsScreen>& definition);
    ~RecentsScreen() override;

    /// The table of calls; `table`, as plug-ins know it.
    uikit::TableView* table();

    void loadView() override;
    void viewDidLoad() override;
    void viewWillAppear(bool animated) override;
    void viewDidAppear(bool animated) override;
    void setEditingAnimated(bool editing, bool animated) override;

    // The table's data source and delegate.
    long numberOfSections(objc::Object table);
    long numberOfRows(objc::Object table, long section);
    objc::Object cellForRow(objc::Object table, objc::Object path);
    void willDisplayCell(objc::Object table, objc::Object cell, objc::Object path);
    bool canEditRow(objc::Object table, objc::Object path);
    void willBeginEditingRow(objc::Object table, objc::Object path);
    void didEndEditingRow(objc::Object table, objc::Object path);
    void commitEditing(objc::Object table, long style, objc::Object path);
    void didSelectRow(objc::Object table, objc::Object path);
    void accessoryTapped(objc::Object table, objc::Object path);
    double heightForRow(objc::Object table, objc::Object path);

    /// Places the call of that row again; answers its address, or nil when there is no such row.
    objc::Object callAtIndex(objc::Object path);
    /// Edit on the right while there are calls. It comes back when it is taken away: a plug-in that leaves the list to
    /// this screen works on the bar's buttons all the same.
    void updateNavigationBarButtons();

  private:
    void reload();
    void filterChanged(objc::Object control);
    void toggleEditing();
    void openCard(const HostCall& call);

    objc::Ref<uikit::TableView> table_;
    objc::Ref<uikit::SegmentedControl> filter_;
    std::vector<HostCall> calls_;
    bool showsEdit_ = false;
};

}  // namespace phone
