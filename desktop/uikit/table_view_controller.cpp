// UITableViewController.
#include "desktop/uikit/table_view_controller.h"

#include "desktop/uikit/application.h"

namespace uikit {

void TableViewController::define(objc::ClassDefinition<TableViewController>& definition) {
    definition.method<"initWithStyle:", &TableViewController::initWithStyle>()
        .method<"tableView", &TableViewController::tableView>();
}

objc::Object TableViewController::initWithStyle(long style) {
    style_ = style;
    return objc::send<"init", objc::Object>(object());
}

TableView* TableViewController::tableView() {
    view();
    return table_;
}

void TableViewController::loadView() {
    table_ = objc::Ref<TableView>::make<"initWithFrame:style:">(Rect{{0, 0}, screenSize()}, style_);
    table_->setAutoresizingMask(flexibleWidth | flexibleHeight);
    objc::send<"setDataSource:">(table_->object(), object());
    objc::send<"setDelegate:">(table_->object(), object());
    setView(table_);
}

void TableViewController::setEditingAnimated(bool editing, bool animated) {
    ViewController::setEditingAnimated(editing, animated);
    objc::send<"setEditing:animated:">(tableView()->object(), editing, animated);
}

}  // namespace uikit
