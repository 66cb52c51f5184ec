// The base of the plug-in's own screens, and the fixture.
#include "tests/messages/day_screen.h"

#include <thread>

#include "desktop/dispatch/main_loop.h"
#include "desktop/uikit/table_view_controller.h"
#include "desktop/uikit/text.h"

namespace recentsmessages {
namespace {

/// It has a search, and runs what its indicator is to run on a thread of its own, for which the test waits.
class Base : public uikit::TableViewController {
  public:
    using Super = uikit::TableViewController;
    static constexpr objc::Name className{"QVBaseTableViewController"};

    void viewDidLoad() override {
        auto bar = objc::Ref<uikit::SearchBar>::make<"initWithFrame:">(uikit::Rect{{0, 0}, {320, 88}});
        auto search =
            objc::Ref<uikit::SearchDisplayController>::make<"initWithSearchBar:contentsController:">(bar.get(), this);
        search->setDelegate(object());
        search->setSearchResultsDelegate(object());
        search->setSearchResultsDataSource(object());
        setSearchDisplayController(objc::Object{search->self});
    }
    uikit::TableView* table() { return tableView(); }
    objc::Object actionSheet() const { return sheet_.get(); }
    void setActionSheet(objc::Object sheet) { sheet_ = objc::Strong<>(sheet); }
    void show(objc::Object text) { log().add("indicator \"" + uikit::utf8(text) + "\""); }
    void showRunning(objc::Object text, objc::Object, objc::Object delegate, int, SEL selector) {
        show(text);
        std::thread([&] {
            const dispatch::AutoreleaseScope scope;
            objc::sendSelector(delegate, selector);
        }).join();
    }
    void hide() { log().add("indicator hidden"); }
    static void define(objc::ClassDefinition<Base>& definition) {
        definition.method<"table", &Base::table>()
            .method<"actionSheet", &Base::actionSheet>()
            .method<"setActionSheet:", &Base::setActionSheet>()
            .method<"showHUD:", &Base::show>()
            .method<"showHUD:detailText:delegate:mode:selector:", &Base::showRunning>()
            .method<"hideHUD", &Base::hide>();
    }

  private:
    objc::Strong<> sheet_;
};

std::string textOf(objc::Object text) { return text ? uikit::utf8(text) : std::string(); }

}  // namespace

void registerDayBase() { objc::registerClasses<Base>(); }

void DayMessages::openDay() {
    open();
    entry_ = callcompanion::entryOf({.id = 900, .name = "day", .number = "day"});
    entry_->setDldCallsCnt(4);
    entry_->setRcdCallsCnt(5);
    entry_->setMsdCallsCnt(6);
    entry_->setDldCallsDuration(40);
    entry_->setRcdCallsDuration(50);
    for (auto& list : companion().lists) list.store(NSMutableArray{});
    day_ = objc::make<objc::Object>(objc::classNamed<"QVDateLogViewController">());
    sendDay<"setDateEntry:">(entry_.get());
    navigation()->pushViewControllerAnimated(objc::peerOf<uikit::ViewController>(day_.self()), false);
    settle();
    log().clear();
}

void DayMessages::TearDown() {
    companion().duringDropping = nullptr;
    if (day_) navigation()->popToRootViewControllerAnimated(false);
    RecentsMessages::TearDown();
}

void DayMessages::pickOfDay(int segment) {
    auto* bar = objc::peerOf<uikit::NavigationItem>(sendDay<"navigationItem", objc::Object>());
    auto* segments = objc::peerOf<uikit::SegmentedControl>(bar->titleView()->self);
    segments->setSelectedSegmentIndex(segment);
    sendDay<"segmentAction:">(segments->object());
    settle();
}

std::string DayMessages::headerOfDay() const {
    return textOf(sendDay<"tableView:titleForHeaderInSection:", objc::Object>(tableOfDay()->object(), 0L));
}
std::string DayMessages::footerOfDay() const {
    return textOf(sendDay<"tableView:titleForFooterInSection:", objc::Object>(tableOfDay()->object(), 0L));
}
objc::Strong<NSMutableArray> DayMessages::listOfDay() const {
    return objc::Strong<NSMutableArray>(sendDay<"srcList", NSMutableArray>());
}
uikit::NavigationController* DayMessages::navigation() const {
    return objc::peerOf<uikit::NavigationController>(send<"navigationController", objc::Object>());
}

}  // namespace recentsmessages
