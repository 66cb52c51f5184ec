// The classes of the toolkit: the whole list, and the moment when they are registered.
#include "desktop/uikit/activity_indicator.h"
#include "desktop/uikit/address.h"
#include "desktop/uikit/alert_view.h"
#include "desktop/uikit/application.h"
#include "desktop/uikit/button.h"
#include "desktop/uikit/color.h"
#include "desktop/uikit/control.h"
#include "desktop/uikit/image_view.h"
#include "desktop/uikit/label.h"
#include "desktop/uikit/navigation_controller.h"
#include "desktop/uikit/search_bar.h"
#include "desktop/uikit/search_display_controller.h"
#include "desktop/uikit/segmented_control.h"
#include "desktop/uikit/sheet.h"
#include "desktop/uikit/tab_bar_controller.h"
#include "desktop/uikit/table_view_controller.h"
#include "desktop/uikit/text_field.h"
#include "desktop/uikit/view.h"
#include "desktop/uikit/view_controller.h"

namespace uikit {

void registerToolkit() {
    objc::registerClasses<     //
        ColorObject,           //
        FontObject,            //
        ImageObject,           //
        Screen,                //
        Responder,             //
        Application,           //
        View,                  //
        Window,                //
        ViewController,        //
        Label,                 //
        ImageView,             //
        Control,               //
        Button,                //
        TextField,             //
        SegmentedControl,      //
        ActivityIndicator,     //
        IndicatorAppearance,   //
        BarButtonItem,         //
        NavigationItem,        //
        NavigationBar,         //
        NavigationController,  //
        SearchField,           //
        SearchBar,             //
        Sheet,                 //
        AlertView,             //
        TabBarItem,            //
        TabBar,                //
        TabBarController, ScrollView, TableView, TableViewCell, TableHeaderFooterView, TableViewController,
        SearchDisplayController>();
    addIndexPathMethods();
}

namespace {
[[gnu::constructor]] void registerAtLoad() {
    registerToolkit();
    const objc::AutoreleasePool pool;
    acceptTelephoneAddresses();
}
}  // namespace

}  // namespace uikit
