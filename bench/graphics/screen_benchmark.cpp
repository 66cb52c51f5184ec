// Drawing a screen full of text: twelve rows of a call log under a bar, as a phone shows them.
#include <benchmark/benchmark.h>

#include <string>

#include "desktop/graphics/icons.h"
#include "desktop/graphics/text.h"

namespace {

using namespace graphics;

constexpr Size screen{320, 568};
constexpr Color darkBlue = Color::fromHex(0x03445F);
constexpr Color gray = Color::gray(0.55);
constexpr const char* names[] = {"Anna Lindström (3)", "+49 30 5550 1234",         "Екатерина Иванова-Петровская",
                                 "عبد الرحمن الصالح",  "Grandma 👵🏽 at home", "אברהם לוי"};

void drawRow(Canvas& canvas, int number, int generation) {
    const std::string place = generation == 0 ? "mobile" : "place " + std::to_string(generation * 12 + number);
    drawSymbol(canvas, Symbol::Outgoing, {{12, 15}, {14, 14}}, gray);
    drawText(canvas, names[number % 6], {{32, 4}, {180, 22}}, {.font = Font::boldSystem(17)}, Color::black());
    drawText(canvas, place, {{32, 24}, {180, 16}}, {.font = Font::system(12)}, gray);
    drawText(canvas, "Yesterday", {{200, 0}, {76, 44}}, {.font = Font::system(14), .alignment = Alignment::Right},
             gray);
    drawSymbol(canvas, Symbol::Detail, {{287, 11}, {22, 22}}, darkBlue);
    canvas.horizontalHairline(32, 320, 44 - canvas.pixel(), gray);
}

void drawScreen(Canvas& canvas, int generation) {
    canvas.fill(Rect{{}, screen}, Color::white());
    drawText(canvas, "Recents", {{0, 0}, {320, 40}}, {.font = Font::boldSystem(17), .alignment = Alignment::Centre},
             darkBlue);
    for (int row = 0; row < 12; ++row) {
        const SavedState saved(canvas);
        canvas.translate(0, 40 + row * 44);
        drawRow(canvas, row, generation);
    }
}

/// The same screen again, at this many hundredths of a pixel a point.
void redrawScreen(benchmark::State& state) {
    const Image image(screen, static_cast<double>(state.range(0)) / 100);
    Canvas canvas(image);
    for (auto _ : state) drawScreen(canvas, 0);
}
BENCHMARK(redrawScreen)->Arg(100)->Arg(150)->Arg(200)->Arg(300)->Unit(benchmark::kMillisecond);

/// A screen with twelve texts that were never drawn before, as when the list scrolls by a page.
void drawNewScreen(benchmark::State& state) {
    const Image image(screen, 2);
    Canvas canvas(image);
    int generation = 0;
    for (auto _ : state) drawScreen(canvas, ++generation);
}
BENCHMARK(drawNewScreen)->Unit(benchmark::kMillisecond);

}  // namespace
