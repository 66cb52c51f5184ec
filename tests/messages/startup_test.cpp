// Start-up, the notification handlers and the application delegate's part.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "desktop/dispatch/main_loop.h"
#include "desktop/notify/notify.h"
#include "desktop/uikit/activity_indicator.h"
#include "tests/messages/stand_ins.h"

namespace {

using standins::companion;
using standins::events;
using testing::ElementsAre;

class Startup : public testing::Test {
  protected:
    void SetUp() override {
        standins::prepare();
        while (notify::pending()) notify::deliverPending();
        events().clear();
    }
    /// Posts the name as another process does, and delivers it.
    static void deliver(const char* name) {
        ASSERT_FALSE(notify::post(name).has_value());
        while (notify::pending()) notify::deliverPending();
    }
    objc::AutoreleasePool pool_;
};

TEST_F(Startup, aSettingsNameReloadsSettingsAndMarksDataAndSettingsStaleInThatOrder) {
    for (const char* name : {"QuorvelReloadSettingsReplaceRecents", "QuorvelAlertSettingsChanged"}) {
        events().clear();
        deliver(name);
        EXPECT_THAT(events(), ElementsAre("reloadSettings", "setIsNeedToLoadData:", "setIsCallSettingsChanged:"))
            << name;
        EXPECT_TRUE(companion().needToLoadData);
        EXPECT_TRUE(companion().settingsChanged);
    }
}

TEST_F(Startup, aDataOrStaleNameMarksTheDataStaleAndNothingElseWhileNoScreenHasLoaded) {
    for (const char* name : {"QuorvelRestoreDatabaseNotification", "QuorvelCallRecordDeletedNotification",
                             "QuorvelAllCallsCleared", "QuorvelRefreshTableAndLoadCalls", "QuorvelRefreshCallTable",
                             "__ABDataBaseChangedByOtherProcessNotification"}) {
        events().clear();
        companion().needToLoadData = false;
        deliver(name);
        EXPECT_THAT(events(), ElementsAre("setIsNeedToLoadData:")) << name;
        EXPECT_TRUE(companion().needToLoadData) << name;
        EXPECT_FALSE(companion().settingsChanged) << name;
    }
}

TEST_F(Startup, namesAreHeldWhileSuspendedExceptTheTwoThatAreDeliveredImmediately) {
    struct Case {
        const char* name;
        bool immediately;
    };
    constexpr Case cases[] = {{"QuorvelReloadSettingsReplaceRecents", false},
                              {"QuorvelAlertSettingsChanged", false},
                              {"QuorvelRestoreDatabaseNotification", false},
                              {"QuorvelCallRecordDeletedNotification", true},
                              {"QuorvelAllCallsCleared", false},
                              {"QuorvelRefreshTableAndLoadCalls", false},
                              {"QuorvelRefreshCallTable", false},
                              {"__ABDataBaseChangedByOtherProcessNotification", true}};
    for (const auto& each : cases) {
        companion().needToLoadData = false;
        notify::suspend();
        deliver(each.name);
        EXPECT_EQ(companion().needToLoadData, each.immediately) << each.name;
        notify::resume();
        while (notify::pending()) notify::deliverPending();
        EXPECT_TRUE(companion().needToLoadData) << each.name;
    }
}

TEST_F(Startup, anUnknownNameDoesNothing) {
    deliver("QuorvelSomethingElse");
    EXPECT_THAT(events(), ElementsAre());
}

class Deletions : public Startup {};

TEST_F(Deletions, areNotAnnouncedWhileNothingWasDeletedWhateverTheCount) {
    companion().allCallsCount = 0;
    objc::send<"handleChanges">(standins::makeApplication().get());
    EXPECT_FALSE(notify::pending());
}

TEST_F(Deletions, areNotAnnouncedWithReplaceRecentsOff) {
    companion().replaceRecentsOn = false;
    companion().anyRecordDeleted = true;
    objc::send<"handleChanges">(standins::makeApplication().get());
    EXPECT_FALSE(notify::pending());
}

TEST_F(Deletions, areAnnouncedToThisProcessTooAndKeepTheirFlag) {
    companion().anyRecordDeleted = true;
    objc::send<"handleChanges">(standins::makeApplication().get());
    while (notify::pending()) notify::deliverPending();
    EXPECT_THAT(events(), ElementsAre("setIsNeedToLoadData:"));
    EXPECT_TRUE(companion().anyRecordDeleted);
}

TEST_F(Deletions, ofTheLastCallAnnounceTheEmptyLogBesides) {
    companion().anyRecordDeleted = true;
    companion().allCallsCount = 0;
    objc::send<"handleChanges">(standins::makeApplication().get());
    while (notify::pending()) notify::deliverPending();
    // One for "QuorvelAllCallsCleared", one for "QuorvelCallRecordDeletedNotification".
    EXPECT_THAT(events(), ElementsAre("setIsNeedToLoadData:", "setIsNeedToLoadData:"));
}

class ApplicationDelegate : public Startup {};

TEST_F(ApplicationDelegate, goesToTheBackgroundAsTheHostDoesAndThenAnnouncesDeletions) {
    companion().anyRecordDeleted = true;
    objc::send<"applicationDidEnterBackground:">(standins::makeApplication().get(), objc::Object{});
    EXPECT_THAT(events(), ElementsAre("host applicationDidEnterBackground:"));
    EXPECT_TRUE(notify::pending());
}

TEST_F(ApplicationDelegate, goesToTheBackgroundAsTheHostDoesAloneWithReplaceRecentsOff) {
    companion() = {.replaceRecentsOn = false, .anyRecordDeleted = true};
    objc::send<"applicationDidEnterBackground:">(standins::makeApplication().get(), objc::Object{});
    EXPECT_THAT(events(), ElementsAre("host applicationDidEnterBackground:"));
    EXPECT_FALSE(notify::pending());
}

TEST_F(ApplicationDelegate, givesActivityIndicatorsTheProductsColourAfterTheHostHasLaunched) {
    objc::send<"applicationDidFinishLaunching:">(standins::makeApplication().get(), objc::Object{});
    EXPECT_THAT(events(), ElementsAre("host applicationDidFinishLaunching:", "colorWithHex:214111"));
}

TEST_F(ApplicationDelegate, leavesActivityIndicatorsAloneWithReplaceRecentsOff) {
    companion().replaceRecentsOn = false;
    objc::send<"applicationDidFinishLaunching:">(standins::makeApplication().get(), objc::Object{});
    EXPECT_THAT(events(), ElementsAre("host applicationDidFinishLaunching:"));
}

}  // namespace
