// Type strings, read.
#include "desktop/substrate/type_string.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using substrate::trace::readSignature;

std::string codes(const char* selector, const char* types) {
    auto signature = readSignature(selector, types);
    std::string text{signature.result.code};
    for (const auto& argument : signature.arguments) text += argument.code;
    return text;
}

TEST(TypeString, bothFormsAreRead) {
    EXPECT_EQ(codes("viewDidLoad", "v@:"), "v");
    EXPECT_EQ(codes("setValue:", "v20@0:8i16"), "vi");
    EXPECT_EQ(codes("tableView:cellForRowAtIndexPath:", "@@:@@"), "@@@");
    EXPECT_EQ(codes("setFrame:", "v@:{CGRect={CGPoint=dd}{CGSize=dd}}"), "v{");
    EXPECT_EQ(codes("setTitle:forState:", "v@:@\"NSString\"Q"), "v@Q");
    EXPECT_EQ(codes("perform:", "v@:@?"), "v^");
    EXPECT_EQ(codes("handleChanges", "v@"), "v");
    EXPECT_EQ(codes("updateHUD:", "v@:@@"), "v@");
    EXPECT_EQ(codes("hideHUD:", "v@:@i"), "vi");
    EXPECT_EQ(codes("showHUD:detailText:delegate:mode:", "v@:@@:@@:@@:@i"), "v@@@i");
    EXPECT_EQ(codes("updateNavigationBarButtonItems:groupEdit:", "v@:@i:@i"), "vii");
    EXPECT_EQ(codes("person:should:property:identifier:", "i@:@@:@@:i@:i@"), "i@@ii");
}

TEST(TypeString, whatIsNotSaidIsUnknown) {
    EXPECT_EQ(codes("some:thing:", nullptr), "???");
    EXPECT_EQ(codes("some:thing:", ""), "???");
    EXPECT_EQ(codes("some:thing:", "v@:i"), "v??");
    EXPECT_EQ(codes("some:", "v@:{Broken=dd"), "v{");
    EXPECT_EQ(codes("some:", "v@:{Opaque}"), "v?");
    EXPECT_EQ(codes("some:", "v@:(Union=id)"), "v?");
}

TEST(TypeString, structuresHaveTheirSizes) {
    auto frame = readSignature("frame", "{CGRect={CGPoint=dd}{CGSize=dd}}@:").result;
    EXPECT_EQ(frame.size, 32u);
    EXPECT_TRUE(frame.inMemory());
    auto point = readSignature("origin", "{CGPoint=dd}@:").result;
    EXPECT_EQ(point.size, 16u);
    EXPECT_FALSE(point.inMemory());
    auto mixed = readSignature("mixed", "{Mixed=cids}@:").result;
    EXPECT_EQ(mixed.size, 24u);
    EXPECT_EQ(mixed.alignment, 8u);
}

}  // namespace
