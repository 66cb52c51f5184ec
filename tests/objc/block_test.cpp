// Blocks filled by lambdas.
#include <gtest/gtest.h>

#include "objc/layer.h"

namespace {

struct Counts {
    int copies = 0;
    int destroyed = 0;
};
class Captured {
  public:
    explicit Captured(Counts* counts) : counts_(counts) {}
    Captured(const Captured& other) : counts_(other.counts_) { ++counts_->copies; }
    ~Captured() { ++counts_->destroyed; }
    int value() const { return 21; }

  private:
    Counts* counts_;
};

TEST(Block, callsTheLambdaWithItsArguments) {
    int factor = 3;
    objc::Block<int(int, double)> block = [factor](int a, double b) { return factor * a + static_cast<int>(b); };
    EXPECT_EQ(block(4, 2.0), 14);
}

TEST(Block, whatIsCapturedIsDestroyedAsOftenAsItIsMade) {
    Counts counts;
    {
        Captured captured(&counts);
        objc::Block<int()> block = [captured] { return captured.value() * 2; };
        EXPECT_EQ(block(), 42);
        EXPECT_EQ(counts.copies - counts.destroyed, 1) << "the copy in the block lives, beside the original";
    }
    EXPECT_EQ(counts.copies + 1, counts.destroyed);
}

TEST(Block, aCopyOfACopyIsTheSameBlock) {
    int calls = 0;
    objc::Block<void()> block = [&calls] { ++calls; };
    auto lent = objc::Block<void()>::copyOf(block.get());
    EXPECT_EQ(lent.get(), block.get());
    block = {};
    lent();
    EXPECT_EQ(calls, 1);
}

TEST(Block, isCalledByFunctionPointerAsACompilerWould) {
    objc::Block<int(int)> block = [](int value) { return value + 1; };
    auto* header = static_cast<const objc::BlockHeader*>(block.get());
    auto invoke = reinterpret_cast<int (*)(const void*, int)>(header->invoke);
    EXPECT_EQ(invoke(header, 1), 2);
}

TEST(Block, noneIsNone) {
    objc::Block<void()> none;
    EXPECT_FALSE(none);
    EXPECT_FALSE(objc::Block<void()>::copyOf(nullptr));
    objc::Block<void()> copy = none;
    EXPECT_EQ(copy.get(), nullptr);
}

}  // namespace
