// Type strings, derived from C++ types.
#include <gtest/gtest.h>

#include "fixtures/strings.h"

namespace {

struct Pair {
    double x, y;
};
enum class Mode : int { plain };
enum class Wide : unsigned long { plain };

}  // namespace

template <>
struct objc::Encoding<Pair> {
    static constexpr Name text{"{Pair=dd}"};
};

namespace {

template <class T>
std::string encoded() {
    return objc::Encoding<T>::text.text;
}

TEST(Encoding, everyTypeThatTravelsHasTheRuntimesSpelling) {
    EXPECT_EQ(encoded<bool>(), "C");
    EXPECT_EQ(encoded<signed char>(), "c");
    EXPECT_EQ(encoded<unsigned char>(), "C");
    EXPECT_EQ(encoded<short>(), "s");
    EXPECT_EQ(encoded<unsigned short>(), "S");
    EXPECT_EQ(encoded<int>(), "i");
    EXPECT_EQ(encoded<unsigned>(), "I");
    EXPECT_EQ(encoded<long>(), "q");
    EXPECT_EQ(encoded<unsigned long>(), "Q");
    EXPECT_EQ(encoded<long long>(), "q");
    EXPECT_EQ(encoded<float>(), "f");
    EXPECT_EQ(encoded<double>(), "d");
    EXPECT_EQ(encoded<id>(), "@");
    EXPECT_EQ(encoded<objc::Object>(), "@");
    EXPECT_EQ(encoded<objc::Strong<objc::Object>>(), "@");
    EXPECT_EQ(encoded<Tracked*>(), "@");
    EXPECT_EQ(encoded<Class>(), "#");
    EXPECT_EQ(encoded<SEL>(), ":");
    EXPECT_EQ(encoded<const char*>(), "r*");
    EXPECT_EQ(encoded<void*>(), "^v");
    EXPECT_EQ(encoded<Mode>(), "i");
    EXPECT_EQ(encoded<Wide>(), "Q");
    EXPECT_EQ(encoded<Pair>(), "{Pair=dd}");
}

TEST(Encoding, aMethodsTypeStringBeginsWithResultReceiverAndSelector) {
    EXPECT_STREQ((objc::methodEncoding<void>.text), "v@:");
    EXPECT_STREQ((objc::methodEncoding<objc::Object, int, const Pair&, bool>.text), "@@:i{Pair=dd}C");
}

TEST(Encoding, aRegisteredMethodCarriesItsTypeString) {
    Method setter = class_getInstanceMethod(objc::classOf<Tracked>(), objc::selector<"setValue:">());
    ASSERT_NE(setter, nullptr);
    EXPECT_STREQ(method_getTypeEncoding(setter), "v@:i");
}

TEST(Encoding, aSelectorIsTheSameAtEveryUseAndKnowsItsColons) {
    EXPECT_STREQ(sel_getName(objc::selector<"tableView:numberOfRowsInSection:">()), "tableView:numberOfRowsInSection:");
    EXPECT_EQ(objc::selector<"setValue:">(), objc::selector<"setValue:">());
    EXPECT_EQ((objc::Name{"a:b:c:"}.colons()), 3u);
    EXPECT_EQ((objc::Name{"plain"}.colons()), 0u);
}

}  // namespace
