// Pictures out of bytes: both formats, their sizes, and bytes that are none.
#include <gtest/gtest.h>
#include <turbojpeg.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <vector>

#include "desktop/graphics/image_decoding.h"
#include "desktop/graphics/jpeg_orientation.h"

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

/// The JPEG file with an Exif block in front that states the number as its orientation.
std::string withOrientation(const std::string& file, int number, bool bigEndian) {
    const auto value = static_cast<char>(number);
    const std::string tiff = bigEndian ? std::string("MM\0*\0\0\0\x08\0\x01\x01\x12\0\x03\0\0\0\x01\0", 19) + value +
                                             std::string("\0\0\0\0\0\0", 6)
                                       : std::string("II*\0\x08\0\0\0\x01\0\x12\x01\x03\0\x01\0\0\0", 18) + value +
                                             std::string("\0\0\0\0\0\0\0", 7);
    const std::string content = std::string("Exif\0\0", 6) + tiff;
    const auto length = static_cast<char>(content.size() + 2);
    return file.substr(0, 2) + std::string("\xFF\xE1\0", 3) + length + content + file.substr(2);
}

/// A JPEG file whose left half is black and whose right half is white, its upper edge red.
std::string threeSides() {
    constexpr int width = 96;
    constexpr int height = 48;
    std::vector<unsigned char> pixels;
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x) {
            const unsigned char light = x < width / 2 ? 0 : 255;
            const unsigned char isEdge = y < height / 3 ? 1 : 0;
            pixels.insert(pixels.end(), {isEdge ? static_cast<unsigned char>(255) : light,
                                         isEdge ? static_cast<unsigned char>(0) : light,
                                         isEdge ? static_cast<unsigned char>(0) : light});
        }
    unsigned char* bytes = nullptr;
    unsigned long size = 0;
    tjhandle encoder = tjInitCompress();
    EXPECT_EQ(tjCompress2(encoder, pixels.data(), width, 0, height, TJPF_RGB, &bytes, &size, TJSAMP_444, 95, 0), 0);
    std::string file(reinterpret_cast<char*>(bytes), size);
    tjFree(bytes);
    tjDestroy(encoder);
    return file;
}

/// 'r', 'b' or 'w': the colour there.
char colorAt(const Image& image, double x, double y) {
    const std::uint32_t pixel =
        image.pixel(static_cast<int>(x * image.pixelWidth()), static_cast<int>(y * image.pixelHeight()));
    const bool isRed = (pixel >> 16 & 0xFF) > 128;
    const bool isBlue = (pixel & 0xFF) > 128;
    return isRed ? (isBlue ? 'w' : 'r') : 'b';
}

TEST(ImageDecoding, aPictureStandsUprightHoweverTheCameraWasHeld) {
    struct Case {
        int number;
        bool isTurned;
        const char* sides;  // top, left, bottom, right, each a third in from the edge's middle
    };
    for (const Case& each :
         {Case{1, false, "rb-w"}, Case{2, false, "rw-b"}, Case{3, false, "-wrb"}, Case{4, false, "-brw"},
          Case{5, true, "brw-"}, Case{6, true, "b-wr"}, Case{7, true, "w-br"}, Case{8, true, "wrb-"},
          Case{0, false, "rb-w"}, Case{9, false, "rb-w"}}) {
        for (const bool bigEndian : {false, true}) {
            const auto image = decodeImage(withOrientation(threeSides(), each.number, bigEndian), 200);
            ASSERT_TRUE(image) << each.number;
            EXPECT_EQ(image->pixelWidth(), each.isTurned ? 48 : 96) << each.number;
            EXPECT_EQ(image->pixelHeight(), each.isTurned ? 96 : 48) << each.number;
            const std::string seen{colorAt(*image, 0.5, 0.1), colorAt(*image, 0.1, 0.5), colorAt(*image, 0.5, 0.9),
                                   colorAt(*image, 0.9, 0.5)};
            for (std::size_t side = 0; side < 4; ++side) {
                if (each.sides[side] == '-') continue;  // where black and white meet
                EXPECT_EQ(seen[side], each.sides[side]) << each.number << ' ' << side;
            }
        }
    }
}

TEST(ImageDecoding, anExifBlockThatIsCutOffAnywhereIsNoReasonToFail) {
    const std::string file = withOrientation(jpeg(8, 8, 9, 9, 9), 6, true);
    constexpr std::size_t endOfNumber = 32;
    for (std::size_t length = 2; length < endOfNumber; ++length)
        EXPECT_EQ(orientationOf(std::string_view(file).substr(0, length)), Orientation::topLeft) << length;
    EXPECT_EQ(orientationOf(file), Orientation::rightTop);
    EXPECT_EQ(orientationOf(""), Orientation::topLeft);
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
