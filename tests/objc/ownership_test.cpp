// Strong and Ref: who holds how many references.
#include <gtest/gtest.h>

#include "fixtures/strings.h"

namespace {

using objc::Object;
using objc::Strong;

unsigned long countOf(Object object) { return objc::send<"retainCount", unsigned long>(object); }

TEST(Ownership, borrowingRetainsAdoptingDoesNot) {
    Object owned = makeTracked(1).take();
    EXPECT_EQ(countOf(owned), 1u);
    {
        Strong<> borrowed(owned);
        EXPECT_EQ(countOf(owned), 2u);
    }
    EXPECT_EQ(countOf(owned), 1u);
    int before = Tracked::living;
    Strong<>::adopt(owned);
    EXPECT_EQ(Tracked::living, before - 1);
}

TEST(Ownership, copiesCountAndMovesDoNot) {
    Strong<> first = makeTracked(1);
    Strong<> second = first;
    EXPECT_EQ(countOf(first), 2u);
    Strong<> third = std::move(second);
    EXPECT_EQ(countOf(first), 2u);
    EXPECT_FALSE(second);
    third = third.get();
    EXPECT_EQ(countOf(first), 2u);
    third = {};
    EXPECT_EQ(countOf(first), 1u);
}

TEST(Ownership, aRefHoldsItsObjectAndGivesItAwayWhole) {
    int before = Tracked::living;
    {
        auto ref = objc::Ref<Tracked>::make();
        objc::Ref<Tracked> other = ref;
        EXPECT_EQ(countOf(Object{ref.self()}), 2u);
        Strong<> owner = other.takeOwner();
        EXPECT_FALSE(other);
        EXPECT_EQ(other.self(), nullptr);
        EXPECT_EQ(owner.self(), ref.self());
        EXPECT_EQ(countOf(owner), 2u);
    }
    EXPECT_EQ(Tracked::living, before);
}

TEST(Ownership, autoreleaseKeepsUntilThePoolEnds) {
    int before = Tracked::living;
    {
        objc::AutoreleasePool pool;
        objc::autorelease(makeTracked(1));
        EXPECT_EQ(Tracked::living, before + 1);
    }
    EXPECT_EQ(Tracked::living, before);
}

}  // namespace
