// Pictures out of bytes: both formats, their sizes, and bytes that are none.
#include <gtest/gtest.h>
#include <turbojpeg.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <vector>

#include "desktop/graphics/image_decoding.h"

namespace graphics {
namespace {

/// A JPEG file of one colour.
std::string jpeg(int width, int height, unsigned char red, unsigned char green, unsigned char blue) {
    std::vector<unsigned char> pixels;
    for (int i = 0; i < width * height; ++i) pixels.insert(pixels.end(), {red, green, blue});
    unsigned char* bytes = nullptr;
    unsigned long size = 0;
    tjhandle encoder = tjInitCompress();
    EXPECT_EQ(tjCompress2(encoder, pixels.data(), width, 0, height, TJPF_RGB, &bytes, &size, TJSAMP_444, 95, 0), 0);
    std::string file(reinterpret_cast<char*>(bytes), size);
    tjFree(bytes);
    tjDestroy(encoder);
    return file;
}

std::string png(int width, int height) {
    // Tests of this file run beside each other, each in a process of its own.
    const auto path =
        std::filesystem::path(testing::TempDir()) / ("image_decoding-" + std::to_string(getpid()) + ".png");
    EXPECT_EQ(Image({double(width), double(height)}, 1).writePng(path.string()), "");
    std::ifstream stream(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

TEST(ImageDecoding, aSmallPictureKeepsItsSize) {
    EXPECT_EQ(decodeImage(png(20, 10), 100)->pixelWidth(), 20);
    EXPECT_EQ(decodeImage(jpeg(20, 10, 0, 0, 0), 100)->pixelHeight(), 10);
}

TEST(ImageDecoding, aLargePictureIsMadeSmallerInItsProportions) {
    for (const std::string& file : {png(640, 320), jpeg(640, 320, 1, 2, 3)}) {
        const auto image = decodeImage(file, 192);
        ASSERT_TRUE(image);
        EXPECT_EQ(image->pixelWidth(), 192);
        EXPECT_EQ(image->pixelHeight(), 96);
    }
    EXPECT_EQ(decodeImage(jpeg(1000, 2, 0, 0, 0), 100)->pixelHeight(), 1);
}

TEST(ImageDecoding, coloursStayInTheirPlaces) {
    const auto image = decodeImage(jpeg(400, 400, 250, 100, 20), 64);
    ASSERT_TRUE(image);
    const std::uint32_t middle = image->pixel(32, 32);
    EXPECT_EQ(middle >> 24, 0xFFu);
    EXPECT_NEAR(double(middle >> 16 & 0xFF), 250, 4);
    EXPECT_NEAR(double(middle >> 8 & 0xFF), 100, 4);
    EXPECT_NEAR(double(middle & 0xFF), 20, 4);
}

TEST(ImageDecoding, aJpegThatIsCutOffShowsAsFarAsItGoes) {
    const std::string file = jpeg(64, 64, 9, 9, 9);
    EXPECT_TRUE(decodeImage(file.substr(0, file.size() - 20), 64));
}

TEST(ImageDecoding, bytesThatAreNoPictureAreRefusedWithTheReason) {
    EXPECT_EQ(decodeImage("", 64).error(), "It is neither a PNG nor a JPEG picture.");
    EXPECT_EQ(decodeImage("GIF89a", 64).error(), "It is neither a PNG nor a JPEG picture.");
    EXPECT_EQ(decodeImage(png(8, 8).substr(0, 30), 64).error(), "It is no complete PNG picture.");
    EXPECT_EQ(decodeImage("\xFF\xD8\xFF and so on", 64).error().substr(0, 22), "It is no JPEG picture:");
}

TEST(ImageDecoding, aPictureOfTooManyPixelsIsRefused) {
    std::string large = png(8, 8);
    large.replace(16, 8, std::string("\0\0\xFF\xFF\0\0\xFF\xFF", 8));
    EXPECT_EQ(decodeImage(large, 64).error(), "It is no complete PNG picture, or a far too large one.");
}

}  // namespace
}  // namespace graphics
