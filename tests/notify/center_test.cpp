// The centre through its C interface: observers, suspension behaviours, and the main loop's part.
#include <algorithm>
#include <string>
#include <thread>
#include <vector>

#include "desktop/notify/notification_center.h"
#include "desktop/notify/notify.h"
#include "objc/strong.h"
#include "tests/notify/support.h"

namespace notify_tests {
namespace {

using Events = std::vector<std::string>;

constexpr long drop = 1;
constexpr long coalesce = 2;
constexpr long hold = 3;
constexpr long deliverImmediately = 4;

objc::Strong<> string(const char* text) {
    return objc::Strong<>::adopt(
        objc::send<"initWithUTF8String:", objc::Object>(objc::sendClass<"NSString", "alloc", objc::Object>(), text));
}
std::string textOf(const void* name) {
    return objc::send<"UTF8String", const char*>(static_cast<id>(const_cast<void*>(name)));
}

void* center() { return CFNotificationCenterGetDarwinNotifyCenter(); }

/// A process with an open rendezvous, and an observer that writes down what it hears.
class TheCenter : public testing::Test {
  public:
    void SetUp() override {
        const auto failure = notify::openRendezvous(directory_ / "notifications");
        ASSERT_FALSE(failure) << failure->text;
    }
    void TearDown() override {
        CFNotificationCenterRemoveEveryObserver(center(), this);
        notify::resume();
        notify::deliverPending();
        notify::closeRendezvous();
        objc::send<"drain">(pool_);
    }

    void observe(const char* name, long behaviour = hold) {
        CFNotificationCenterAddObserver(center(), this, write, string(name).self(), nullptr, behaviour);
    }
    static void write(void* fromCenter, void* observer, const void* name, const void* object, const void* userInfo) {
        EXPECT_EQ(fromCenter, center());
        EXPECT_EQ(object, nullptr);
        EXPECT_EQ(userInfo, nullptr);
        static_cast<TheCenter*>(observer)->heard_.push_back(textOf(name));
    }
    void post(const char* name) {
        CFNotificationCenterPostNotification(center(), string(name).self(), nullptr, nullptr, 1);
    }
    Events delivered() {
        heard_.clear();
        notify::deliverPending();
        return heard_;
    }

    objc::Object pool_ = objc::sendClass<"NSAutoreleasePool", "new", objc::Object>();
    Directory directory_;
    Events heard_;
};

TEST_F(TheCenter, ownPostsArriveByTheMainLoopAndNotBefore) {
    observe("A");
    EXPECT_FALSE(notify::pending());
    EXPECT_FALSE(readable(notify::descriptor()));
    post("A");
    EXPECT_EQ(heard_, Events());
    EXPECT_TRUE(readable(notify::descriptor()));
    EXPECT_TRUE(notify::pending());
    EXPECT_TRUE(readable(notify::descriptor()));
    EXPECT_EQ(delivered(), (Events{"A"}));
    EXPECT_FALSE(notify::pending());
    EXPECT_FALSE(readable(notify::descriptor()));
    EXPECT_EQ(delivered(), Events());
}

TEST_F(TheCenter, postsThatWaitAreOneDeliveryEachInTheirOrder) {
    for (const char* name : {"A", "B", "C"}) observe(name);
    for (const char* name : {"C", "A", "C", "A", "C"}) post(name);
    EXPECT_EQ(delivered(), (Events{"C", "A"}));
}

TEST_F(TheCenter, namesThatNobodyObservesReachNobody) {
    observe("A");
    post("a");
    post("AB");
    EXPECT_EQ(delivered(), Events());
    EXPECT_FALSE(notify::pending());
}

TEST_F(TheCenter, anObserverRegisteredTwiceHearsTwice) {
    observe("A");
    observe("A");
    post("A");
    EXPECT_EQ(delivered(), (Events{"A", "A"}));
}

TEST_F(TheCenter, anotherProcessIsHeardByThePlainPost) {
    observe("FromAfar");
    Process tool([path = directory_ / "notifications"] {
        if (notify::openRendezvous(path)) return 1;
        return notify::post("FromAfar") ? 2 : 0;
    });
    EXPECT_TRUE(pollUntil(notify::descriptor(), [&] { return delivered() == Events{"FromAfar"}; }));
    EXPECT_EQ(tool.exitStatus(), 0);
}

TEST_F(TheCenter, anotherDirectoryIsNotHeard) {
    observe("A");
    Process tool([path = directory_ / "others"] {
        if (notify::openRendezvous(path)) return 1;
        return notify::post("A") ? 2 : 0;
    });
    EXPECT_EQ(tool.exitStatus(), 0);
    EXPECT_EQ(delivered(), Events());
}

TEST_F(TheCenter, postsOfManyThreadsAreHeardOnTheOneThatDelivers) {
    observe("A");
    observe("B");
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i) {
        threads.emplace_back([i] {
            for (int n = 0; n < 100; ++n) EXPECT_FALSE(notify::post(i % 2 ? "A" : "B"));
        });
    }
    Events all;
    for (int round = 0; round < 50; ++round) {
        for (const auto& name : delivered()) all.push_back(name);
    }
    for (auto& thread : threads) thread.join();
    for (const auto& name : delivered()) all.push_back(name);
    for (const char* name : {"A", "B"}) EXPECT_NE(std::find(all.begin(), all.end(), name), all.end()) << name;
    EXPECT_FALSE(notify::pending());
}

TEST_F(TheCenter, whatAnObserverPostsWaitsForTheNextDelivery) {
    CFNotificationCenterAddObserver(
        center(), this,
        [](void*, void* observer, const void*, const void*, const void*) {
            static_cast<TheCenter*>(observer)->post("Second");
        },
        string("First").self(), nullptr, hold);
    observe("Second");
    post("First");
    EXPECT_EQ(delivered(), Events());
    EXPECT_TRUE(notify::pending());
    EXPECT_EQ(delivered(), (Events{"Second"}));
}

TEST_F(TheCenter, aRemovedObserverHearsNothingMore) {
    observe("A");
    observe("B");
    CFNotificationCenterRemoveObserver(center(), this, string("A").self(), nullptr);
    post("A");
    post("B");
    EXPECT_EQ(delivered(), (Events{"B"}));
    CFNotificationCenterRemoveObserver(center(), this, nullptr, nullptr);
    post("B");
    EXPECT_EQ(delivered(), Events());
}

TEST_F(TheCenter, anObserverMayRemoveItselfAndOthersWhileItIsCalled) {
    CFNotificationCenterAddObserver(
        center(), this,
        [](void*, void* observer, const void* name, const void*, const void*) {
            CFNotificationCenterRemoveEveryObserver(center(), observer);
            static_cast<TheCenter*>(observer)->heard_.push_back("removed by " + textOf(name));
        },
        string("A").self(), nullptr, hold);
    observe("A");
    post("A");
    EXPECT_EQ(delivered(), (Events{"removed by A"}));
}

TEST_F(TheCenter, aMutableNameIsTakenAsItWas) {
    auto name = objc::Strong<>::adopt(objc::sendClass<"NSMutableString", "new", objc::Object>());
    objc::send<"setString:">(name.get(), string("A").get());
    CFNotificationCenterAddObserver(center(), this, write, name.self(), nullptr, hold);
    objc::send<"setString:">(name.get(), string("B").get());
    post("A");
    EXPECT_EQ(delivered(), (Events{"A"}));
}

struct BehaviourCase {
    const char* what;
    long behaviour;
    Events whileSuspended;
    Events afterResume;
};

class WhileSuspended : public TheCenter, public testing::WithParamInterface<BehaviourCase> {};

TEST_P(WhileSuspended, theBehaviourDecides) {
    observe("A", GetParam().behaviour);
    observe("B", GetParam().behaviour);
    notify::suspend();
    EXPECT_TRUE(notify::isSuspended());
    Events during;
    for (const char* name : {"B", "A", "B"}) {
        post(name);
        for (const auto& heard : delivered()) during.push_back(heard);
    }
    EXPECT_EQ(during, GetParam().whileSuspended);
    EXPECT_FALSE(notify::pending());
    notify::resume();
    EXPECT_EQ(notify::pending(), !GetParam().afterResume.empty());
    EXPECT_EQ(readable(notify::descriptor()), !GetParam().afterResume.empty());
    EXPECT_EQ(delivered(), GetParam().afterResume);
    post("A");
    EXPECT_EQ(delivered(), (Events{"A"}));
}

INSTANTIATE_TEST_SUITE_P(Behaviours, WhileSuspended,
                         testing::Values(BehaviourCase{"drop", drop, {}, {}},
                                         BehaviourCase{"coalesce", coalesce, {}, {"B", "A"}},
                                         BehaviourCase{"hold", hold, {}, {"B", "A"}},
                                         BehaviourCase{"immediately", deliverImmediately, {"B", "A", "B"}, {}}),
                         [](const auto& row) { return std::string(row.param.what); });

TEST_F(TheCenter, whatWasHeldAndPostedAgainIsOneDelivery) {
    observe("A");
    notify::suspend();
    post("A");
    EXPECT_EQ(delivered(), Events());
    notify::resume();
    post("A");
    EXPECT_EQ(delivered(), (Events{"A"}));
}

TEST_F(TheCenter, resumingAndSuspendingAgainKeepsWhatWasHeld) {
    observe("A");
    notify::suspend();
    post("A");
    EXPECT_EQ(delivered(), Events());
    notify::resume();
    notify::suspend();
    EXPECT_EQ(delivered(), Events());
    notify::resume();
    EXPECT_EQ(delivered(), (Events{"A"}));
}

TEST_F(TheCenter, withoutARendezvousPostsReachTheProcessItself) {
    notify::closeRendezvous();
    observe("A");
    post("A");
    EXPECT_TRUE(readable(notify::descriptor()));
    EXPECT_EQ(delivered(), (Events{"A"}));
    EXPECT_FALSE(readable(notify::descriptor()));
}

TEST_F(TheCenter, leavingTheRendezvousLosesNothingThatHasArrived) {
    observe("A");
    post("A");
    notify::closeRendezvous();
    EXPECT_TRUE(notify::pending());
    EXPECT_EQ(delivered(), (Events{"A"}));
}

TEST_F(TheCenter, aDirectoryThatCannotBeJoinedLeavesTheOldOne) {
    observe("A");
    EXPECT_TRUE(notify::openRendezvous("/dev/null/below"));
    post("A");
    EXPECT_EQ(delivered(), (Events{"A"}));
}

TEST_F(TheCenter, wrongCallsAreReportedAndDoNothing) {
    testing::internal::CaptureStderr();
    CFNotificationCenterAddObserver(center(), this, nullptr, string("A").self(), nullptr, hold);
    CFNotificationCenterAddObserver(center(), this, write, nullptr, nullptr, hold);
    CFNotificationCenterAddObserver(this, this, write, string("A").self(), nullptr, hold);
    CFNotificationCenterPostNotification(center(), nullptr, nullptr, nullptr, 1);
    const std::string said = testing::internal::GetCapturedStderr();
    EXPECT_EQ(std::count(said.begin(), said.end(), '\n'), 4) << said;
    post("A");
    EXPECT_EQ(delivered(), Events());
}

}  // namespace
}  // namespace notify_tests
