// Shapes on the grid of pixels.
#include "desktop/graphics/canvas.h"

#include <gtest/gtest.h>
#include <rapidcheck.h>

#include <cmath>
#include <numbers>

#include "tests/graphics/pixels.h"

namespace graphics {
namespace {

constexpr std::uint32_t black = 0xFF000000;

class CanvasAtScale : public ::testing::TestWithParam<double> {};

INSTANTIATE_TEST_SUITE_P(Scales, CanvasAtScale, ::testing::Values(1, 1.25, 1.5, 2, 3),
                         [](const auto& each) { return std::to_string(std::lround(each.param * 100)) + "percent"; });

TEST_P(CanvasAtScale, aHorizontalHairlineIsOneWholePixelHigh) {
    const Image image({20, 20}, GetParam());
    Canvas canvas(image);
    canvas.translate(0, 0.3);
    canvas.horizontalHairline(0, 20, 10.4, Color::black());
    int rows = 0;
    for (int y = 0; y < image.pixelHeight(); ++y) {
        const std::uint32_t pixel = image.pixel(5, y);
        EXPECT_TRUE(pixel == 0 || pixel == black) << "row " << y;
        rows += pixel == black;
    }
    EXPECT_EQ(rows, 1);
}

TEST_P(CanvasAtScale, aVerticalHairlineIsOneWholePixelWide) {
    const Image image({20, 20}, GetParam());
    Canvas canvas(image);
    canvas.verticalHairline(7.7, 0, 20, Color::black());
    int columns = 0;
    for (int x = 0; x < image.pixelWidth(); ++x) {
        const std::uint32_t pixel = image.pixel(x, 5);
        EXPECT_TRUE(pixel == 0 || pixel == black) << "column " << x;
        columns += pixel == black;
    }
    EXPECT_EQ(columns, 1);
}

TEST_P(CanvasAtScale, aHairlineAtTheBottomEdgeIsTheLastRow) {
    const Image image({20, 20}, GetParam());
    Canvas canvas(image);
    canvas.horizontalHairline(0, 20, 20 - canvas.pixel(), Color::black());
    EXPECT_EQ(image.pixel(3, image.pixelHeight() - 1), black);
    EXPECT_EQ(image.pixel(3, image.pixelHeight() - 2), 0u);
}

TEST_P(CanvasAtScale, aHairlineFrameIsOnePixelOnEachSide) {
    const Image image({20, 20}, GetParam());
    Canvas canvas(image);
    canvas.hairlineFrame({{0, 0}, {20, 20}}, Color::black());
    const int last = image.pixelWidth() - 1, middle = image.pixelWidth() / 2;
    EXPECT_EQ(image.pixel(0, middle), black);
    EXPECT_EQ(image.pixel(1, middle), 0u);
    EXPECT_EQ(image.pixel(last, middle), black);
    EXPECT_EQ(image.pixel(last - 1, middle), 0u);
    EXPECT_EQ(image.pixel(middle, 0), black);
    EXPECT_EQ(image.pixel(middle, last), black);
}

TEST(Canvas, aSnappedRectangleFillsWholePixels) {
    EXPECT_TRUE(rc::check([] {
        const Image image({12, 12}, *rc::gen::inRange(4, 13) / 4.0);
        Canvas canvas(image);
        const double x = *rc::gen::inRange(0, 40) / 10.0, width = *rc::gen::inRange(1, 40) / 10.0;
        canvas.fill(canvas.snapped({{x, x}, {width, width}}), Color::black());
        int filled = 0;
        for (int y = 0; y < image.pixelHeight(); ++y) {
            for (int column = 0; column < image.pixelWidth(); ++column) {
                const std::uint32_t pixel = image.pixel(column, y);
                RC_ASSERT(pixel == 0 || pixel == black);
                filled += pixel == black;
            }
        }
        RC_ASSERT(filled >= 1);
    }));
}

TEST(Canvas, aGroupIsOnePictureWhenItFades) {
    const Image image({10, 10}, 1);
    Canvas canvas(image);
    canvas.beginGroup();
    canvas.fill(Rect{{0, 0}, {8, 8}}, Color::black());
    canvas.fill(Rect{{2, 2}, {8, 8}}, Color::black());
    canvas.endGroup(0.5);
    EXPECT_EQ(testing::alphaAt(image, 1, 1), testing::alphaAt(image, 4, 4));
    EXPECT_NEAR(testing::alphaAt(image, 4, 4), 128, 1);
}

TEST(Canvas, aRoundedClipKeepsTheCornersFree) {
    const Image image({20, 20}, 2);
    Canvas canvas(image);
    canvas.clipRounded({{0, 0}, {20, 20}}, 8);
    canvas.fill(Rect{{0, 0}, {20, 20}}, Color::black());
    EXPECT_EQ(image.pixel(0, 0), 0u);
    EXPECT_EQ(image.pixel(39, 39), 0u);
    EXPECT_EQ(image.pixel(20, 0), black);
}

TEST(Canvas, restoringBringsBackTransformationAndClip) {
    const Image image({20, 20}, 1);
    Canvas canvas(image);
    {
        const SavedState saved(canvas);
        canvas.translate(5, 5);
        canvas.clip(Rect{{0, 0}, {1, 1}});
    }
    canvas.fill(Rect{{0, 0}, {20, 20}}, Color::black());
    EXPECT_EQ(image.pixel(0, 0), black);
    EXPECT_EQ(image.pixel(19, 19), black);
}

TEST(Canvas, aShadowFadesAwayFromTheCard) {
    const Image image({100, 100}, 1);
    Canvas canvas(image);
    canvas.shadow({{30, 30}, {40, 40}}, 6, 18, {0, 0}, Color::black());
    const unsigned inside = testing::alphaAt(image, 50, 50), edge = testing::alphaAt(image, 30, 50),
                   outside = testing::alphaAt(image, 22, 50), far = testing::alphaAt(image, 5, 50);
    EXPECT_GT(inside, edge);
    EXPECT_GT(edge, outside);
    EXPECT_GT(outside, 0u);
    EXPECT_EQ(far, 0u);
}

TEST(Canvas, aRotatedImageTurnsClockwise) {
    const Image arrow({4, 4}, 1);
    Canvas(arrow).fill(Rect{{0, 0}, {4, 1}}, Color::black());  // a bar along its top
    const Image image({20, 20}, 1);
    Canvas canvas(image);
    canvas.translate(10, 10);
    canvas.rotate(std::numbers::pi / 2);
    canvas.draw(arrow, {{-2, -2}, {4, 4}});
    EXPECT_GT(testing::alphaAt(image, 11, 10), 200u);
    EXPECT_LT(testing::alphaAt(image, 8, 10), 50u);
}

}  // namespace
}  // namespace graphics
