// What the application delegate announces to other processes: which names, in which order, with which arguments.
#include <dlfcn.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "desktop/notify/notify.h"
#include "desktop/uikit/text.h"
#include "platform/corefoundation.h"
#include "tests/messages/stand_ins.h"

namespace {

std::vector<std::string> posted;
/// Run before each post.
std::function<void()> beforePosting;

}  // namespace

/// In place of the library's, for this whole process: writes down what is posted and posts it.
void CFNotificationCenterPostNotification(void* center, const void* name, const void* object, const void* userInfo,
                                          unsigned char deliverImmediately) {
    if (beforePosting) beforePosting();
    const bool isPlain = center == CFNotificationCenterGetDarwinNotifyCenter() && !object && !userInfo;
    posted.push_back(uikit::utf8(objc::Object{static_cast<id>(const_cast<void*>(name))}) +
                     (isPlain && deliverImmediately == 1 ? "" : " with other arguments"));
    static const auto original = reinterpret_cast<decltype(&CFNotificationCenterPostNotification)>(
        dlsym(RTLD_NEXT, "CFNotificationCenterPostNotification"));
    original(center, name, object, userInfo, deliverImmediately);
}

namespace {

using standins::companion;
using testing::ElementsAre;
using testing::IsEmpty;

class Announcements : public testing::Test {
  protected:
    void SetUp() override {
        standins::prepare();
        posted.clear();
    }
    void TearDown() override {
        beforePosting = nullptr;
        while (notify::pending()) notify::deliverPending();
    }
    static void handleChanges() { objc::send<"handleChanges">(standins::makeApplication().get()); }

    objc::AutoreleasePool pool_;
};

TEST_F(Announcements, ofADeletionAreOneName) {
    companion() = {.anyRecordDeleted = true, .allCallsCount = 1};
    handleChanges();
    EXPECT_THAT(posted, ElementsAre("QuorvelCallRecordDeletedNotification"));
}

TEST_F(Announcements, ofTheLastCallsDeletionBeginWithTheEmptyLog) {
    for (const std::int64_t none : {0, -1}) {
        posted.clear();
        companion() = {.anyRecordDeleted = true, .allCallsCount = none};
        handleChanges();
        EXPECT_THAT(posted, ElementsAre("QuorvelAllCallsCleared", "QuorvelCallRecordDeletedNotification")) << none;
    }
}

TEST_F(Announcements, withReplaceRecentsOffAtTheSecondReadingSayThatTheTableIsStaleOnPurpose) {
    companion() = {.anyRecordDeleted = true, .allCallsCount = 0};
    beforePosting = [] { companion().replaceRecentsOn = false; };
    handleChanges();
    EXPECT_THAT(posted, ElementsAre("QuorvelAllCallsCleared", "QuorvelRefreshCallTable"));
}

TEST_F(Announcements, areNoneWithoutADeletionOrWithReplaceRecentsOff) {
    companion() = {.anyRecordDeleted = false, .allCallsCount = 0};
    handleChanges();
    companion() = {.replaceRecentsOn = false, .anyRecordDeleted = true, .allCallsCount = 0};
    handleChanges();
    EXPECT_THAT(posted, IsEmpty());
}

}  // namespace
