// The array that many threads share.
#include "objc/snapshot_array.h"

#include <gtest/gtest.h>

#include <array>
#include <vector>

#include "fixtures/strings.h"
#include "fixtures/threads.h"

namespace {

using objc::Object;
using objc::Strong;
using Array = objc::SnapshotArray<"LayerTestArray">;

class SnapshotArray : public ::testing::Test {
  protected:
    SnapshotArray() {
        objc::registerClasses<Array, Tracked>();
        before_ = Tracked::living;
        array_ = objc::Ref<Array>::make();
    }
    int living() const { return Tracked::living - before_; }
    Object array() const { return {array_.self()}; }
    void fill(int count) {
        for (int i = 0; i < count; ++i) array_->append(makeTracked(i));
    }
    static std::vector<int> values(const objc::Snapshot& snapshot) {
        std::vector<int> values;
        for (std::size_t i = 0; i < snapshot.size(); ++i) values.push_back(objc::send<"value", int>(snapshot[i]));
        return values;
    }
    std::vector<int> values() const { return values(array_->snapshot()); }

    objc::Ref<Array> array_;

  private:
    int before_ = 0;
};

TEST_F(SnapshotArray, isAMutableArrayToAllWhoAsk) {
    objc::AutoreleasePool pool;
    EXPECT_TRUE(objc::isKindOf(array(), objc::classNamed<"NSMutableArray">()));
    objc::send<"addObject:">(array(), stringOf("one"));
    objc::send<"addObject:">(array(), stringOf("two"));
    EXPECT_EQ((objc::send<"count", unsigned long>(array())), 2u);
    EXPECT_TRUE((objc::send<"containsObject:", bool>(array(), stringOf("two"))));
    EXPECT_EQ((objc::send<"indexOfObject:", unsigned long>(array(), stringOf("two"))), 1u);
    EXPECT_EQ(textOf(objc::send<"lastObject", Object>(array())), "two");
    EXPECT_EQ(textOf(objc::send<"componentsJoinedByString:", Object>(array(), stringOf("+"))), "one+two");
    EXPECT_TRUE((objc::send<"isEqualToArray:", bool>(
        array(), objc::sendVariadic<"arrayWithObjects:", Object>(Object{objc::raw(objc::classNamed<"NSArray">())},
                                                                 stringOf("one"), stringOf("two"), Object{}))));
}

TEST_F(SnapshotArray, pastTheEndIsNilAndNothingHappens) {
    objc::AutoreleasePool pool;
    fill(2);
    EXPECT_EQ((objc::send<"objectAtIndex:", Object>(array(), 2)).self, nullptr);
    EXPECT_EQ((objc::send<"objectAtIndex:", Object>(array(), -1)).self, nullptr);
    objc::send<"removeObjectAtIndex:">(array(), 2);
    objc::send<"replaceObjectAtIndex:withObject:">(array(), 2, stringOf("x"));
    objc::send<"addObject:">(array(), Object{});
    EXPECT_EQ(values(), (std::vector<int>{0, 1}));
    objc::send<"removeAllObjects">(array());
    objc::send<"removeLastObject">(array());
    EXPECT_EQ(values(), (std::vector<int>{}));
}

TEST_F(SnapshotArray, changesAsAnArrayDoes) {
    objc::AutoreleasePool pool;
    fill(3);
    objc::send<"insertObject:atIndex:">(array(), makeTracked(7), 1);
    EXPECT_EQ(values(), (std::vector<int>{0, 7, 1, 2}));
    objc::send<"insertObject:atIndex:">(array(), makeTracked(8), 99);
    EXPECT_EQ(values(), (std::vector<int>{0, 7, 1, 2, 8}));
    objc::send<"replaceObjectAtIndex:withObject:">(array(), 0, makeTracked(9));
    objc::send<"removeObjectAtIndex:">(array(), 2);
    EXPECT_EQ(values(), (std::vector<int>{9, 7, 2, 8}));
    objc::send<"removeObject:">(array(), objc::send<"objectAtIndex:", Object>(array(), 1));
    objc::send<"removeLastObject">(array());
    EXPECT_EQ(values(), (std::vector<int>{9, 2}));
    auto copy = Strong<>::adopt(objc::send<"copy", Object>(array()));
    objc::send<"addObjectsFromArray:">(array(), copy);
    EXPECT_EQ(values(), (std::vector<int>{9, 2, 9, 2}));
    objc::send<"removeObjectsInArray:">(array(), copy);
    EXPECT_EQ(values(), (std::vector<int>{}));
    objc::send<"setArray:">(array(), copy);
    EXPECT_EQ(values(), (std::vector<int>{9, 2}));
}

TEST_F(SnapshotArray, theInitialisersFillIt) {
    objc::AutoreleasePool pool;
    std::array<id, 2> objects{stringOf("a").self, stringOf("b").self};
    auto filled = objc::make<Object, "initWithObjects:count:">(objc::classOf<Array>(), objects.data(), 2ul);
    EXPECT_EQ((objc::send<"count", unsigned long>(filled)), 2u);
    auto copied = objc::make<Object, "initWithArray:">(objc::classOf<Array>(), filled.get());
    EXPECT_EQ((objc::send<"count", unsigned long>(copied)), 2u);
    auto empty = objc::make<Object, "initWithCapacity:">(objc::classOf<Array>(), 100ul);
    EXPECT_EQ((objc::send<"count", unsigned long>(empty)), 0u);
    EXPECT_EQ((objc::send<"count", unsigned long>(objc::send<"array", Object>(objc::classOf<Array>()))), 0u);
}

TEST_F(SnapshotArray, aCopyKeepsItsState) {
    objc::AutoreleasePool pool;
    fill(2);
    auto copy = Strong<>::adopt(objc::send<"copy", Object>(array()));
    auto mutableCopy = Strong<>::adopt(objc::send<"mutableCopy", Object>(array()));
    objc::send<"removeAllObjects">(array());
    EXPECT_EQ((objc::send<"count", unsigned long>(copy)), 2u);
    objc::send<"addObject:">(mutableCopy, makeTracked(5));
    EXPECT_EQ((objc::send<"count", unsigned long>(mutableCopy)), 3u);
    EXPECT_TRUE(objc::isKindOf(mutableCopy, objc::classOf<Array>()));
    EXPECT_FALSE(objc::isKindOf(copy, objc::classOf<Array>()));
}

TEST_F(SnapshotArray, aCopyRetainsNoElementAndIsItsOwnCopy) {
    objc::AutoreleasePool pool;
    fill(3);
    const auto retained = objc::send<"retainCount", unsigned long>(array_->snapshot()[0]);
    auto copy = Strong<Object>::adopt(objc::send<"copy", Object>(array()));
    EXPECT_EQ((objc::send<"retainCount", unsigned long>(array_->snapshot()[0])), retained);
    EXPECT_EQ(Strong<Object>::adopt(objc::send<"copy", Object>(copy)).self(), copy.self());
    EXPECT_FALSE((objc::send<"objectAtIndex:", Object>(copy, 3UL)));
    objc::send<"removeAllObjects">(array());
    EXPECT_EQ(living(), 3);
    copy = {};
    EXPECT_EQ(living(), 0);
}

TEST_F(SnapshotArray, takesTheElementsOfAnyArray) {
    objc::AutoreleasePool pool;
    auto ordinary = objc::make<Object>(objc::classNamed<"NSMutableArray">());
    auto other = objc::Ref<Array>::make();
    for (int i = 0; i < 40; ++i) {
        objc::send<"addObject:">(ordinary, makeTracked(i).get());
        other->append(makeTracked(40 + i));
    }
    const auto copyOfOther = Strong<Object>::adopt(objc::send<"copy", Object>(Object{other.self()}));
    objc::send<"addObjectsFromArray:">(array(), ordinary.get());
    objc::send<"addObjectsFromArray:">(array(), Object{other.self()});
    objc::send<"addObjectsFromArray:">(array(), copyOfOther.get());
    objc::send<"addObjectsFromArray:">(array(), array());
    objc::send<"addObjectsFromArray:">(array(), Object{});
    std::vector<int> expected;
    for (int round = 0; round < 2; ++round) {
        for (int i = 0; i < 80; ++i) expected.push_back(i);
        for (int i = 40; i < 80; ++i) expected.push_back(i);
    }
    EXPECT_EQ(values(), expected);
    objc::send<"setArray:">(array(), ordinary.get());
    EXPECT_EQ(values(), std::vector<int>(expected.begin(), expected.begin() + 40));
}

TEST_F(SnapshotArray, adoptsObjectsWithoutRetainingThem) {
    std::vector<Strong<Object>> objects;
    for (int i = 0; i < 3; ++i) objects.push_back(makeTracked(i));
    array_->store().adopt(objects);
    EXPECT_EQ(values(), (std::vector<int>{0, 1, 2}));
    array_->append(makeTracked(3));
    EXPECT_EQ(values(), (std::vector<int>{0, 1, 2, 3}));
    array_ = {};
    EXPECT_EQ(living(), 0);
}

TEST_F(SnapshotArray, anElementOutlivesItsRemovalUntilThePoolEnds) {
    {
        objc::AutoreleasePool pool;
        fill(1);
        Object element = objc::send<"objectAtIndex:", Object>(array(), 0);
        objc::send<"removeAllObjects">(array());
        EXPECT_TRUE(objc::peerOf<Tracked>(element)->isAlive());
        EXPECT_EQ(living(), 1);
    }
    EXPECT_EQ(living(), 0);
}

TEST_F(SnapshotArray, anEnumerationRunsOverTheStateThatItBeganWith) {
    {
        objc::AutoreleasePool pool;
        fill(3);
        objc::detail::FastEnumerationState state{};
        std::array<id, 2> room{};
        unsigned long count =
            objc::send<"countByEnumeratingWithState:objects:count:", unsigned long>(array(), &state, room.data(), 2ul);
        objc::send<"removeAllObjects">(array());
        ASSERT_EQ(count, 3u);
        EXPECT_EQ(objc::peerOf<Tracked>(state.items[2])->value(), 2);
        EXPECT_EQ((objc::send<"countByEnumeratingWithState:objects:count:", unsigned long>(array(), &state, room.data(),
                                                                                           2ul)),
                  0u);
    }
    EXPECT_EQ(living(), 0);
}

TEST_F(SnapshotArray, anEnumeratorRunsOverTheStateThatItBeganWith) {
    objc::AutoreleasePool pool;
    fill(2);
    Object enumerator = objc::send<"objectEnumerator", Object>(array());
    objc::send<"removeAllObjects">(array());
    EXPECT_EQ((objc::send<"value", int>(objc::send<"nextObject", Object>(enumerator))), 0);
    EXPECT_EQ((objc::send<"value", int>(objc::send<"nextObject", Object>(enumerator))), 1);
    EXPECT_EQ((objc::send<"nextObject", Object>(enumerator)).self, nullptr);
}

TEST_F(SnapshotArray, addingAtTheEndSharesTheBufferAndRetainsOnce) {
    Strong<> element = makeTracked(1);
    array_->append(element);
    objc::Snapshot before = array_->snapshot();
    for (int i = 0; i < 7; ++i) array_->append(element);
    EXPECT_EQ(before.objects(), array_->snapshot().objects());
    EXPECT_EQ(before.size(), 1u);
    EXPECT_EQ((objc::send<"retainCount", unsigned long>(element)), 9u);
}

TEST_F(SnapshotArray, replacingAllAnswersTheFormerContent) {
    fill(3);
    objc::Snapshot former = array_->replaceAll({});
    EXPECT_EQ(values(former), (std::vector<int>{0, 1, 2}));
    EXPECT_EQ(array_->snapshot().size(), 0u);
    array_->append(makeTracked(4));
    EXPECT_EQ(values(), (std::vector<int>{4}));
}

TEST_F(SnapshotArray, addsToTheStateThatWasSeenAndShowsTheNewOne) {
    for (const int held : {0, 1, 8, 20}) {
        array_->removeAllObjects();
        fill(held);
        auto seen = array_->snapshot();
        for (const int value : {100, 101, 102}) {
            const Strong<Object> first = makeTracked(value);
            const Strong<Object> second = makeTracked(-value);
            const std::array<Object, 2> two{first.get(), second.get()};
            ASSERT_TRUE(array_->appendFrom(seen, two)) << held;
            EXPECT_EQ(values(seen), values());
        }
        EXPECT_EQ(seen.size(), static_cast<std::size_t>(held) + 6);
        EXPECT_TRUE(array_->appendFrom(seen, {}));
    }
}

TEST_F(SnapshotArray, addsAndReplacesNothingInAnotherStateThanTheOneThatWasSeen) {
    const Strong<Object> object = makeTracked(100);
    const std::array<Object, 1> one{object.get()};
    const auto isRefusedAfter = [&](auto change) {
        auto seen = array_->snapshot();
        change();
        const auto present = values();
        EXPECT_FALSE(array_->appendFrom(seen, one));
        EXPECT_FALSE(array_->replaceFrom(seen, one));
        EXPECT_EQ(values(), present);
    };
    isRefusedAfter([&] { array_->removeAllObjects(); });
    isRefusedAfter([&] { array_->removeAllObjects(); });  // empty again is another state
    isRefusedAfter([&] { fill(1); });
    isRefusedAfter([&] { fill(1); });
    isRefusedAfter([&] { array_->removeLastObject(); });
    isRefusedAfter([&] {
        const auto before = array_->snapshot();
        array_->removeLastObject();
        array_->append(before[0]);
    });
    const auto seen = array_->snapshot();
    EXPECT_TRUE(array_->replaceFrom(seen, one));
    EXPECT_EQ(values(), (std::vector{100}));
    EXPECT_FALSE(array_->replaceFrom(seen, one));
}

// One thread begins the array anew with a number of its round, again and again; others add to the states that they see
// what these begin with. So no state ever holds two numbers.
TEST_F(SnapshotArray, whatIsAddedToAStateIsNeverInALaterOneThatWasBegunAnew) {
    constexpr int rounds = 3000;
    std::atomic<bool> isOver{false};
    std::atomic<int> mixed{0};
    onThreads(4, [&](int index) {
        objc::AutoreleasePool pool;
        if (index == 0) {
            for (int round = 0; round < rounds; ++round) {
                const Strong<Object> object = makeTracked(round);
                const Object begun = object.get();
                array_->replaceAll(std::span(&begun, 1));
            }
            isOver = true;
            return;
        }
        while (!isOver) {
            auto seen = array_->snapshot();
            for (const int value : values(seen))
                if (value != values(seen).front()) ++mixed;
            if (seen.size() == 0 || seen.size() > 20) continue;
            const Object first = seen[0];
            const std::array<Object, 3> three{first, first, first};
            static_cast<void>(array_->appendFrom(seen, three));
        }
    });
    EXPECT_EQ(mixed, 0);
}

TEST_F(SnapshotArray, nothingStaysBehindWhenItGoes) {
    {
        objc::AutoreleasePool pool;
        fill(100);
        objc::send<"removeObjectAtIndex:">(array(), 50);
        array_ = {};
    }
    EXPECT_EQ(living(), 0);
}

// Appenders write rising numbers of their own; a remover takes from the front; so in every state each appender's
// numbers rise without a gap, up to the last that it had written.
TEST_F(SnapshotArray, everyStateThatAReaderSeesIsOneThatWas) {
    constexpr int appenders = 2;
    constexpr int rounds = 1500;
    std::atomic<int> wrong{0};
    std::atomic<int> removed{0};
    onThreads(appenders + 3, [&](int thread) {
        for (int round = 0; round < rounds; ++round) {
            objc::AutoreleasePool pool;
            if (thread < appenders) {
                array_->append(makeTracked(round * appenders + thread));
            } else if (thread == appenders) {
                std::size_t before = 0;
                array_->store().change([&](const objc::Snapshot& present, objc::SnapshotStore::Draft& draft) {
                    before = present.size();
                    for (std::size_t i = 1; i < present.size(); ++i) draft.add(present[i]);
                    return before != 0;
                });
                if (before != 0) ++removed;
            } else {
                objc::Snapshot seen = array_->snapshot();
                std::array<int, appenders> last{};
                last.fill(-1);
                for (std::size_t i = 0; i < seen.size(); ++i) {
                    auto* tracked = objc::peerOf<Tracked>(seen[i]);
                    int writer = tracked->value() % appenders;
                    int number = tracked->value() / appenders;
                    int& previous = last[static_cast<std::size_t>(writer)];
                    if (!tracked->isAlive() || (previous >= 0 && number != previous + 1)) ++wrong;
                    previous = number;
                }
                Object first = objc::send<"objectAtIndex:", Object>(array(), 0);
                if (first && !objc::peerOf<Tracked>(first)->isAlive()) ++wrong;
            }
        }
    });
    EXPECT_EQ(wrong, 0);
    EXPECT_EQ(static_cast<int>(array_->snapshot().size()) + removed, appenders * rounds) << "nothing is lost";
    array_ = {};
    EXPECT_EQ(living(), 0);
}

TEST_F(SnapshotArray, whatIsAddedWhileAllIsReplacedIsInOneOfTheTwo) {
    constexpr int rounds = 3000;
    std::atomic<std::size_t> taken{0};
    onThreads(4, [&](int thread) {
        for (int round = 0; round < rounds; ++round) {
            if (thread < 3)
                array_->append(makeTracked(round));
            else
                taken += array_->replaceAll({}).size();
        }
    });
    EXPECT_EQ(taken + array_->snapshot().size(), 3u * rounds);
}

}  // namespace
