// Pictures in files.
#include "desktop/graphics/image.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "tests/graphics/pixels.h"

namespace graphics {
namespace {

using ::testing::HasSubstr;

class ImageFiles : public ::testing::Test {
  protected:
    void SetUp() override {
        const auto* test = ::testing::UnitTest::GetInstance()->current_test_info();
        folder_ = std::filesystem::temp_directory_path() / ("graphics-" + std::string(test->name()));
        std::filesystem::remove_all(folder_);
        std::filesystem::create_directories(folder_);
    }
    void TearDown() override { std::filesystem::remove_all(folder_); }

    std::string path(const std::string& name) const { return (folder_ / name).string(); }

    static Image filled(Size size, double scale, const Color& color) {
        const Image image(size, scale);
        Canvas(image).fill(Rect{{}, size}, color);
        return image;
    }

    std::filesystem::path folder_;
};

TEST_F(ImageFiles, aWrittenPictureIsReadBackWithItsPixels) {
    ASSERT_EQ(filled({4, 3}, 1, {1, 0, 0, 1}).writePng(path("red.png")), "");
    const Result<Image> image = Image::load(path("red.png"));
    ASSERT_TRUE(image) << image.error();
    EXPECT_EQ(image->size(), (Size{4, 3}));
    EXPECT_EQ(image->pixel(3, 2), 0xFFFF0000u);
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder_), {}), 1);
}

TEST_F(ImageFiles, theVariantForTheDisplaysScaleIsTaken) {
    for (const int scale : {1, 2, 3}) {
        const std::string suffix = scale == 1 ? "" : "@" + std::to_string(scale) + "x";
        ASSERT_EQ(filled({10, 10}, scale, Color::black()).writePng(path("icon" + suffix + ".png")), "");
    }
    const std::pair<double, double> expected[] = {{1, 1}, {1.5, 2}, {2, 2}, {3, 3}, {4, 3}};
    for (const auto& [display, scale] : expected) {
        const Result<Image> image = Image::load(path("icon.png"), display);
        ASSERT_TRUE(image) << image.error();
        EXPECT_EQ(image->scale(), scale) << "for a display of " << display;
        EXPECT_EQ(image->size(), (Size{10, 10}));
    }
}

TEST_F(ImageFiles, aSmallerVariantStandsInWhereTheSharpOneIsMissing) {
    ASSERT_EQ(filled({10, 10}, 1, Color::black()).writePng(path("icon.png")), "");
    const Result<Image> image = Image::load(path("icon.png"), 3);
    ASSERT_TRUE(image) << image.error();
    EXPECT_EQ(image->scale(), 1);
}

TEST_F(ImageFiles, aNameThatStatesItsScaleIsTakenAtItsWord) {
    ASSERT_EQ(filled({10, 10}, 2, Color::black()).writePng(path("icon@2x.png")), "");
    const Result<Image> image = Image::load(path("icon@2x.png"), 1);
    ASSERT_TRUE(image) << image.error();
    EXPECT_EQ(image->size(), (Size{10, 10}));
}

TEST_F(ImageFiles, aMissingFileIsNamedInTheError) {
    const Result<Image> image = Image::load(path("nowhere.png"));
    EXPECT_FALSE(image);
    EXPECT_THAT(image.error(), HasSubstr(path("nowhere.png")));
    EXPECT_THAT(image.error(), HasSubstr("no such file"));
}

TEST_F(ImageFiles, aFileThatIsNoPictureIsNamedInTheError) {
    std::ofstream(path("text.png")) << "this is no picture";
    const Result<Image> image = Image::load(path("text.png"));
    EXPECT_FALSE(image);
    EXPECT_THAT(image.error(), HasSubstr(path("text.png")));
    EXPECT_THAT(image.error(), HasSubstr("not a complete PNG"));
}

TEST_F(ImageFiles, aPictureCutShortIsAnError) {
    ASSERT_EQ(filled({40, 40}, 1, Color::black()).writePng(path("half.png")), "");
    std::filesystem::resize_file(path("half.png"), std::filesystem::file_size(path("half.png")) / 2);
    EXPECT_FALSE(Image::load(path("half.png")));
}

TEST_F(ImageFiles, aPictureThatCannotBeWrittenIsNamedAndLeavesNothing) {
    const std::string error = filled({4, 4}, 1, Color::black()).writePng(path("missing/picture.png"));
    EXPECT_THAT(error, HasSubstr(path("missing/picture.png")));
    EXPECT_TRUE(std::filesystem::is_empty(folder_));
}

TEST(Image, tintingKeepsTheAlphaAndReplacesTheColour) {
    const Image image({2, 1}, 1);
    Canvas(image).fill(Rect{{0, 0}, {1, 1}}, Color::black());
    const Image tinted = image.tinted({0, 0, 1, 1});
    EXPECT_EQ(tinted.pixel(0, 0), 0xFF0000FFu);
    EXPECT_EQ(tinted.pixel(1, 0), 0u);
    EXPECT_EQ(image.pixel(0, 0), 0xFF000000u) << "the stencil itself stays as it is";
}

TEST(Image, anEmptyImageHasNoPixelsAndCannotBeWritten) {
    const Image image;
    EXPECT_FALSE(image);
    EXPECT_EQ(image.pixel(0, 0), 0u);
    EXPECT_FALSE(image.tinted(Color::black()));
    EXPECT_THAT(image.writePng("/nowhere.png"), HasSubstr("it is empty"));
}

}  // namespace
}  // namespace graphics
