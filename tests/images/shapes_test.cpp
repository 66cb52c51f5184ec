// Arguments and results of each shape, between this process and an image of each form.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdarg>
#include <cstdio>
#include <string>
#include <vector>

#include "desktop/substrate/mach_loader.h"
#include "objc/class.h"
#include "platform/coregraphics.h"
#include "platform/foundation.h"
#include "tests/images/files.h"

namespace {

using testing::ElementsAre;

std::string format(const char* pattern, ...) {
    char text[256];
    va_list arguments;
    va_start(arguments, pattern);
    std::vsnprintf(text, sizeof text, pattern, arguments);
    va_end(arguments);
    return text;
}

id formatObject(id, SEL, id pattern, ...) {
    va_list arguments;
    va_start(arguments, pattern);
    char text[256];
    std::vsnprintf(text, sizeof text, objc::send<"UTF8String", const char*>(pattern), arguments);
    va_end(arguments);
    return NSString::stringWithUTF8String(text).self;
}

/// Answers known values and writes down what it is given.
class Receiver : public objc::PeerBase {
  public:
    using Super = objc::Foreign<"NSObject">;
    static constexpr objc::Name className{"ShapesReceiver"};
    static void define(objc::ClassDefinition<Receiver>& definition) {
        definition.method<"point", &Receiver::point>()
            .method<"size", &Receiver::size>()
            .method<"rect", &Receiver::rect>()
            .method<"yes", &Receiver::yes>()
            .method<"no", &Receiver::no>()
            .method<"small", &Receiver::small>()
            .method<"wide", &Receiver::wide>()
            .method<"natural", &Receiver::natural>()
            .method<"single", &Receiver::single>()
            .method<"double", &Receiver::fraction>()
            .method<"takePoint:size:rect:", &Receiver::takeGeometry>()
            .method<"takeFlag:other:", &Receiver::takeFlags>()
            .method<"takeSmall:wide:unsigned:", &Receiver::takeIntegers>()
            .method<"takeSingle:double:", &Receiver::takeFractions>()
            .method<"a:b:c:d:e:f:g:h:", &Receiver::takeMany>()
            .method<"takeObject:", &Receiver::takeObject>()
            .method<"number:fraction:", &Receiver::numberAndFraction>();
    }
    CGPoint point() { return {1.5, -2.5}; }
    CGSize size() { return {3.25, 4.75}; }
    CGRect rect() { return {{5, 6}, {7, 8}}; }
    bool yes() { return true; }
    bool no() { return false; }
    int small() { return -7; }
    std::int64_t wide() { return -5'000'000'000; }
    unsigned long natural() { return 18'000'000'000'000'000'000U; }
    float single() { return 0.5F; }
    double fraction() { return 0.125; }
    void takeGeometry(CGPoint point, CGSize size, CGRect rect) {
        add(format("geometry %g %g %g %g %g %g %g %g", point.x, point.y, size.width, size.height, rect.origin.x,
                   rect.origin.y, rect.size.width, rect.size.height));
    }
    void takeFlags(bool flag, bool other) { add(format("flags %d %d", flag, other)); }
    void takeIntegers(int small, std::int64_t wide, unsigned long natural) {
        add(format("integers %d %lld %lu", small, static_cast<long long>(wide), natural));
    }
    void takeFractions(float single, double fraction) { add(format("fractions %g %g", single, fraction)); }
    void takeMany(long a, double b, long c, double d, long e, double f, long g, double h) {
        add(format("many %ld %g %ld %g %ld %g %ld %g", a, b, c, d, e, f, g, h));
    }
    void takeObject(objc::Object text) { add(objc::send<"UTF8String", const char*>(text)); }
    objc::Object numberAndFraction(long number, double fraction) {
        return NSString::stringWithUTF8String(format("%ld and %g", number, fraction).c_str());
    }

    std::vector<std::string> heard;

  private:
    void add(std::string line) { heard.push_back(std::move(line)); }
};

class Shapes : public testing::TestWithParam<const char*> {
  protected:
    static void SetUpTestSuite() {
        objc::registerClasses<Receiver>();
        class_addMethod(objc::classOf<Receiver>(), objc::selector<"format:">(),
                        reinterpret_cast<IMP>(reinterpret_cast<void (*)()>(&formatObject)), "@@:@");
        static const auto trouble = substrate::mach::load(images::bytesOf(images::contentOf(SHAPES_IMAGE)));
        ASSERT_EQ(trouble, std::nullopt);
    }
    void SetUp() override {
        shapes_ = objc::make<NSObject>(reinterpret_cast<Class>(objc_getClass(GetParam())));
        ASSERT_TRUE(shapes_) << GetParam();
    }

    objc::AutoreleasePool pool_;
    objc::Strong<NSObject> shapes_;
};

TEST_P(Shapes, arriveAndComeBackAsTheyAre) {
    const auto receiver = objc::Ref<Receiver>::make();
    objc::send<"callAll:">(shapes_.get(), objc::Object{receiver->self});
    EXPECT_THAT(receiver->heard, ElementsAre("geometry 1.5 -2.5 3.25 4.75 5 6 7 8", "flags 1 0",
                                             "integers -7 -5000000000 18000000000000000000", "fractions 0.5 0.125",
                                             "many 1 2.5 3 4.5 5 6.5 7 8.5", "-7 2.25 tail", "-7 and 2.25",
                                             "geometry 0 0 0 0 0 0 0 0", "fractions 0 0"));
}

TEST_P(Shapes, reachTheImageAsTheyAre) {
    const auto rect =
        objc::send<"point:size:rect:", CGRect>(shapes_.get(), CGPoint{1, 2}, CGSize{3, 4}, CGRect{{10, 20}, {30, 40}});
    EXPECT_EQ(rect.origin.x, 11);
    EXPECT_EQ(rect.origin.y, 22);
    EXPECT_EQ(rect.size.width, 33);
    EXPECT_EQ(rect.size.height, 44);
    EXPECT_EQ((objc::send<"flag:small:wide:", std::int64_t>(shapes_.get(), true, -7, std::int64_t{5'000'000'000})),
              5'000'000'993);
    EXPECT_EQ((objc::send<"flag:small:wide:", std::int64_t>(shapes_.get(), false, 7, std::int64_t{-1})), 6);
    EXPECT_EQ((objc::send<"single:double:", double>(shapes_.get(), 0.5F, 0.125)), 0.625);
    EXPECT_EQ((objc::send<"scaled:by:", float>(shapes_.get(), 1.5F, -2.0)), -3.0F);
}

// The classes below those override what is asked for here, and send it on to what they inherit.
INSTANTIATE_TEST_SUITE_P(Images, Shapes,
                         testing::Values("ShapesOfTest", "ShapesOfImage", "ShapesOfTestBelow", "ShapesOfImageBelow"),
                         [](const auto& each) { return std::string(each.param); });

}  // namespace
