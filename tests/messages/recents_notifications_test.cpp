// Which Recents screen the system-wide notifications reach, and what a screen is whose view loaded before the product
// was switched on.
#include "desktop/notify/notify.h"
#include "desktop/substrate/trace.h"
#include "tests/messages/recents_screen.h"

namespace recentsmessages {
namespace {

/// Screens of classes of their own, so that the trace tells them apart.
class RecentsNotifications : public RecentsMessages {
  protected:
    /// A loaded screen of a class below the host's. Lives as long as the process, since it observes for so long.
    static objc::Object load(const char* className) {
        const auto parent = objc_getClass("PHRecentsViewController");
        auto cls = objc_getClass(className);
        if (!cls) {
            cls = objc_allocateClassPair(static_cast<Class>(parent), className, 0);
            objc_registerClassPair(static_cast<Class>(cls));
        }
        static std::vector<objc::Strong<>> all;
        all.push_back(objc::make<objc::Object>(static_cast<Class>(cls)));
        objc::send<"view", objc::Object>(all.back().get());
        settle();
        return all.back();
    }

    /// The screens that receive the message while the work is done, by their class.
    template <class Work>
    static std::vector<std::string> receivers(const std::string& selector, const Work& work) {
        while (notify::pending()) notify::deliverPending();
        settle();
        std::vector<std::string> screens;
        std::mutex mutex;
        const auto error = substrate::trace::begin({"PHRecentsViewController"}, [&](const std::string& line) {
            const auto start = line.find(' ');
            const std::lock_guard lock(mutex);
            if (line.compare(start + 1, selector.size(), selector) == 0) screens.push_back(line.substr(2, start - 2));
        });
        EXPECT_FALSE(error.has_value()) << *error;
        work();
        settle();
        substrate::trace::end();
        return screens;
    }
    /// The screens that react to the system-wide name.
    static std::vector<std::string> reached(const char* name) {
        return receivers("viewAppearedAction", [&] {
            EXPECT_FALSE(notify::post(name).has_value());
            while (notify::pending()) notify::deliverPending();
        });
    }
};

TEST_F(RecentsNotifications, reachTheScreenWhoseViewLoadedLast) {
    companion().setRows(1, people(3));
    load("EarlierRecents");
    load("LaterRecents");
    EXPECT_THAT(reached("QuorvelRestoreDatabaseNotification"), ElementsAre("LaterRecents"));
    EXPECT_THAT(reached("QuorvelCallRecordDeletedNotification"), ElementsAre("LaterRecents"));
    EXPECT_THAT(reached("QuorvelRefreshCallTable"), IsEmpty());
}

TEST_F(RecentsNotifications, doNotReachAScreenThatLoadedWhileReplaceRecentsWasOff) {
    companion().setRows(1, people(3));
    companion().isReplaceRecentsOn = false;
    load("HostsOwnRecents");
    EXPECT_THAT(reached("QuorvelRestoreDatabaseNotification"), Not(Contains("HostsOwnRecents")));
}

TEST_F(RecentsNotifications, reloadAKeptScreenThoughReplaceRecentsWentOffOnPurpose) {
    companion().setRows(1, people(3));
    load("KeptRecents");
    companion().isReplaceRecentsOn = false;
    EXPECT_THAT(reached("QuorvelCallRecordDeletedNotification"), ElementsAre("KeptRecents"));
    EXPECT_FALSE(companion().isNeedToLoadData);
}

TEST_F(RecentsNotifications, ofANewCallReachScreensThatLoadedWhileReplaceRecentsWasOn) {
    companion().setRows(1, people(3));
    companion().isReplaceRecentsOn = false;
    load("DeafRecents");
    companion().isReplaceRecentsOn = true;
    load("ListeningRecents");
    const auto told = receivers("newCallRecordAdded:", [] {
        const auto center = objc::sendClass<"NSNotificationCenter", "defaultCenter", objc::Object>();
        objc::send<"postNotificationName:object:">(center, text<"com.velmarin.QuorvelNewRecordAddedNotification">(),
                                                   objc::Object{});
    });
    EXPECT_THAT(told, AllOf(Contains("ListeningRecents"), Not(Contains("DeafRecents"))));
}

/// The set-up of a view happens when it loads, the setting is read at every call: in between both are true.
TEST_F(RecentsNotifications, aScreenSwitchedOnAfterItLoadedAnswersThePluginsWayWithoutItsSetUpOnPurpose) {
    // The filter is that of the segments of whichever screen loaded before.
    for (const int filter : {1, 2, 3, 4}) companion().setRows(filter, people(3));
    companion().isReplaceRecentsOn = false;
    open();
    EXPECT_EQ(rows(), 0) << "the host has none";
    companion().isReplaceRecentsOn = true;
    EXPECT_EQ(search(), nullptr);
    EXPECT_EQ(segments(), nullptr);
    companion().isNeedToLoadData = true;
    send<"viewDidAppear:">(false);
    settle();
    EXPECT_EQ(rows(), 3);
    EXPECT_EQ(segments(), nullptr);
    EXPECT_THAT(found(), ElementsAre(1, 2, 3)) << "cells are registered when the first one is asked for";
}

TEST_F(RecentsNotifications, aScreenSwitchedOnAfterItLoadedShowsItsLoadMoreRowAndItsCellsAgainAfterOffAndOn) {
    for (const int filter : {1, 2, 3, 4}) companion().setRows(filter, people(60));
    companion().isReplaceRecentsOn = false;
    open();
    for (int round = 0; round < 2; ++round) {
        companion().isReplaceRecentsOn = true;
        companion().isNeedToLoadData = true;
        send<"viewDidAppear:">(false);
        settle();
        EXPECT_EQ(rows(), 51);
        EXPECT_EQ(shownAt(0), 1);
        const auto path = objc::sendClass<"NSIndexPath", "indexPathForRow:inSection:", objc::Object>(50L, 0L);
        EXPECT_TRUE((send<"tableView:cellForRowAtIndexPath:", objc::Object>(table()->object(), path)));
        settle();
        EXPECT_EQ(rows(), 60);
        companion().isReplaceRecentsOn = false;
        send<"viewDidAppear:">(false);
        settle();
        EXPECT_EQ(rows(), 0) << "the host's";
    }
}

TEST_F(RecentsNotifications, cellsAreRegisteredWithEachTableOnce) {
    companion().setRows(1, people(3));
    companion().isReplaceRecentsOn = false;
    open();
    companion().isReplaceRecentsOn = true;
    companion().isNeedToLoadData = true;
    send<"viewAppearedAction">();
    settle();
    const auto results = objc::Ref<uikit::TableView>::make<"initWithFrame:">(uikit::Rect{{0, 0}, {320, 568}});
    int registrations = 0;
    const auto error = substrate::trace::begin({"UITableView"}, [&](const std::string& line) {
        registrations += line.find("registerClass:forCellReuseIdentifier:") != std::string::npos ? 1 : 0;
    });
    ASSERT_FALSE(error) << *error;
    const auto path = objc::sendClass<"NSIndexPath", "indexPathForRow:inSection:", objc::Object>(0L, 0L);
    for (int round = 0; round < 2; ++round)
        for (auto* each : {table(), results.get()})
            EXPECT_TRUE((send<"tableView:cellForRowAtIndexPath:", objc::Object>(each->object(), path)));
    EXPECT_EQ(registrations, 4) << "two kinds of cells, two tables";
}

}  // namespace
}  // namespace recentsmessages
