// The image that the thread sanitizer watches: that it is instrumented, and that what it does is seen.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <atomic>
#include <set>
#include <string>
#include <thread>

#include "desktop/substrate/mach_image.h"
#include "desktop/substrate/mach_loader.h"
#include "objc/class.h"
#include "platform/foundation.h"
#include "tests/images/files.h"

namespace {

int reports = 0;

}  // namespace

namespace __tsan {

class ReportDesc;

/// In place of the runtime's, for this whole process: counts the report, and takes it for dealt with.
__attribute__((visibility("default"), no_sanitize("thread"))) bool OnReport(const ReportDesc*, bool) {
    __atomic_fetch_add(&reports, 1, __ATOMIC_RELAXED);
    return true;
}

}  // namespace __tsan

namespace {

substrate::mach::Image imageIn(const std::vector<char>& content) {
    auto parsed = substrate::mach::parse(images::bytesOf(content));
    EXPECT_FALSE(std::holds_alternative<std::string>(parsed)) << std::get<std::string>(parsed);
    return std::get<substrate::mach::Image>(std::move(parsed));
}

TEST(TheInstrumentedImage, tellsOfItsAccessesItsAtomicsAndTheOrderOfItsCounts) {
    const auto content = images::contentOf(INSTRUMENTED_IMAGE);
    const auto binds = substrate::mach::bindsOf(imageIn(content));
    std::set<std::string> imports;
    for (const auto& bind : std::get<std::vector<substrate::mach::Bind>>(binds)) imports.insert(bind.symbol);
    EXPECT_THAT(imports, testing::IsSupersetOf({"___tsan_read8", "___tsan_write8", "___tsan_atomic64_exchange",
                                                "___tsan_atomic64_compare_exchange_val", "___tsan_release"}));
}

class Counters : public testing::Test {
  protected:
    static void SetUpTestSuite() {
        static const auto trouble = substrate::mach::load(images::bytesOf(images::contentOf(COUNTERS_IMAGE)));
        ASSERT_EQ(trouble, std::nullopt);
    }
    static Class counters() { return reinterpret_cast<Class>(objc_getClass("CountersOfImage")); }

    /// Sends the message on two threads, on one behind the other, in an order that only chance could have made: a
    /// relaxed flag orders nothing else. Answers how many races were reported.
    template <objc::Name message>
    static int racesOf() {
        const auto object = objc::make<NSObject>(counters());
        // The first message of a kind makes an order of its own, as it is looked up.
        EXPECT_EQ((objc::send<message, long>(object.get())), 1);
        const int before = __atomic_load_n(&reports, __ATOMIC_RELAXED);
        std::atomic<bool> isSecondsTurn = false;
        long answers[2] = {};
        std::thread second([&] {
            while (!isSecondsTurn.load(std::memory_order_relaxed)) std::this_thread::yield();
            answers[1] = objc::send<message, long>(object.get());
        });
        std::thread first([&] {
            answers[0] = objc::send<message, long>(object.get());
            isSecondsTurn.store(true, std::memory_order_relaxed);
        });
        first.join();
        second.join();
        EXPECT_EQ(answers[0], 2);
        EXPECT_EQ(answers[1], 3);
        return __atomic_load_n(&reports, __ATOMIC_RELAXED) - before;
    }

    objc::AutoreleasePool pool_;
};

TEST_F(Counters, raceWhereThreadsAddPlainly) { EXPECT_GT(racesOf<"addPlainly">(), 0); }

TEST_F(Counters, doNotRaceWhereThreadsAddAtomically) { EXPECT_EQ(racesOf<"addAtomically">(), 0); }

TEST_F(Counters, lieAtARoundAddressSoThatReportsCanBeRead) {
    const auto content = images::contentOf(COUNTERS_IMAGE);
    const auto image = imageIn(content);
    const auto function =
        reinterpret_cast<std::uint64_t>(class_getMethodImplementation(counters(), objc::selector<"addPlainly">()));
    EXPECT_GE(function, 0x7F0000000000U);
    EXPECT_LT(function, 0x7F0000000000U + image.extent);
}

}  // namespace
