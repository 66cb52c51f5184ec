// UITableViewController: a screen whose view is a table.
#pragma once

#include "desktop/uikit/table_view.h"
#include "desktop/uikit/view_controller.h"

namespace uikit {

class TableViewController : public ViewController {
  public:
    using Super = ViewController;
    static constexpr objc::Name className{"UITableViewController"};
    static void define(objc::ClassDefinition<TableViewController>& definition);

    /// The table's style: 0 plain, 1 grouped.
    objc::Object initWithStyle(long style);
    /// The table; the view loads when it is first asked for. Its delegate and data source are the screen.
    TableView* tableView();

    void loadView() override;
    void setEditingAnimated(bool editing, bool animated) override;

  protected:
    /// For subclasses with initialisers of their own; before the view loads.
    void setTableStyle(long style) { style_ = style; }

  private:
    long style_ = TableView::plain;
    objc::Ref<TableView> table_;
};

}  // namespace uikit
