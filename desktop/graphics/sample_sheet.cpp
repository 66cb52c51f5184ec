// Draws every symbol and samples of text on one picture, for the eye to judge: sample_sheet FILE.png SCALE.
#include <cstdio>
#include <cstdlib>
#include <string>

#include "desktop/graphics/icons.h"
#include "desktop/graphics/text.h"

namespace {

using namespace graphics;

constexpr Color darkBlue = Color::fromHex(0x03445F);
constexpr Color separator = Color::fromHex(0xC8C7CC);

void drawIcons(Canvas& canvas) {
    constexpr int columns = 10;
    int i = 0;
    for (const Symbol symbol : allSymbols()) {
        const Rect cell{{(i % columns) * 64.0, 16 + (i / columns) * 64.0}, {64, 56}};
        drawSymbol(canvas, symbol, centred(symbolSize(symbol), {cell.origin, {64, 36}}), darkBlue);
        drawText(canvas, symbolName(symbol), {{cell.left(), cell.top() + 36}, {64, 16}},
                 {.font = Font::system(9), .alignment = Alignment::Centre}, Color::gray(0.45));
        ++i;
    }
}

void drawRow(Canvas& canvas, double top, const char* name, const char* label, const char* date, const Color& color) {
    drawSymbol(canvas, Symbol::Outgoing, {{12, top + 17}, {10, 10}}, Color::gray(0.6));
    drawText(canvas, name, {{32, top + 4}, {180, 22}}, {.font = Font::boldSystem(17)}, color);
    drawText(canvas, label, {{32, top + 24}, {180, 16}}, {.font = Font::system(12)}, Color::gray(0.55));
    drawText(canvas, date, {{200, top}, {76, 44}}, {.font = Font::system(14), .alignment = Alignment::Right},
             Color::gray(0.55));
    drawSymbol(canvas, Symbol::Detail, {{287, top + 11}, {22, 22}}, darkBlue);
    canvas.horizontalHairline(32, 320, top + 44 - canvas.pixel(), separator);
}

void drawRows(Canvas& canvas) {
    drawRow(canvas, 0, "Anna Lindström (3)", "mobile", "14:05", Color::black());
    drawRow(canvas, 44, "+49 30 5550 1234", "Berlin, Deutschland", "Yesterday", Color::fromHex(0xE0322B));
    drawRow(canvas, 88, "Екатерина Сергеевна Иванова-Петровская", "рабочий", "вчера", Color::black());
    drawRow(canvas, 132, "عبد الرحمن الصالح", "الهاتف", "الأحد", Color::black());
    drawRow(canvas, 176, "山田太郎 👋🏽 👨‍👩‍👧", "自宅", "12/11/26", Color::black());
    drawRow(canvas, 220, "אברהם לוי", "FaceTime", "Monday", Color::black());
    for (int i = 0; i < 6; ++i) drawSpinner(canvas, {{20 + i * 40.0, 280}, {20, 20}}, Color::gray(0.3), i / 12.0);
}

void drawCard(Canvas& canvas) {
    const Rect card{{0, 0}, {270, 140}};
    canvas.shadow(card, 12, 24, {0, 6}, Color::black().withAlpha(0.25));
    canvas.fillRounded(card, 12, Color::white());
    drawText(canvas, "Delete all calls?", {{16, 16}, {238, 22}},
             {.font = Font::boldSystem(17), .alignment = Alignment::Centre}, Color::black());
    drawText(canvas, "Calls of this list are removed from the handset. This cannot be undone, so think twice.",
             {{16, 40}, {238, 48}}, {.font = Font::system(13), .alignment = Alignment::Centre, .lines = 2},
             Color::gray(0.2));
    canvas.horizontalHairline(0, 270, 96, separator);
    canvas.verticalHairline(135, 96, 140, separator);
    const TextStyle button{.font = Font::system(17), .alignment = Alignment::Centre};
    drawText(canvas, "Cancel", {{0, 96}, {135, 44}}, button, darkBlue);
    drawText(canvas, "Delete", {{135, 96}, {135, 44}}, button, Color::fromHex(0xE0322B));
    canvas.translate(0, 160);
    for (const double size : {11.0, 13.0, 17.0, 22.0, 34.0}) {
        drawText(canvas, "Recents 0123456789 Ägypten", {{0, 0}, {300, size * 1.3}}, {.font = Font::system(size)},
                 Color::black());
        canvas.translate(0, size * 1.4);
    }
}

}  // namespace

int main(int argumentCount, char** arguments) {
    if (argumentCount != 3 || std::atof(arguments[2]) <= 0) {
        std::fprintf(stderr, "usage: %s FILE.png SCALE\n", arguments[0]);
        return 2;
    }
    const Image sheet({640, 580}, std::atof(arguments[2]));
    Canvas canvas(sheet);
    canvas.fill({{}, sheet.size()}, Color::white());
    drawIcons(canvas);
    {
        const SavedState saved(canvas);
        canvas.translate(0, 230);
        drawRows(canvas);
    }
    canvas.translate(346, 240);
    drawCard(canvas);
    const std::string problem = sheet.writePng(arguments[1]);
    if (!problem.empty()) std::fprintf(stderr, "sample_sheet: %s\n", problem.c_str());
    return problem.empty() ? 0 : 1;
}
