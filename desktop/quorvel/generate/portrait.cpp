// Head and shoulders out of circles and curves.
#include "desktop/quorvel/generate/portrait.h"

#include <numbers>

#include "desktop/graphics/canvas.h"

namespace quorvel {
namespace {

using graphics::Canvas;
using graphics::Color;
using graphics::Path;

constexpr double side = 192;
constexpr double pi = std::numbers::pi;
constexpr graphics::Point head{96, 84};
constexpr double headRadius = 40;

Color shade(std::uint32_t hex, double factor) {
    Color color = Color::fromHex(hex);
    color.red *= factor;
    color.green *= factor;
    color.blue *= factor;
    return color;
}

void drawHairBehind(Canvas& canvas, const Look& look) {
    const Color color = shade(look.hair, 0.85);
    if (look.style == Hair::Long) canvas.fillRounded({{48, 46}, {96, 106}}, 46, color);
    if (look.style == Hair::Bun) canvas.fillCircle({96, 34}, 20, color);
}

void drawShoulders(Canvas& canvas, const Look& look) {
    canvas.fillRounded({{82, 104}, {28, 46}}, 14, shade(look.skin, 0.88));
    Path shoulders;
    shoulders.moveTo({20, 192}).curveTo({22, 148}, {56, 140}, {78, 136}).curveTo({90, 150}, {102, 150}, {114, 136});
    shoulders.curveTo({136, 140}, {170, 148}, {172, 192}).close();
    canvas.fill(shoulders, Color::fromHex(look.clothes));
}

void drawHairInFront(Canvas& canvas, const Look& look) {
    Path hair;
    hair.arc(head, headRadius + 4, pi * 1.02, pi * 1.98);
    hair.curveTo({128, 66}, {112, 58}, {104, 56}).curveTo({88, 66}, {66, 68}, {52, 84}).close();
    canvas.fill(hair, Color::fromHex(look.hair));
}

void drawFace(Canvas& canvas, const Look& look) {
    canvas.fillCircle(head, headRadius, Color::fromHex(look.skin));
    const Color dark = Color::fromHex(0x3A2E2A);
    for (const double x : {81.0, 111.0}) {
        canvas.fillCircle({x, 86}, 3.2, dark);
        if (look.wearsGlasses) canvas.strokeCircle({x, 86}, 10, 2.4, dark);
    }
    if (look.wearsGlasses) canvas.line({91, 86}, {101, 86}, 2.4, dark);
    Path smile;
    smile.arc({96, 94}, 15, pi * 0.22, pi * 0.78);
    canvas.stroke(smile, 3, shade(look.skin, 0.6));
}

cairo_status_t append(void* text, const unsigned char* bytes, unsigned length) {
    static_cast<std::string*>(text)->append(reinterpret_cast<const char*>(bytes), length);
    return CAIRO_STATUS_SUCCESS;
}

}  // namespace

std::string portraitOf(const Look& look) {
    const graphics::Image image({side, side}, 1);
    {
        Canvas canvas(image);
        canvas.fillGradient({{}, {side, side}}, Color::fromHex(look.background), shade(look.background, 0.8));
        drawHairBehind(canvas, look);
        drawShoulders(canvas, look);
        drawFace(canvas, look);
        drawHairInFront(canvas, look);
    }
    std::string bytes;
    const bool isWritten = cairo_surface_write_to_png_stream(image.surface(), append, &bytes) == CAIRO_STATUS_SUCCESS;
    return isWritten ? bytes : std::string();
}

}  // namespace quorvel
