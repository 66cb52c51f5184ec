// Rectangles and colours.
#include "desktop/graphics/geometry.h"

#include <gtest/gtest.h>
#include <rapidcheck.h>

#include "desktop/graphics/color.h"

namespace graphics {
namespace {

Rect anyRect() {
    const auto number = [](int low, int high) { return double(*rc::gen::inRange(low, high)); };
    return {{number(-20, 20), number(-20, 20)}, {number(0, 20), number(0, 20)}};
}

TEST(Geometry, theLeftAndTopEdgesAreInsideTheRightAndBottomOnesAreNot) {
    const Rect rect{{10, 20}, {30, 40}};
    EXPECT_TRUE(rect.contains({10, 20}));
    EXPECT_FALSE(rect.contains({40, 30}));
    EXPECT_FALSE(rect.contains({20, 60}));
}

TEST(Geometry, insetsBeyondTheSizeLeaveAnEmptyRectangle) {
    EXPECT_EQ((Rect{{0, 0}, {10, 10}}.inset(8, 1)), (Rect{{8, 1}, {0, 8}}));
}

TEST(Geometry, aUnionWithAnEmptyRectangleChangesNothing) {
    const Rect rect{{5, 5}, {10, 10}};
    EXPECT_EQ(rect.united({}), rect);
    EXPECT_EQ(Rect{}.united(rect), rect);
}

TEST(Geometry, aPointIsInTheIntersectionWhenItIsInBoth) {
    EXPECT_TRUE(rc::check([] {
        const Rect a = anyRect(), b = anyRect();
        const Point point{double(*rc::gen::inRange(-25, 45)), double(*rc::gen::inRange(-25, 45))};
        RC_ASSERT(a.intersection(b).contains(point) == (a.contains(point) && b.contains(point)));
        RC_ASSERT(!a.contains(point) || a.united(b).contains(point));
    }));
}

TEST(Color, aHexNumberNamesRedGreenAndBlue) {
    const Color color = Color::fromHex(0x03445F);
    EXPECT_DOUBLE_EQ(color.red, 3 / 255.0);
    EXPECT_DOUBLE_EQ(color.green, 68 / 255.0);
    EXPECT_DOUBLE_EQ(color.blue, 95 / 255.0);
    EXPECT_EQ(color.alpha, 1);
}

}  // namespace
}  // namespace graphics
