// The host's screen, the visual classes that the plug-in asks for, and the fixture.
#include "tests/messages/recents_screen.h"

#include <map>
#include <stdexcept>
#include <thread>

#include "desktop/dispatch/main_loop.h"
#include "desktop/substrate/substrate.h"
#include "desktop/substrate/trace.h"
#include "desktop/uikit/application.h"
#include "desktop/uikit/color.h"
#include "desktop/uikit/text.h"
#include "tests/plugin_image.h"

namespace recentsmessages {
namespace {

/// The host's Recents screen without rows of its own.
class Recents : public uikit::ViewController {
  public:
    using Super = uikit::ViewController;
    static constexpr objc::Name className{"PHRecentsViewController"};

    uikit::TableView* table() {
        if (!table_) view();
        return table_;
    }
    void loadView() override {
        table_ = objc::Ref<uikit::TableView>::make<"initWithFrame:">(uikit::Rect{{0, 0}, {320, 568}});
        setView(table_);
    }
    void viewDidLoad() override {}
    void setEditingAnimated(bool editing, bool animated) override {
        ViewController::setEditingAnimated(editing, animated);
        objc::send<"setEditing:animated:">(table()->object(), editing, animated);
    }
    long numberOfRows(objc::Object, long) { return 0; }
    void commit(objc::Object, long, objc::Object) {}
    void ask(objc::Object, objc::Object) {}
    objc::Object cell(objc::Object, objc::Object) { return {}; }
    void display(objc::Object, objc::Object, objc::Object) {}
    bool canEdit(objc::Object, objc::Object) { return true; }
    double height(objc::Object, objc::Object) { return 50; }
    void updateBar() {}

    static void define(objc::ClassDefinition<Recents>& definition) {
        definition.method<"table", &Recents::table>()
            .method<"loadView", &Recents::loadView>()
            .method<"viewDidLoad", &Recents::viewDidLoad>()
            .method<"setEditing:animated:", &Recents::setEditingAnimated>()
            .method<"tableView:numberOfRowsInSection:", &Recents::numberOfRows>()
            .method<"tableView:cellForRowAtIndexPath:", &Recents::cell>()
            .method<"tableView:willDisplayCell:forRowAtIndexPath:", &Recents::display>()
            .method<"tableView:canEditRowAtIndexPath:", &Recents::canEdit>()
            .method<"tableView:willBeginEditingRowAtIndexPath:", &Recents::ask>()
            .method<"tableView:didEndEditingRowAtIndexPath:", &Recents::ask>()
            .method<"tableView:commitEditingStyle:forRowAtIndexPath:", &Recents::commit>()
            .method<"tableView:heightForRowAtIndexPath:", &Recents::height>()
            .method<"_updateNavBarButtons", &Recents::updateBar>();
    }

  private:
    objc::Ref<uikit::TableView> table_;
};

/// The indicator: what it runs, it runs on a thread of its own, and the test waits for it.
class Indicator : public uikit::View {
  public:
    using Super = uikit::View;
    static constexpr objc::Name className{"MBProgressHUD"};
    static objc::Object showAddedTo(Class cls, uikit::View*, bool) {
        return objc::autorelease(objc::make<objc::Object>(cls));
    }
    void take(objc::Object) {}
    void setLabelText(objc::Object text) { log().add("indicator \"" + uikit::utf8(text) + "\""); }
    void setMode(int) {}
    void setOpacity(float) {}
    objc::Object delegate() { return {}; }
    void showWhileExecuting(SEL selector, objc::Object target, objc::Object, bool) {
        std::thread([&] {
            const dispatch::AutoreleaseScope scope;
            objc::sendSelector(target, selector);
        }).join();
    }
    void hide(bool) { log().add("indicator hidden"); }
    void hideLater(bool, double) { log().add("indicator hidden"); }
    static void define(objc::ClassDefinition<Indicator>& definition) {
        definition.classMethod<"showHUDAddedTo:animated:", &Indicator::showAddedTo>()
            .method<"setColor:", &Indicator::take>()
            .method<"setLabelColor:", &Indicator::take>()
            .method<"setDetailsLabelColor:", &Indicator::take>()
            .method<"setLabelText:", &Indicator::setLabelText>()
            .method<"setDetailsLabelText:", &Indicator::take>()
            .method<"setDelegate:", &Indicator::take>()
            .method<"delegate", &Indicator::delegate>()
            .method<"setMode:", &Indicator::setMode>()
            .method<"setOpacity:", &Indicator::setOpacity>()
            .method<"setActivityIndicatorTintColor:", &Indicator::take>()
            .method<"showWhileExecuting:onTarget:withObject:animated:", &Indicator::showWhileExecuting>()
            .method<"hide:", &Indicator::hide>()
            .method<"hide:afterDelay:", &Indicator::hideLater>();
    }
};

class CallCell : public uikit::TableViewCell {
  public:
    using Super = uikit::TableViewCell;
    static constexpr objc::Name className{"QVUITableViewCell"};
    void setCallEntry(objc::Object entry) { entry_ = objc::Strong<>(entry); }
    objc::Object callEntry() { return entry_; }
    void setFlag(bool) {}
    static void define(objc::ClassDefinition<CallCell>& definition) {
        definition.method<"setCallEntry:", &CallCell::setCallEntry>()
            .method<"callEntry", &CallCell::callEntry>()
            .method<"setShowGroupByDateCell:", &CallCell::setFlag>()
            .method<"setShowGroupCount:", &CallCell::setFlag>();
    }

  private:
    objc::Strong<> entry_;
};

class MoreCell : public uikit::TableViewCell {
  public:
    using Super = uikit::TableViewCell;
    static constexpr objc::Name className{"QVLoadMoreRecordsCell"};
    static void define(objc::ClassDefinition<MoreCell>&) {}
};

objc::Block<void()> destructive;
uikit::View* shownIn = nullptr;

class ActionSheet : public objc::PeerBase {
  public:
    using Super = objc::Foreign<"NSObject">;
    static constexpr objc::Name className{"BlockActionSheet"};
    objc::Object initWithTitle(objc::Object title) {
        log().add("sheet \"" + uikit::utf8(title) + "\"");
        return objc::Object{self};
    }
    void setDestructive(objc::Object title, const void* block) {
        log().add("destructive \"" + uikit::utf8(title) + "\"");
        destructive = objc::Block<void()>::copyOf(block);
    }
    void setCancel(objc::Object title, const void* block) {
        log().add("cancel \"" + uikit::utf8(title) + "\"" + (block ? " with a block" : ""));
    }
    void showInView(uikit::View* view) {
        shownIn = view;
        log().add(view ? "sheet shown" : "sheet shown nowhere");
    }
    void dismiss(long index, bool animated) {
        log().add("sheet dismissed " + std::to_string(index) + (animated ? " YES" : " NO"));
    }
    static void define(objc::ClassDefinition<ActionSheet>& definition) {
        definition.method<"initWithTitle:", &ActionSheet::initWithTitle>()
            .method<"setDestructiveButtonWithTitle:block:", &ActionSheet::setDestructive>()
            .method<"setCancelButtonWithTitle:block:", &ActionSheet::setCancel>()
            .method<"showInView:", &ActionSheet::showInView>()
            .method<"dismissWithClickedButtonIndex:animated:", &ActionSheet::dismiss>();
    }
};

objc::Object colorWithHex(Class, long hex) {
    return uikit::uiColor(uikit::Color::fromHex(static_cast<std::uint32_t>(hex)));
}
std::map<id, objc::Strong<>>& imageTints() {
    static std::map<id, objc::Strong<>> tints;
    return tints;
}
void tintImage(objc::Object button, objc::Object color) { imageTints()[button.self] = objc::Strong<>(color); }

void registerAll() {
    callcompanion::registerClasses();
    objc::registerClasses<Recents, Indicator, CallCell, MoreCell, ActionSheet>();
    registerDayBase();
    objc::addMethod<"colorWithHex:", &colorWithHex>(object_getClass(objc::raw(objc::classNamed<"UIColor">())));
    objc::addMethod<"setImageTintColor:", &tintImage>(objc::classNamed<"UIButton">());
    uikit::setHandsetRoot(HANDSET_ROOT);
    if (const auto error = substrate::loadPlugin(pluginImage())) throw std::runtime_error(*error);
    static const auto window = objc::Ref<uikit::Window>::make<"initWithFrame:">(uikit::Rect{{0, 0}, {320, 568}});
    uikit::Application::shared()->setKeyWindow(window);
}

bool isPlainQuestion(const std::string& message) {
    static const char* const questions[] = {"table]",
                                            "navigationItem]",
                                            "view]",
                                            "searchDisplayController]",
                                            "isEditing]",
                                            "navigationController]",
                                            "isViewLoaded]",
                                            "parentViewController]",
                                            "segmentControl:",
                                            "respondsToSelector:",
                                            "methodSignatureFor",
                                            "isKindOfClass:",
                                            "tableView:",
                                            "titleForHeader",
                                            "numberOfSections",
                                            "resolve"};
    for (const char* question : questions)
        if (message.find(question) != std::string::npos) return true;
    return false;
}

std::string textOf(objc::Object text) { return text ? uikit::utf8(text) : std::string(); }

}  // namespace

std::vector<Call> people(int count) {
    static std::vector<std::string> names;
    if (names.empty())
        for (int i = 0; i <= 200; ++i) names.push_back("Person " + std::to_string(1000 + i));
    std::vector<Call> calls;
    for (int i = 1; i <= count; ++i)
        calls.push_back({.id = i, .name = names[static_cast<std::size_t>(i)].c_str(), .number = "+4930"});
    return calls;
}

void RecentsMessages::SetUp() {
    callcompanion::startOver();
    static const bool once = (registerAll(), true);
    ASSERT_TRUE(once);
}

void RecentsMessages::TearDown() {
    substrate::trace::end();
    if (search() && search()->isActive()) search()->setActive(false);
    settle();
    companion().isGroupByDate = false;
}

void RecentsMessages::open() {
    screen_ = objc::make<objc::Object>(objc::classNamed<"PHRecentsViewController">());
    // The screen observes for the life of the process, as the host's does.
    static std::vector<objc::Strong<>> all;
    all.push_back(screen_);
    navigation_ = objc::Ref<uikit::NavigationController>::adopt(objc::make<objc::Object, "initWithRootViewController:">(
        objc::classNamed<"UINavigationController">(), screen_.get()));
    send<"view", objc::Object>();
    send<"_updateNavBarButtons">();
    settle();
    log().clear();
}

void RecentsMessages::settle() {
    constexpr double bound = 30;
    const double end = dispatch::steadyNow() + bound;
    for (;;) {
        const objc::AutoreleasePool pool;
        if (dispatch::drainMainQueue() > 0) continue;
        if (dispatch::idle()) return;
        ASSERT_LT(dispatch::steadyNow(), end) << "work goes on";
        dispatch::waitForWork(end);
    }
}

void RecentsMessages::trace(const std::vector<std::string>& classes) {
    const auto error = substrate::trace::begin(
        classes,
        [](const std::string& line) {
            if (isPlainQuestion(line)) return;
            const auto start = line.find(' ') + 1;
            log().add(line.substr(start, line.find(']') - start));
        },
        substrate::trace::Ownership::leftOut);
    ASSERT_FALSE(error) << *error;
}

void RecentsMessages::endTrace() { substrate::trace::end(); }

uikit::SearchDisplayController* RecentsMessages::search() const {
    return screen_ ? objc::peerIf<uikit::SearchDisplayController>(send<"searchDisplayController", objc::Object>())
                   : nullptr;
}
uikit::TableView* RecentsMessages::results() const {
    return objc::peerOf<uikit::TableView>(search()->searchResultsTableView());
}
uikit::NavigationItem* RecentsMessages::bar() const {
    return objc::peerOf<uikit::NavigationItem>(send<"navigationItem", objc::Object>());
}
std::string RecentsMessages::left() const {
    return bar()->leftBarButtonItem() ? bar()->leftBarButtonItem()->description() : "-";
}
std::string RecentsMessages::right() const {
    return bar()->rightBarButtonItem() ? bar()->rightBarButtonItem()->description() : "-";
}
uikit::Button* RecentsMessages::button(long tag) const {
    return objc::peerOf<uikit::Button>(search()->searchBar()->scopeArea()->viewWithTag(tag)->object());
}
uikit::SegmentedControl* RecentsMessages::segments() const {
    auto* title = bar()->titleView();
    return title ? objc::peerIf<uikit::SegmentedControl>(title->object()) : nullptr;
}

void RecentsMessages::type(const char* text) {
    search()->setActive(true);
    search()->searchBar()->type(text);
}

void RecentsMessages::pick(int segment) {
    segments()->setSelectedSegmentIndex(segment);
    send<"segmentAction:">(segments()->object());
}

void RecentsMessages::confirm() { destructive(); }
bool RecentsMessages::hasMadeSheets() { return static_cast<bool>(destructive); }

void RecentsMessages::swipe(long row) {
    const auto path = objc::sendClass<"NSIndexPath", "indexPathForRow:inSection:", objc::Object>(row, 0L);
    auto* shown = search() && search()->isActive() ? results() : table();
    constexpr long deleteStyle = 1;
    send<"tableView:commitEditingStyle:forRowAtIndexPath:">(shown->object(), deleteStyle, path);
}

uikit::View* RecentsMessages::viewOfSheet() { return shownIn; }
objc::Object RecentsMessages::imageTintOf(uikit::Button* button) {
    const auto known = imageTints().find(button->self);
    return known == imageTints().end() ? objc::Object{} : known->second.get();
}

std::vector<int> RecentsMessages::found() const {
    std::vector<int> ids;
    const long count = rows();
    for (long row = 0; row < count; ++row)
        if (const int id = shownAt(row)) ids.push_back(id);
    return ids;
}

std::string RecentsMessages::header() const {
    return textOf(send<"tableView:titleForHeaderInSection:", objc::Object>(table()->object(), 0L));
}
std::string RecentsMessages::footer() const {
    return textOf(send<"tableView:titleForFooterInSection:", objc::Object>(table()->object(), 0L));
}

int RecentsMessages::shownAt(long row) const {
    const objc::AutoreleasePool pool;
    const auto path = objc::sendClass<"NSIndexPath", "indexPathForRow:inSection:", objc::Object>(row, 0L);
    // The load-more row would begin to load: its answer to whether it can be swiped tells it.
    if (!send<"tableView:canEditRowAtIndexPath:", bool>(table()->object(), path)) return 0;
    const auto cell = send<"tableView:cellForRowAtIndexPath:", objc::Object>(table()->object(), path);
    return objc::as<QVCallEntry>(objc::send<"callEntry", objc::Object>(cell)).ROWID();
}

}  // namespace recentsmessages
