// The slot of a strong reference, alone and under many threads.
#include "objc/strong_slot.h"

#include <gtest/gtest.h>

#include "fixtures/strings.h"
#include "fixtures/threads.h"

namespace {

using objc::Object;
using objc::Strong;

class StrongSlot : public ::testing::Test {
  protected:
    StrongSlot() {
        objc::registerClasses<Tracked>();
        before_ = Tracked::living;
    }
    int living() const { return Tracked::living - before_; }

  private:
    int before_ = 0;
};

TEST_F(StrongSlot, isEmptyAtFirst) {
    objc::StrongSlot<> slot;
    EXPECT_FALSE(slot.load());
    EXPECT_FALSE(slot.exchange({}));
}

TEST_F(StrongSlot, keepsWhatItIsGivenAndReleasesWhatItHad) {
    objc::StrongSlot<> slot;
    slot.store(makeTracked(1));
    EXPECT_EQ(living(), 1);
    slot.store(makeTracked(2));
    EXPECT_EQ(living(), 1);
    EXPECT_EQ((objc::send<"value", int>(slot.load())), 2);
    slot.store({});
    EXPECT_EQ(living(), 0);
}

TEST_F(StrongSlot, releasesWhatItHoldsWhenItGoes) {
    {
        objc::StrongSlot<> slot(makeTracked(1).get());
        EXPECT_EQ(living(), 1);
    }
    EXPECT_EQ(living(), 0);
}

TEST_F(StrongSlot, aLoadedObjectOutlivesItsReplacement) {
    objc::StrongSlot<> slot;
    slot.store(makeTracked(1));
    Strong<> held = slot.load();
    slot.store({});
    EXPECT_EQ((objc::send<"value", int>(held)), 1);
}

TEST_F(StrongSlot, exchangeAnswersTheFormerObject) {
    objc::StrongSlot<> slot;
    EXPECT_FALSE(slot.exchange(makeTracked(1)));
    Strong<> former = slot.exchange(makeTracked(2));
    EXPECT_EQ((objc::send<"value", int>(former)), 1);
    EXPECT_EQ(living(), 2);
}

TEST_F(StrongSlot, compareExchangeReplacesOnlyWhatIsExpected) {
    objc::StrongSlot<> slot;
    Strong<> first = makeTracked(1);
    Strong<> second = makeTracked(2);
    EXPECT_FALSE(slot.compareExchange(first, second));
    EXPECT_FALSE(slot.load());
    EXPECT_TRUE(slot.compareExchange({}, first));
    EXPECT_FALSE(slot.compareExchange({}, second));
    EXPECT_EQ(slot.load(), first);
    EXPECT_TRUE(slot.compareExchange(first, second));
    EXPECT_EQ(slot.load(), second);
    EXPECT_TRUE(slot.compareExchange(second, {}));
    EXPECT_FALSE(slot.load());
}

TEST_F(StrongSlot, readersNeverMeetAnObjectThatIsGone) {
    {
        objc::StrongSlot<> slot;
        std::atomic<int> wrong{0};
        onThreads(6, [&](int thread) {
            for (int round = 0; round < 4000; ++round) {
                if (thread < 3) {
                    Strong<> seen = slot.load();
                    if (seen && !objc::peerOf<Tracked>(seen.get())->isAlive()) ++wrong;
                } else if (thread == 3) {
                    slot.store(makeTracked(round));
                } else if (thread == 4) {
                    slot.exchange(round % 3 == 0 ? Strong<>() : makeTracked(round));
                } else {
                    Strong<> seen = slot.load();
                    slot.compareExchange(seen, makeTracked(round));
                }
            }
        });
        EXPECT_EQ(wrong, 0);
    }
    EXPECT_EQ(living(), 0) << "nothing is lost and nothing is released twice";
}

TEST_F(StrongSlot, ofManyThatExpectTheSameOneWins) {
    constexpr int threads = 4;
    constexpr int additions = 1500;
    objc::StrongSlot<> slot;
    slot.store(makeTracked(0));
    onThreads(threads, [&](int) {
        for (int done = 0; done < additions;) {
            Strong<> seen = slot.load();
            int value = objc::peerOf<Tracked>(seen.get())->value();
            if (slot.compareExchange(seen, makeTracked(value + 1))) ++done;
        }
    });
    EXPECT_EQ(objc::peerOf<Tracked>(slot.load().get())->value(), threads * additions);
}

}  // namespace
