// Messages: null receivers, widened integers, structures, variable tails.
#include <gtest/gtest.h>

#include <cmath>

#include "fixtures/strings.h"

namespace {

struct Four {
    double a, b, c, d;
};

}  // namespace

template <>
struct objc::Encoding<Four> {
    static constexpr Name text{"{Four=dddd}"};
};

namespace {

using objc::Object;

class Echo : public objc::PeerBase {
  public:
    using Super = objc::Foreign<"NSObject">;
    static constexpr objc::Name className{"MessageTestEcho"};
    static void define(objc::ClassDefinition<Echo>& definition) {
        definition.method<"wide:", &Echo::wide>();
        definition.method<"four:", &Echo::four>();
        definition.method<"half:", &Echo::half>();
        definition.method<"not:", &Echo::negate>();
        definition.method<"fresh", &Echo::fresh>();
    }
    long wide(long value) { return value; }
    Four four(Four value) { return {value.d, value.c, value.b, value.a}; }
    float half(float value) { return value / 2; }
    bool negate(bool value) { return !value; }
    objc::Strong<Object> fresh() { return makeTracked(3); }
};

class Message : public ::testing::Test {
  protected:
    Message() { objc::registerClasses<Echo, Tracked>(); }
    objc::AutoreleasePool pool_;
    objc::Ref<Echo> echo_ = objc::Ref<Echo>::make();
};

TEST_F(Message, toNullAnswersZeroOfEveryKind) {
    Object nothing;
    EXPECT_EQ((objc::send<"wide:", long>(nothing, 5)), 0);
    EXPECT_EQ((objc::send<"half:", float>(nothing, 5.0f)), 0.0f);
    EXPECT_EQ((objc::send<"doubleValue", double>(nothing)), 0.0);
    EXPECT_EQ((objc::send<"not:", bool>(nothing, false)), false);
    EXPECT_EQ((objc::send<"fresh", Object>(nothing)).self, nullptr);
    Four four = objc::send<"four:", Four>(nothing, Four{1, 2, 3, 4});
    EXPECT_EQ(four.a + four.b + four.c + four.d, 0);
    objc::send<"release">(nothing);
    EXPECT_FALSE(objc::isKindOf(nothing, objc::classOf<Echo>()));
    EXPECT_FALSE(objc::respondsTo(nothing, objc::selector<"wide:">()));
}

TEST_F(Message, aNarrowIntegerIsWidenedByItsSign) {
    EXPECT_EQ((objc::send<"wide:", long>(echo_.self(), -1)), -1);
    EXPECT_EQ((objc::send<"wide:", long>(echo_.self(), 4000000000u)), 4000000000);
    EXPECT_EQ((objc::send<"wide:", long>(echo_.self(), static_cast<short>(-7))), -7);
    EXPECT_EQ((objc::send<"wide:", long>(echo_.self(), true)), 1);
}

TEST_F(Message, structuresFloatsAndBooleansTravelWhole) {
    Four four = objc::send<"four:", Four>(echo_.self(), Four{1, 2, 3, 4});
    EXPECT_EQ(four.a, 4);
    EXPECT_EQ(four.d, 1);
    EXPECT_EQ((objc::send<"half:", float>(echo_.self(), 5.0f)), 2.5f);
    EXPECT_TRUE((objc::send<"not:", bool>(echo_.self(), false)));
    EXPECT_FALSE((objc::send<"not:", bool>(echo_.self(), true)));
}

TEST_F(Message, aVariableTailReachesTheFormat) {
    auto text = objc::sendVariadic<"stringWithFormat:", Object>(Object{objc::raw(objc::classNamed<"NSString">())},
                                                                stringOf("%d %@ %.2f"), 42, stringOf("calls"), 1.5);
    EXPECT_EQ(textOf(text), "42 calls 1.50");
    EXPECT_EQ((objc::sendVariadic<"stringWithFormat:", Object>(Object{}, stringOf("%d"), 1)).self, nullptr);
}

TEST_F(Message, anOwnedAnswerIsAutoreleased) {
    int before = Tracked::living;
    {
        objc::AutoreleasePool inner;
        objc::send<"fresh", Object>(echo_.self());
        EXPECT_EQ(Tracked::living, before + 1);
    }
    EXPECT_EQ(Tracked::living, before);
}

TEST_F(Message, aSelectorKnownOnlyAtRunTimeIsSentToo) {
    EXPECT_EQ((objc::sendSelector<long>(echo_.self(), sel_registerName("wide:"), 12)), 12);
}

TEST_F(Message, aClassThatIsNotThereIsLookedUpAgain) {
    EXPECT_EQ(objc::classNamed<"MessageTestLater">(), nullptr);
    Class made = objc_allocateClassPair(objc::classNamed<"NSObject">(), "MessageTestLater", 0);
    objc_registerClassPair(made);
    EXPECT_EQ(objc::classNamed<"MessageTestLater">(), made);
}

}  // namespace
