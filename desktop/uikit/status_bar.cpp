// The status bar: five dots of signal, the clock, the battery, and spokes while the network is busy.
#include "desktop/uikit/status_bar.h"

#include <ctime>

#include "desktop/graphics/icons.h"
#include "desktop/graphics/text.h"
#include "desktop/uikit/application.h"

namespace uikit {
namespace {

constexpr std::string_view carrier = "Carrier";

std::function<std::string()>& clockText() {
    static std::function<std::string()> text;
    return text;
}

std::string localTime() {
    const std::time_t now = std::time(nullptr);
    std::tm local{};
    localtime_r(&now, &local);
    char text[8];
    std::strftime(text, sizeof text, "%H:%M", &local);
    return text;
}

void drawBattery(graphics::Canvas& canvas, const Rect& rect, const Color& color) {
    const Rect body{rect.origin, {rect.width() - 2.5, rect.height()}};
    canvas.strokeRounded(body, 2, 1, color);
    canvas.fillRounded(body.inset(2, 2), 0.5, color);
    canvas.fillRounded({{body.right() + 1, body.centre().y - 2}, {1.5, 4}}, 0.75, color);
}

}  // namespace

void setStatusBarClock(std::function<std::string()> clock) { clockText() = std::move(clock); }

void drawStatusBar(graphics::Canvas& canvas, const Rect& rect, const Color& color, const NetworkActivity& network) {
    constexpr int dots = 5;
    constexpr double radius = 2.75;
    double x = rect.left() + 6 + radius;
    for (int i = 0; i < dots; ++i, x += 7) canvas.fillCircle({x, rect.centre().y}, radius, color);
    graphics::TextStyle style;
    style.font = graphics::Font::system(12);
    drawText(canvas, carrier, {{x, rect.top()}, {60, rect.height()}}, style, color);
    if (network.visible) {
        const double right = x + measureText(carrier, style).width + 5;
        graphics::drawSpinner(canvas, {{right, rect.centre().y - 6}, {12, 12}}, color, network.turn);
    }
    style.font = graphics::Font::system(12, graphics::Weight::Semibold);
    style.alignment = graphics::Alignment::Centre;
    drawText(canvas, clockText() ? clockText()() : localTime(), rect, style, color);
    drawBattery(canvas, {{rect.right() - 30, rect.centre().y - 4.5}, {24, 9}}, color);
}

}  // namespace uikit
