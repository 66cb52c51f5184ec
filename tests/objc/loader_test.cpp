// The plug-in loader: filters, damaged files, foreign images.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>

#include "desktop/substrate/substrate.h"
#include "fixtures/strings.h"

namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
namespace fs = std::filesystem;

class Loader : public ::testing::Test {
  protected:
    Loader() {
        fs::remove_all(directory_);
        fs::create_directories(directory_);
    }
    ~Loader() override { fs::remove_all(directory_); }

    void write(const std::string& name, const std::string& text) { std::ofstream(directory_ / name) << text; }
    void placeSample(const std::string& name) { fs::copy_file(SAMPLE_PLUGIN, directory_ / name); }
    std::size_t load(std::string_view bundle) {
        return substrate::loadPlugins(directory_, bundle, [this](const std::string& line) { lines_.push_back(line); });
    }

    fs::path directory_ = fs::temp_directory_path() / ("loader_test_" + std::to_string(getpid()));
    std::vector<std::string> lines_;
};

TEST_F(Loader, aPluginIsLoadedIntoTheProcessThatItsFilterNames) {
    placeSample("Sample.so");
    write("Sample.plist", "{ Filter = { Bundles = ( \"com.example.other\", \"com.example.phone\" ); }; }");
    EXPECT_EQ(load("com.example.mail"), 0u);
    EXPECT_EQ(objc_getClass("LoaderTestSample"), nullptr);
    EXPECT_EQ(load("com.example.phone"), 1u);
    EXPECT_NE(objc_getClass("LoaderTestSample"), nullptr);
    EXPECT_THAT(lines_, IsEmpty());
}

TEST_F(Loader, aFilterInXmlIsReadToo) {
    placeSample("Sample.so");
    write("Sample.plist",
          "<?xml version=\"1.0\"?><plist version=\"1.0\"><dict><key>Filter</key><dict><key>Bundles</key>"
          "<array><string>com.example.phone</string></array></dict></dict></plist>");
    EXPECT_EQ(load("com.example.mail"), 0u);
    EXPECT_EQ(load("com.example.phone"), 1u);
    EXPECT_THAT(lines_, IsEmpty());
}

TEST_F(Loader, withoutAFilterItIsLoadedEverywhere) {
    placeSample("Sample.dylib");
    EXPECT_EQ(load("com.example.any"), 1u);
}

TEST_F(Loader, ofTwoImagesOfOneNameTheFirstKindIsLoaded) {
    placeSample("Sample.so");
    write("Sample.dylib", "\xcf\xfa\xed\xfe the handset's");
    EXPECT_EQ(load("com.example.any"), 1u);
    EXPECT_THAT(lines_, IsEmpty());
}

TEST_F(Loader, aBadFilterIsReportedAndTheRestIsLoaded) {
    placeSample("A.so");
    write("A.plist", "{ Filter = { Bundles = ");
    placeSample("B.so");
    write("B.plist", "{ Filter = { Executables = ( phone ); }; }");
    placeSample("C.so");
    write("C.plist", "{ Filter = ( ); }");
    placeSample("D.so");
    write("D.plist", "{ Filter = { Bundles = ( ( ) ); }; }");
    placeSample("E.so");
    EXPECT_EQ(load("com.example.phone"), 1u);
    EXPECT_THAT(lines_, ElementsAre(HasSubstr("A.plist\" is not a property list"),
                                    HasSubstr("B.plist\" has no array Filter.Bundles"),
                                    HasSubstr("C.plist\" has no dictionary Filter"),
                                    HasSubstr("D.plist\" has something other than a text in Filter.Bundles")));
}

TEST_F(Loader, aDamagedImageIsReportedAndTheRestIsLoaded) {
    write("A.so", "this is no image");
    placeSample("B.so");
    fs::resize_file(directory_ / "B.so", fs::file_size(directory_ / "B.so") / 3);
    write("C.dylib", "\xcf\xfa\xed\xfe and more");
    write("D.so", "");
    placeSample("E.so");
    EXPECT_EQ(load("com.example.phone"), 1u);
    EXPECT_THAT(lines_, ElementsAre(HasSubstr("A.so\" is not an image"), HasSubstr("B.so\" is cut short"),
                                    HasSubstr("C.dylib\" is cut short"), HasSubstr("D.so\" is not an image")));
}

TEST_F(Loader, everyTruncationOfAnImageIsAnErrorAndNotACrash) {
    placeSample("Whole.so");
    auto size = fs::file_size(directory_ / "Whole.so");
    for (std::uintmax_t part = 0; part < 16; ++part) {
        fs::copy_file(directory_ / "Whole.so", directory_ / "Part.so", fs::copy_options::overwrite_existing);
        fs::resize_file(directory_ / "Part.so", size * part / 24);
        auto error = substrate::loadPlugin(directory_ / "Part.so");
        if (error) {
            EXPECT_THAT(*error, HasSubstr("Part.so\""));
        }
    }
    EXPECT_EQ(substrate::loadPlugin(directory_ / "Whole.so"), std::nullopt);
}

TEST_F(Loader, aNamedImageThatIsNotThereIsAnError) {
    auto error = substrate::loadPlugin(directory_ / "None.so");
    ASSERT_TRUE(error);
    EXPECT_THAT(*error, HasSubstr("None.so\" cannot be read: No such file or directory; name an image that exists"));
}

TEST_F(Loader, aDirectoryThatIsNotThereHoldsNothing) {
    fs::remove_all(directory_);
    EXPECT_EQ(load("com.example.phone"), 0u);
    EXPECT_THAT(lines_, IsEmpty());
}

TEST_F(Loader, aFileInThePlaceOfTheDirectoryIsReported) {
    fs::remove_all(directory_);
    std::ofstream(directory_) << "x";
    EXPECT_EQ(load("com.example.phone"), 0u);
    EXPECT_THAT(lines_, ElementsAre(HasSubstr("cannot be read: Not a directory")));
}

}  // namespace
