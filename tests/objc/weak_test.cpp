// Weak references: null once their object is gone, whatever its class, however many threads look at it.
#include "desktop/weak/weak.h"

#include <gtest/gtest.h>

#include <functional>

#include "fixtures/strings.h"
#include "fixtures/threads.h"

namespace {

using objc::Object;
using objc::Strong;

/// A class over one that is known by its name alone, as an image makes it that knows the other's header no more: its
/// peer goes first, then the one below it.
class TrackedAbove : public objc::PeerBase {
  public:
    using Super = objc::Foreign<"LayerTestTracked">;
    static constexpr objc::Name className{"WeakTestTrackedAbove"};
    static void define(objc::ClassDefinition<TrackedAbove>&) {}
    ~TrackedAbove() {
        if (whenGone) whenGone();
    }

    std::function<void()> whenGone;
};

class Weak : public ::testing::Test {
  protected:
    Weak() {
        objc::registerClasses<Tracked, TrackedAbove>();
        before_ = Tracked::living;
    }
    int living() const { return Tracked::living - before_; }

  private:
    int before_ = 0;
};

int valueOf(const weak::Object& reference) {
    const auto object = reference.load();
    return object ? objc::send<"value", int>(object) : -1;
}

TEST_F(Weak, aReferenceToNothingIsNull) {
    EXPECT_FALSE(weak::Object().load());
    EXPECT_FALSE(weak::Object(Object{}).load());
    EXPECT_FALSE(weak::Peer<Tracked>().load());
    EXPECT_FALSE(weak::Peer<Tracked>(nullptr).load());
}

TEST_F(Weak, itAnswersItsObjectAndDoesNotKeepIt) {
    auto object = makeTracked(7);
    const weak::Object reference(object);
    EXPECT_EQ(valueOf(reference), 7);
    object = {};
    EXPECT_EQ(living(), 0);
    EXPECT_FALSE(reference.load());
}

TEST_F(Weak, whatIsReadLivesAsLongAsTheReaderHoldsIt) {
    auto object = makeTracked(7);
    const weak::Object reference(object);
    auto read = reference.load();
    object = {};
    EXPECT_EQ(living(), 1);
    EXPECT_EQ(valueOf(reference), 7);
    read = {};
    EXPECT_EQ(living(), 0);
    EXPECT_FALSE(reference.load());
}

TEST_F(Weak, everyCopyIsNullOnceTheObjectIsGone) {
    auto object = makeTracked(7);
    const weak::Object first(object);
    const weak::Object second(first);
    weak::Object third;
    third = second;
    const weak::Object moved(std::move(third));
    EXPECT_EQ(valueOf(second), 7);
    EXPECT_EQ(valueOf(moved), 7);
    object = {};
    EXPECT_FALSE(first.load());
    EXPECT_FALSE(second.load());
    EXPECT_FALSE(moved.load());
}

TEST_F(Weak, referencesThatGoLeaveTheObjectToItsOwner) {
    auto object = makeTracked(7);
    weak::Object last(object);
    { const weak::Object first(object); }
    EXPECT_EQ(valueOf(last), 7);
    last = {};
    EXPECT_EQ(living(), 1);
    last = object.get();
    EXPECT_EQ(valueOf(last), 7);
    object = {};
    EXPECT_EQ(living(), 0);
}

TEST_F(Weak, aReferenceFollowsWhatItIsGiven) {
    const auto one = makeTracked(1);
    auto two = makeTracked(2);
    weak::Object reference(one);
    reference = two.get();
    EXPECT_EQ(valueOf(reference), 2);
    two = {};
    EXPECT_FALSE(reference.load());
}

TEST_F(Weak, objectsWithoutAPeerAreReferredToAsWell) {
    auto object = objc::make<Object>(objc::classNamed<"NSObject">());
    const weak::Object reference(object);
    EXPECT_EQ(reference.load(), object);
    object = {};
    EXPECT_FALSE(reference.load());
}

TEST_F(Weak, anObjectThatIsAutoreleasedGoesWithItsPool) {
    weak::Object reference;
    {
        const objc::AutoreleasePool pool;
        reference = objc::autorelease(makeTracked(7));
        EXPECT_EQ(valueOf(reference), 7);
    }
    EXPECT_EQ(living(), 0);
    EXPECT_FALSE(reference.load());
}

TEST_F(Weak, anObjectThatNeverGoesStays) {
    const objc::AutoreleasePool pool;
    const auto number = numberOf(1);
    const weak::Object reference(number);
    EXPECT_EQ(reference.load().get(), number);
}

TEST_F(Weak, theReferenceIsNullBeforeTheFirstOfSeveralPeersGoes) {
    auto object = objc::Ref<TrackedAbove>::make();
    const weak::Object reference{Object{object.self()}};
    bool wasRead = true;
    object->whenGone = [&] { wasRead = static_cast<bool>(reference.load()); };
    object = {};
    EXPECT_FALSE(wasRead);
    EXPECT_EQ(living(), 0);
}

TEST_F(Weak, aReferenceThatIsMadeInTheObjectsOwnDeallocIsNullAfterIt) {
    auto object = objc::Ref<TrackedAbove>::make();
    const id place = object.self();
    weak::Object reference;
    object->whenGone = [&] { reference = Object{place}; };
    object = {};
    EXPECT_FALSE(reference.load());
    EXPECT_EQ(living(), 0);
}

TEST_F(Weak, aNewObjectInTheOldPlaceIsNotMistakenForTheOneThatWasThere) {
    const objc::AutoreleasePool pool;
    for (int round = 0; round < 1000; ++round) {
        auto object = makeTracked(round);
        const id place = object.self();
        const weak::Object reference(object);
        object = {};
        const auto next = makeTracked(-round);
        ASSERT_FALSE(reference.load()) << (next.self() == place ? "same place" : "another place");
    }
}

TEST_F(Weak, aPeerIsReadWithItsObjectKept) {
    auto tracked = objc::Ref<Tracked>::make();
    tracked->setValue(7);
    const weak::Peer<Tracked> reference(tracked.get());
    {
        const auto read = reference.load();
        ASSERT_TRUE(read);
        tracked = {};
        EXPECT_EQ(read->value(), 7);
    }
    EXPECT_EQ(living(), 0);
    EXPECT_FALSE(reference.load());
}

TEST_F(Weak, aCallbackRunsWhileItsObjectLivesAndKeepsItMeanwhile) {
    auto tracked = objc::Ref<Tracked>::make();
    std::vector<int> heard;
    const std::function<void(int)> callback = weak::whileAlive(tracked.get(), [&](int value) {
        tracked = {};
        heard.push_back(value + living());
    });
    callback(10);
    EXPECT_EQ(heard, (std::vector{11}));
    callback(20);
    EXPECT_EQ(heard, (std::vector{11}));
}

TEST_F(Weak, readersOnOtherThreadsGetTheWholeObjectOrNull) {
    constexpr int readers = 3;
    constexpr int rounds = 100;
    std::atomic<int> wrong{0};
    std::atomic<int> left{0};
    for (int round = 0; round < rounds; ++round) {
        auto object = makeTracked(round);
        const weak::Object reference(object);
        onThreads(readers + 1, [&](int thread) {
            if (thread == 0) {
                object = {};
                return;
            }
            for (;;) {
                const auto read = reference.load();
                if (!read) break;
                const auto* tracked = objc::peerOf<Tracked>(read.get());
                if (!tracked->isAlive() || tracked->value() != round) ++wrong;
            }
        });
        if (reference.load()) ++left;
    }
    EXPECT_EQ(wrong, 0);
    EXPECT_EQ(left, 0);
    EXPECT_EQ(living(), 0) << "nothing is lost and nothing is released twice";
}

/// The first reference to an object comes while other threads, which own it as well, release it.
TEST_F(Weak, anObjectThatIsBeingReleasedElsewhereIsReferredToSafely) {
    constexpr int rounds = 300;
    std::atomic<int> wrong{0};
    for (int round = 0; round < rounds; ++round) {
        std::vector<Strong<>> owners(4, makeTracked(round));
        std::vector<weak::Object> references(owners.size());
        onThreads(static_cast<int>(owners.size()), [&](int thread) {
            const auto index = static_cast<std::size_t>(thread);
            if (index < 2) references[index] = owners[index].get();
            for (int turn = 0; turn < 20; ++turn) {
                const auto read = references[index].load();
                if (index < 2 ? valueOf(references[index]) != round : static_cast<bool>(read)) ++wrong;
                const Strong<> another = owners[index];
            }
            owners[index] = {};
        });
        for (const auto& each : references)
            if (each.load()) ++wrong;
    }
    EXPECT_EQ(wrong, 0);
    EXPECT_EQ(living(), 0);
}

}  // namespace
