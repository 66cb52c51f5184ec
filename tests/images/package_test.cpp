// The handset's package: what is in it, and that it comes out the same each time.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdlib>

#include "tests/images/files.h"

namespace {

using images::outputOf;
using testing::HasSubstr;

class Package : public testing::Test {
  protected:
    Package() {
        std::string name = (std::filesystem::temp_directory_path() / "package-XXXXXX").string();
        if (!mkdtemp(name.data())) throw std::runtime_error("no folder for the test");
        folder_ = name;
    }
    ~Package() override {
        std::error_code ignored;
        std::filesystem::remove_all(folder_, ignored);
    }
    std::filesystem::path pack(const std::string& name) const {
        const auto package = folder_ / name;
        const std::string command =
            std::string("'" PACKAGE_SCRIPT "' '" HANDSET_IMAGE "' 1.2.3 '") + package.string() + '\'';
        EXPECT_EQ(std::system(command.c_str()), 0);
        return package;
    }

    std::filesystem::path folder_;
};

TEST_F(Package, holdsTheImageAndItsFilterOwnedByRoot) {
    const auto list = outputOf("dpkg-deb --contents '" + pack("one.deb").string() + '\'');
    EXPECT_THAT(list, HasSubstr("-rwxr-xr-x root/root"));
    EXPECT_THAT(list, HasSubstr("./Library/MobileSubstrate/DynamicLibraries/QuorvelRR.dylib"));
    EXPECT_THAT(list, HasSubstr("./Library/MobileSubstrate/DynamicLibraries/QuorvelRR.plist"));
}

TEST_F(Package, saysWhatItIsAndNeeds) {
    const auto fields = outputOf("dpkg-deb --field '" + pack("one.deb").string() + '\'');
    EXPECT_THAT(fields, HasSubstr("Package: com.velmarin.quorvelrr\n"));
    EXPECT_THAT(fields, HasSubstr("Version: 1.2.3\n"));
    EXPECT_THAT(fields, HasSubstr("Architecture: iphoneos-arm\n"));
    EXPECT_THAT(fields, HasSubstr("Depends: "));
}

TEST_F(Package, isTheSameToTheLastByteWhenItIsMadeAgain) {
    const auto one = pack("one.deb");
    const auto two = pack("two.deb");
    EXPECT_EQ(images::textOf(one), images::textOf(two));
}

}  // namespace
