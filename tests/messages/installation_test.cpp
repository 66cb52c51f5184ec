// What installed methods do, on and off. Which they are is held by tests/screens/installation_table_test.cpp.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/messages/stand_ins.h"

namespace {

using standins::companion;
using standins::events;
using testing::ElementsAre;

class Installation : public testing::Test {
  protected:
    void SetUp() override { standins::prepare(); }
    objc::AutoreleasePool pool_;
};

TEST_F(Installation, registersTheTitleMethodsAsIfTheyAnsweredNothingOnPurpose) {
    auto* method = class_getInstanceMethod(objc::classNamed<"PHRecentsViewController">(),
                                           objc::selector<"tableView:titleForFooterInSection:">());
    EXPECT_STREQ(method_getTypeEncoding(method), "v@:i@");
}

TEST_F(Installation, leavesTheSuperclassesMethodsAlone) {
    // The screen inherits viewDidLoad; replacing it there must not reach every other screen.
    auto plain = objc::make<UIViewController>(objc::classNamed<"UIViewController">());
    objc::send<"viewDidLoad">(plain.get());
    EXPECT_THAT(events(), ElementsAre());
}

class ReplaceRecentsOff : public Installation {
  protected:
    void SetUp() override {
        Installation::SetUp();
        companion().replaceRecentsOn = false;
    }
};

TEST_F(ReplaceRecentsOff, everyTableMethodAnswersWhatTheHostAnswers) {
    auto screen = standins::makeRecentsScreen();
    const objc::Object nothing;
    auto path = objc::Object{text<"path">().self};
    EXPECT_EQ((objc::send<"tableView:numberOfRowsInSection:", long>(screen.get(), nothing, 3L)), 73);
    EXPECT_EQ((objc::send<"tableView:cellForRowAtIndexPath:", objc::Object>(screen.get(), nothing, path)), path);
    EXPECT_TRUE((objc::send<"tableView:canEditRowAtIndexPath:", bool>(screen.get(), nothing, path)));
    EXPECT_EQ((objc::send<"tableView:heightForRowAtIndexPath:", double>(screen.get(), nothing, path)), 61.5);
    objc::send<"tableView:willDisplayCell:forRowAtIndexPath:">(screen.get(), nothing, nothing, path);
    objc::send<"tableView:willBeginEditingRowAtIndexPath:">(screen.get(), nothing, path);
    objc::send<"tableView:didEndEditingRowAtIndexPath:">(screen.get(), nothing, path);
    objc::send<"tableView:commitEditingStyle:forRowAtIndexPath:">(screen.get(), nothing, 1L, path);
    objc::send<"_updateNavBarButtons">(screen.get());
    EXPECT_THAT(events(), ElementsAre("host willDisplay", "host willBeginEditing", "host didEndEditing",
                                      "host commit 1", "host _updateNavBarButtons"));
}

TEST_F(ReplaceRecentsOff, thereAreNoTitles) {
    auto screen = standins::makeRecentsScreen();
    EXPECT_FALSE((objc::send<"tableView:titleForHeaderInSection:", objc::Object>(screen.get(), objc::Object{}, 0L)));
    EXPECT_FALSE((objc::send<"tableView:titleForFooterInSection:", objc::Object>(screen.get(), objc::Object{}, 0L)));
}

TEST_F(Installation, keepsTheHostsDecorationAwayFromItsCellsWhileOn) {
    objc::send<"tableView:willDisplayCell:forRowAtIndexPath:">(standins::makeRecentsScreen().get(), objc::Object{},
                                                               objc::Object{}, objc::Object{});
    EXPECT_THAT(events(), ElementsAre());
}

TEST_F(Installation, readsTheSettingAtEveryCall) {
    auto screen = standins::makeRecentsScreen();
    EXPECT_EQ((objc::send<"tableView:numberOfRowsInSection:", long>(screen.get(), objc::Object{}, 0L)), 0);
    companion().replaceRecentsOn = false;
    EXPECT_EQ((objc::send<"tableView:numberOfRowsInSection:", long>(screen.get(), objc::Object{}, 0L)), 70);
}

TEST_F(Installation, putsTheTrashButtonThereInPlaceOfTheHostsOwnAndOnlyOnce) {
    auto screen = standins::makeRecentsScreen();
    objc::send<"_updateNavBarButtons">(screen.get());
    auto item = screen->navigationItem();
    auto first = objc::send<"rightBarButtonItem", objc::Object>(item);
    EXPECT_TRUE(first);
    objc::send<"setRightBarButtonItem:">(item, objc::Object{});
    objc::send<"_updateNavBarButtons">(screen.get());
    EXPECT_FALSE((objc::send<"rightBarButtonItem", objc::Object>(item)));
    EXPECT_THAT(events(), ElementsAre());
}

}  // namespace
