// One thread appends pages while others read the lists and counts.
#include <atomic>
#include <thread>

#include "desktop/dispatch/main_loop.h"
#include "fixture.h"

namespace quorvel::test {
namespace {

using ThreadsTest = CompanionTest;

TEST_F(ThreadsTest, readersSeeAGrowingListWithEveryEntryInItsPlace) {
    constexpr int calls = 300;
    std::vector<Call> written;
    for (int i = 0; i < calls; ++i) written.push_back({"100", noon + i});
    add(written);
    read(1, 0, all);
    std::atomic<bool> isDone{false};
    std::atomic<int> misplaced{0};
    std::thread reader([&] {
        const dispatch::AutoreleaseScope scope;
        while (!isDone) {
            const objc::AutoreleasePool pool;
            const auto present = list(all);
            const auto held = present.count();
            if (entry(present, held - 1).rowId != calls - static_cast<int>(held - 1)) ++misplaced;
            static_cast<void>(uikit::utf8(entry(present, held - 1).phoneNumber()));
            static_cast<void>(count(all));
        }
    });
    for (int held = 1; held < calls; held += 3) {
        const objc::AutoreleasePool pool;
        read(3, held, all);
        objc::send<"getTotalCallCount:", std::int64_t>(object(), all);
    }
    isDone = true;
    reader.join();
    EXPECT_EQ(misplaced, 0);
    EXPECT_EQ(list(all).count(), 300U);
}

TEST_F(ThreadsTest, textsThatAreSetMeanwhileAreReadWholeAndNoneIsLost) {
    add({{"100", noon, 0, 4, 1, "Anna"}});
    read(1, 0, all);
    CallEntry& shared = entry(list(all), 0);
    constexpr int rounds = 2000;
    std::atomic<int> wrong{0};
    const auto set = [&](auto setText, const char* one, const char* other) {
        const dispatch::AutoreleaseScope scope;
        for (int round = 0; round <= rounds; ++round) {
            const objc::AutoreleasePool pool;
            (shared.*setText)(ns(round % 2 == 0 ? one : other));
        }
    };
    std::thread naming([&] { set(&CallEntry::setText<&CounterpartTexts::name>, "Berta", "Clara"); });
    std::thread placing([&] { set(&CallEntry::setText<&CounterpartTexts::location>, "Rome", "Oslo"); });
    std::thread reading([&] {
        const dispatch::AutoreleaseScope scope;
        for (int round = 0; round < rounds; ++round) {
            const objc::AutoreleasePool pool;
            const auto name = uikit::utf8(shared.text<&CounterpartTexts::name>());
            if (name != "Anna" && name != "Berta" && name != "Clara") ++wrong;
            if (uikit::utf8(shared.phoneNumber()) != "100") ++wrong;
        }
    });
    naming.join();
    placing.join();
    reading.join();
    EXPECT_EQ(wrong, 0);
    EXPECT_EQ(uikit::utf8(shared.text<&CounterpartTexts::name>()), "Berta");
    EXPECT_EQ(uikit::utf8(shared.text<&CounterpartTexts::location>()), "Rome");
}

TEST_F(ThreadsTest, twoReadersOfOnePageAppendItOnce) {
    std::vector<Call> written;
    for (int i = 0; i < 50; ++i) written.push_back({"100", noon + i});
    add(written);
    const auto work = [] {
        const dispatch::AutoreleaseScope scope;
        for (int held = 0; held < 50; held += 10) read(10, held, all);
    };
    std::thread one(work);
    std::thread other(work);
    one.join();
    other.join();
    EXPECT_EQ(list(all).count(), 50U);
    EXPECT_EQ(rowIds(list(all)).back(), 1);
}

}  // namespace
}  // namespace quorvel::test
