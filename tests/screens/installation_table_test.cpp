// The whole installation table, row by row and in order, against what an image of the plug-in asks of the runtime and
// the substrate when it is loaded, and against the host's classes as the runtime shows them afterwards. The environment
// variable QUORVEL_TEST_PLUGIN names another image than the built one.
#include <dlfcn.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <map>
#include <memory>
#include <span>
#include <stdexcept>
#include <string>
#include <vector>

#include "desktop/phone/phone_application.h"
#include "desktop/phone/recents_screen.h"
#include "desktop/substrate/substrate.h"
#include "tests/plugin_image.h"

namespace {

enum Kind { added, replaced };
std::ostream& operator<<(std::ostream& out, Kind kind) { return out << (kind == added ? "added" : "replaced"); }

struct Row {
    Kind kind;
    const char* selector;
    const char* types;  ///< The product's own form, letter for letter; null where the host's stays.
};

constexpr Row application[] = {
    {added, "handleChanges", "v@"},
    {replaced, "applicationDidEnterBackground:", nullptr},
    {replaced, "applicationDidFinishLaunching:", nullptr},
};

// The two title methods answer a text although their type strings begin with "v".
constexpr Row recents[] = {
    {added, "showHUD:detailText:delegate:mode:selector:withObject:", "v@:@@:@@:@@:@i:@@:@@"},
    {added, "showHUD:detailText:delegate:mode:selector:", "v@:@@:@@:@@:@i:@@"},
    {added, "showHUD:detailText:delegate:mode:", "v@:@@:@@:@@:@i"},
    {added, "showHUD:detailText:delegate:", "v@:@@:@@:@@"},
    {added, "showHUD:detailText:", "v@:@@:@@"},
    {added, "showHUD:", "v@:@@"},
    {added, "showHUD", "v@"},
    {added, "updateHUD:", "v@:@@"},
    {added, "hideHUD:afterDelay:", "v@:@i"},
    {added, "hideHUD:", "v@:@i"},
    {added, "hideHUD", "v@"},
    {added, "hudWasHidden:", "v@:@@"},
    {added, "preferredStatusBarStyle", "i@"},
    {added, "segmentControl:", "@@:@@"},
    {added, "prepareSearchBarScopeTitlesAndTintColor", "v@"},
    {added, "loadCallRecordsFromDB:", "v@:@@"},
    {added, "initDatabase", "v@"},
    {added, "searchTableView", "v@"},
    {added, "initializeCallList", "v@"},
    {added, "loadCallRecsFromDBInBackGround", "v@"},
    {added, "loadCallRecsFromDB", "v@"},
    {added, "refreshTableData", "v@"},
    {added, "handleSegmentControler", "v@"},
    {added, "handleEnableDisableSearchAction:", "v@:@i"},
    {replaced, "viewDidAppear:", nullptr},
    {replaced, "viewDidLoad", nullptr},
    {replaced, "_updateNavBarButtons", nullptr},
    {added, "handleApplicationDidEnterBackground:", "v@:@@"},
    {added, "newCallRecordAdded:", "v@:@@"},
    {added, "viewAppearedAction", "v@"},
    {added, "handleReloadDataAction", "v@"},
    {added, "updateNavigationBarButtonItems:groupEdit:", "v@:@i:@i"},
    {added, "editButtonClicked:", "v@:@@"},
    {added, "handleDeleteAllAction", "v@"},
    {added, "deleteAllAction:", "v@:@@"},
    {added, "getDeleteAllButtonText", "@@"},
    {added, "removeCallsFromCallList:", "v@:@@"},
    {added, "removeSearchedRecords", "v@"},
    {added, "removeSearchedRecordsInBackGround", "v@"},
    {added, "removeAllRecordsInBackGround", "v@"},
    {added, "removeAllRecords", "v@"},
    {added, "removeRowData:indexPath:", "v@:@@:@@"},
    {added, "removeSearchRecordFromList:sourceList:", "v@:@@:@@"},
    {added, "updateSearchRecords:", "v@:@@"},
    {added, "clearCallLists", "v@"},
    {added, "updateDateEntry", "v@"},
    {added, "segMentBackGroundAction:", "v@:@@"},
    {added, "segmentAction:", "v@:@@"},
    {added, "loadMoreSearchedRecords", "v@"},
    {added, "loadMoreRecordsAction", "v@"},
    {added, "getCallsDuration:", "i@:@@"},
    {added, "handleLoadMoreRecordsAction:", "v@:@@"},
    {added, "searchDisplayController:shouldReloadTableForSearchString:", "i@:@@:@@"},
    {added, "searchDisplayController:shouldReloadTableForSearchScope:", "i@:@@:@@"},
    {added, "searchDisplayControllerWillBeginSearch:", "v@:@@"},
    {added, "searchDisplayControllerWillEndSearch:", "v@:@@"},
    {added, "searchDisplayControllerDidEndSearch:", "v@:@@"},
    {replaced, "tableView:numberOfRowsInSection:", nullptr},
    {replaced, "tableView:cellForRowAtIndexPath:", nullptr},
    {replaced, "tableView:willDisplayCell:forRowAtIndexPath:", nullptr},
    {replaced, "tableView:canEditRowAtIndexPath:", nullptr},
    {replaced, "tableView:willBeginEditingRowAtIndexPath:", nullptr},
    {replaced, "tableView:didEndEditingRowAtIndexPath:", nullptr},
    {replaced, "tableView:commitEditingStyle:forRowAtIndexPath:", nullptr},
    {replaced, "tableView:didSelectRowAtIndexPath:", nullptr},
    {replaced, "tableView:accessoryButtonTappedForRowWithIndexPath:", nullptr},
    {replaced, "tableView:heightForRowAtIndexPath:", nullptr},
    {added, "tableView:titleForHeaderInSection:", "v@:i@"},
    {added, "tableView:titleForFooterInSection:", "v@:i@"},
    {replaced, "callAtTableViewIndex:", nullptr},
    {added, "scrollViewDidEndDecelerating:", "v@:@@"},
    {added, "handleTableRowSelection:", "v@:@@"},
    {added, "callListForSelectedCall:", "v@:@@"},
    {added, "handleDidSelectRowAtIndexAction:", "v@:@@"},
    {added, "showLogAction:", "v@:@@"},
    {added, "detailsButotnClicked", "v@"},
    {added, "personViewController:shouldPerformDefaultActionForPerson:property:identifier:", "i@:@@:@@:i@:i@"},
    {added, "unknownPersonViewController:didResolveToPerson:", "v@:@@:@@"},
    {added, "updateCallEntry:", "v@:@@"},
    {added, "saveNewContactAndPresentABPersonViewController", "v@"},
    {added, "entryDeleted:", "v@:@@"},
};

static_assert(std::size(application) == 3);
static_assert(std::size(recents) == 81);

/// What was asked for while the image was loaded.
struct Request {
    Kind kind;
    std::string selector;
    std::string types;
    IMP implementation;
};
std::map<std::string, std::vector<Request>> requests;
bool isListening = false;

void note(Class cls, Request request) {
    if (isListening && cls) requests[class_getName(cls)].push_back(std::move(request));
}

template <class Function>
Function nextOf(const char* name) {
    return reinterpret_cast<Function>(dlsym(RTLD_NEXT, name));
}

}  // namespace

// These two stand before the libraries', for an image of either form.
extern "C" {
BOOL class_addMethod(Class cls, SEL selector, IMP implementation, const char* types) {
    note(cls, {added, sel_getName(selector), types ? types : "", implementation});
    return nextOf<BOOL (*)(Class, SEL, IMP, const char*)>("class_addMethod")(cls, selector, implementation, types);
}

void MSHookMessageEx(Class cls, SEL selector, IMP replacement, IMP* previous) {
    note(cls, {replaced, sel_getName(selector), "", replacement});
    const bool wasListening = std::exchange(isListening, false);
    nextOf<void (*)(Class, SEL, IMP, IMP*)>("MSHookMessageEx")(cls, selector, replacement, previous);
    isListening = wasListening;
}
}

namespace {

struct Shown {
    IMP implementation = nullptr;
    std::string types;
};

/// The methods that the class itself has.
std::map<std::string, Shown> methodsOf(Class cls) {
    unsigned count = 0;
    const std::unique_ptr<Method, decltype(&std::free)> methods(class_copyMethodList(cls, &count), &std::free);
    std::map<std::string, Shown> shown;
    for (unsigned i = 0; i < count; ++i) {
        const Method method = methods.get()[i];
        shown[sel_getName(method_getName(method))] = {method_getImplementation(method), method_getTypeEncoding(method)};
    }
    return shown;
}

struct Table {
    const char* className;
    std::span<const Row> rows;
};

class InstallationTable : public testing::TestWithParam<Table> {
  protected:
    /// Loads the image once, among the host's own classes, and keeps what they were before.
    static void SetUpTestSuite() {
        if (!before().empty()) return;
        static const objc::AutoreleasePool pool;
        objc::registerClasses<phone::PhoneApplication, phone::RecentsScreen>();
        for (const char* name : {"PhoneApplication", "PHRecentsViewController"})
            before()[name] = methodsOf(classNamed(name));
        isListening = true;
        const auto trouble = substrate::loadPlugin(pluginImage());
        isListening = false;
        if (trouble) throw std::runtime_error(*trouble);
    }
    static Class classNamed(const char* name) { return reinterpret_cast<Class>(objc_getClass(name)); }
    static std::map<std::string, std::map<std::string, Shown>>& before() {
        static std::map<std::string, std::map<std::string, Shown>> methods;
        return methods;
    }
};

TEST_P(InstallationTable, isAskedForRowByRowInItsOrder) {
    const auto& asked = requests[GetParam().className];
    const auto rows = GetParam().rows;
    ASSERT_EQ(asked.size(), rows.size());
    for (std::size_t i = 0; i < rows.size(); ++i) {
        SCOPED_TRACE(i + 1);
        EXPECT_EQ(asked[i].selector, rows[i].selector);
        EXPECT_EQ(asked[i].kind, rows[i].kind) << rows[i].selector;
        EXPECT_EQ(asked[i].types, rows[i].types ? rows[i].types : "") << rows[i].selector;
    }
}

TEST_P(InstallationTable, isWhatTheRuntimeShows) {
    const auto shown = methodsOf(classNamed(GetParam().className));
    const auto& hosts = before()[GetParam().className];
    const auto& asked = requests[GetParam().className];
    ASSERT_EQ(asked.size(), GetParam().rows.size());
    for (std::size_t i = 0; i < asked.size(); ++i) {
        const Row& row = GetParam().rows[i];
        SCOPED_TRACE(row.selector);
        ASSERT_TRUE(shown.contains(row.selector));
        const Shown& method = shown.at(row.selector);
        EXPECT_EQ(method.implementation, asked[i].implementation);
        // A replaced method is the host's own here, and keeps the host's type string.
        EXPECT_EQ(hosts.contains(row.selector), row.kind == replaced);
        EXPECT_EQ(method.types, row.kind == added ? row.types : hosts.at(row.selector).types);
    }
}

TEST_P(InstallationTable, leavesEveryOtherMethodOfTheHostAsItWas) {
    auto shown = methodsOf(classNamed(GetParam().className));
    for (const Row& row : GetParam().rows) shown.erase(row.selector);
    for (const auto& [selector, method] : before()[GetParam().className]) {
        if (!shown.contains(selector)) continue;
        EXPECT_EQ(shown.at(selector).implementation, method.implementation) << selector;
        shown.erase(selector);
    }
    EXPECT_TRUE(shown.empty()) << shown.begin()->first << " is in no row";
}

INSTANTIATE_TEST_SUITE_P(Of, InstallationTable,
                         testing::Values(Table{"PhoneApplication", application},
                                         Table{"PHRecentsViewController", recents}),
                         [](const auto& each) { return std::string(each.param.className); });

}  // namespace
