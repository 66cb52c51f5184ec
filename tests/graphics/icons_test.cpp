// The symbols.
#include "desktop/graphics/icons.h"

#include <gtest/gtest.h>

#include "tests/graphics/pixels.h"

namespace graphics {
namespace {

class EverySymbol : public ::testing::TestWithParam<Symbol> {};

INSTANTIATE_TEST_SUITE_P(Symbols, EverySymbol, ::testing::ValuesIn(allSymbols().begin(), allSymbols().end()),
                         [](const auto& each) {
                             std::string name(symbolName(each.param));
                             std::erase(name, ' ');
                             return name;
                         });

TEST_P(EverySymbol, hasContentThatFillsMostOfItsBox) {
    for (const double scale : {1.0, 2.0, 3.0}) {
        const Image image = symbolImage(GetParam(), scale);
        const Rect ink = testing::inkBounds(image);
        const double longest = std::max(ink.width() / image.pixelWidth(), ink.height() / image.pixelHeight());
        EXPECT_GE(longest, 0.6) << "at scale " << scale;
    }
}

TEST_P(EverySymbol, hasTransparentCorners) {
    const Image image = symbolImage(GetParam(), 2);
    const int right = image.pixelWidth() - 1, bottom = image.pixelHeight() - 1;
    EXPECT_EQ(image.pixel(0, 0), 0u);
    EXPECT_EQ(image.pixel(right, 0), 0u);
    EXPECT_EQ(image.pixel(0, bottom), 0u);
    EXPECT_EQ(image.pixel(right, bottom), 0u);
}

TEST_P(EverySymbol, isNotCutOffByItsBox) {
    constexpr double room = 4;
    const Size size = symbolSize(GetParam());
    const Image image({size.width + 2 * room, size.height + 2 * room}, 2);
    Canvas canvas(image);
    drawSymbol(canvas, GetParam(), {{room, room}, size}, Color::black());
    const Rect box{{room * 2, room * 2}, {size.width * 2, size.height * 2}};
    EXPECT_EQ(testing::inkBounds(image).united(box), box);
}

TEST_P(EverySymbol, isABlackStencil) {
    const Image image = symbolImage(GetParam(), 2);
    for (int y = 0; y < image.pixelHeight(); ++y) {
        for (int x = 0; x < image.pixelWidth(); ++x) ASSERT_EQ(image.pixel(x, y) & 0xFFFFFF, 0u);
    }
}

TEST_P(EverySymbol, isNoDarkerWhereItsLinesCrossInATranslucentColour) {
    const Image image(symbolSize(GetParam()), 2);
    Canvas canvas(image);
    drawSymbol(canvas, GetParam(), {{}, image.size()}, Color::black().withAlpha(0.5));
    unsigned darkest = 0;
    for (int y = 0; y < image.pixelHeight(); ++y) {
        for (int x = 0; x < image.pixelWidth(); ++x) darkest = std::max(darkest, testing::alphaAt(image, x, y));
    }
    EXPECT_NEAR(darkest, 128, 1);
}

TEST(Symbols, areDrawnInTheColourAskedFor) {
    const Image image({24, 24}, 2);
    Canvas canvas(image);
    drawSymbol(canvas, Symbol::PhoneFilled, {{0, 0}, {24, 24}}, Color::fromHex(0x03445F));
    int solid = 0;
    for (int y = 0; y < 48; ++y) {
        for (int x = 0; x < 48; ++x) solid += image.pixel(x, y) == 0xFF03445F;
    }
    EXPECT_GT(solid, 200);
}

TEST(Symbols, aSpinnerLooksTheSameAfterAWholeTurnAndOtherwiseBefore) {
    const auto spinner = [](double turn) {
        Image image({20, 20}, 2);
        Canvas canvas(image);
        drawSpinner(canvas, {{0, 0}, {20, 20}}, Color::black(), turn);
        return image;
    };
    const Image start = spinner(0), whole = spinner(1), quarter = spinner(0.25);
    int differentFromWhole = 0, differentFromQuarter = 0;
    for (int y = 0; y < 40; ++y) {
        for (int x = 0; x < 40; ++x) {
            differentFromWhole += start.pixel(x, y) != whole.pixel(x, y);
            differentFromQuarter += start.pixel(x, y) != quarter.pixel(x, y);
        }
    }
    EXPECT_EQ(differentFromWhole, 0);
    EXPECT_GT(differentFromQuarter, 50);
}

}  // namespace
}  // namespace graphics
