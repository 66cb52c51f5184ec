// Measuring and drawing text.
#include "desktop/graphics/text.h"

#include <gtest/gtest.h>
#include <rapidcheck.h>

#include <thread>

#include "desktop/graphics/text_layout.h"
#include "tests/graphics/pixels.h"

namespace graphics {
namespace {

const TextStyle body{.font = Font::system(17)};

Image drawn(std::string_view text, const TextStyle& style, double scale, const Color& color = Color::black()) {
    Image image({200, 60}, scale);
    Canvas canvas(image);
    drawText(canvas, text, {{0, 0}, {200, 60}}, style, color);
    return image;
}

TEST(Text, anEmptyTextIsOneLineHighAndHasNoWidth) {
    EXPECT_EQ(measureText("", body), (Size{0, Font::system(17).lineHeight()}));
}

TEST(Text, aLongerTextIsWider) { EXPECT_GT(measureText("Recents", body).width, measureText("Recent", body).width); }

TEST(Text, everyScriptHasTheSameLineHeight) {
    const double height = Font::system(17).lineHeight();
    for (const char* text : {"Anna", "Ελένη", "Екатерина", "عبد الرحمن", "אברהם", "山田", "สมชาย", "👋🏽"}) {
        EXPECT_EQ(measureText(text, body).height, height) << text;
    }
}

TEST(Text, aTextFitsInItsOwnMeasure) {
    const std::string text = "Екатерина Lindström (3)";
    const double width = measureText(text, body).width;
    EXPECT_FALSE(isTruncated(text, body, width));
    EXPECT_TRUE(isTruncated(text, body, width - 4));
}

TEST(Text, anEllipsisKeepsTheTextInItsWidth) {
    for (const LineBreak lineBreak : {LineBreak::TruncateHead, LineBreak::TruncateMiddle, LineBreak::TruncateTail}) {
        const TextStyle style{.font = Font::system(17), .lineBreak = lineBreak};
        const Size size = measureText("A name that is far too long for this row", style, 120);
        EXPECT_LE(size.width, 120);
        EXPECT_GT(size.width, 80);
    }
}

TEST(Text, aTextWithoutALimitOfLinesWraps) {
    const TextStyle style{.font = Font::system(17), .lineBreak = LineBreak::Words, .lines = 0};
    const double line = style.font.lineHeight();
    EXPECT_EQ(measureText("one two", style, 40).height, 2 * line);
    EXPECT_EQ(measureText("one\ntwo\nthree", style).height, 3 * line);
}

TEST(Text, whatIsBeyondTheLastLineIsShortenedIntoIt) {
    const TextStyle style{.font = Font::system(17), .lines = 2};
    const std::string_view text = "first\nsecond\nthird and all the rest of it";
    EXPECT_EQ(measureText(text, style, 150).height, 2 * style.font.lineHeight());
    EXPECT_LE(measureText(text, style, 150).width, 150);
    EXPECT_TRUE(isTruncated(text, style, 150));
}

TEST(Text, aLineBreakInASingleLineIsASpace) { EXPECT_EQ(measureText("one\ntwo", body), measureText("one two", body)); }

TEST(Text, boldIsWiderThanRegular) {
    EXPECT_GT(measureText("Anna Lindström", {.font = Font::boldSystem(17)}).width,
              measureText("Anna Lindström", body).width);
}

TEST(Text, theMeasureGrowsWithTheSizeOfTheFont) {
    const double small = measureText("0123456789", {.font = Font::system(10)}).width;
    const double large = measureText("0123456789", {.font = Font::system(20)}).width;
    EXPECT_NEAR(large, 2 * small, 2);
}

TEST(Text, emojiAreDrawnInColour) {
    for (const double scale : {1.0, 2.0}) {
        const Image image = drawn("👋", body, scale);
        int coloured = 0;
        for (int y = 0; y < image.pixelHeight(); ++y) {
            for (int x = 0; x < image.pixelWidth(); ++x) {
                const std::uint32_t pixel = image.pixel(x, y);
                coloured += ((pixel >> 16) & 0xFF) > (pixel & 0xFF) + 40;
            }
        }
        EXPECT_GT(coloured, 50) << "at scale " << scale;
    }
}

TEST(Text, alignmentMovesTheInk) {
    TextStyle style = body;
    const auto leftEdge = [&](Alignment alignment) {
        style.alignment = alignment;
        return testing::inkBounds(drawn("Anna", style, 1)).left();
    };
    const double width = measureText("Anna", body).width;
    EXPECT_NEAR(leftEdge(Alignment::Left), 0, 2);
    EXPECT_NEAR(leftEdge(Alignment::Centre), 100 - width / 2, 2);
    EXPECT_NEAR(leftEdge(Alignment::Right), 200 - width, 2);
    EXPECT_NEAR(leftEdge(Alignment::Natural), 0, 2);
}

TEST(Text, naturalAlignmentOfARightToLeftTextIsTheRight) {
    TextStyle style = body;
    style.alignment = Alignment::Natural;
    EXPECT_NEAR(testing::inkBounds(drawn("אברהם", style, 1)).right(), 200, 3);
    style.alignment = Alignment::Left;
    EXPECT_NEAR(testing::inkBounds(drawn("אברהם", style, 1)).left(), 0, 3);
}

TEST(Text, capitalsStandInTheMiddleOfTheirRectangle) {
    const Rect ink = testing::inkBounds(drawn("HE", {.font = Font::system(20)}, 2));
    EXPECT_NEAR(ink.centre().y, 60, 1.5);
}

TEST(Text, theBaselineDoesNotMoveWithTheCharacters) {
    const double alone = firstBaseline("H", body, {200, 60});
    EXPECT_EQ(firstBaseline("H 👋🏽 山 g ้", body, {200, 60}), alone);
    EXPECT_EQ(testing::inkBounds(drawn("H", body, 2)).bottom(), std::round(alone * 2));
}

TEST(Text, theSameTextHasTheSamePixelsWhereverItStands) {
    const auto picture = [](double y) {
        Image image({80, 60}, 1.5);
        Canvas canvas(image);
        drawText(canvas, "Recents", {{4, y}, {80, 20}}, body, Color::black());
        return image;
    };
    const Image one = picture(10), other = picture(20.2);
    const Point down = testing::inkBounds(other).origin - testing::inkBounds(one).origin;
    EXPECT_EQ(down.x, 0);
    for (int y = 0; y < 40; ++y) {
        for (int x = 0; x < one.pixelWidth(); ++x) ASSERT_EQ(one.pixel(x, y), other.pixel(x, y + int(down.y)));
    }
}

TEST(Text, bytesThatAreNoTextAreDrawnAndMeasured) {
    EXPECT_GT(measureText("\xC3(\xFF", body).width, 0);
    EXPECT_GT(measureText(std::string_view("a\0b", 3), body).width, measureText("a", body).width);
}

TEST(Text, theStoreOfLayoutsIsBounded) {
    for (int i = 0; i < 1500; ++i) measureText("row " + std::to_string(i), body);
    EXPECT_EQ(cachedLayouts(), cachedLayoutsLimit);
    const Size first = measureText("row 0", body);
    EXPECT_EQ(first, measureText("row 0", body));
}

TEST(Text, measuringAgainMakesNoNewLayout) {
    std::thread([] {
        measureText("once", body);
        const std::size_t count = cachedLayouts();
        measureText("once", body);
        EXPECT_EQ(cachedLayouts(), count);
        measureText("once", {.font = Font::system(18)});
        EXPECT_EQ(cachedLayouts(), count + 1);
    }).join();
}

TEST(Text, theCaretGoesThroughTheCharacters) {
    const Font font = Font::system(17);
    EXPECT_EQ(caretPosition("añb", font, 0), 0);
    EXPECT_EQ(caretPosition("añb", font, 2), caretPosition("añb", font, 1)) << "inside a character";
    EXPECT_GT(caretPosition("añb", font, 3), caretPosition("añb", font, 1));
    EXPECT_NEAR(caretPosition("añb", font, 99), measureText("añb", body).width, 0.6);
}

TEST(Text, theOffsetAtACaretIsTheCaretsOffset) {
    const Font font = Font::system(17);
    EXPECT_TRUE(rc::check([&font] {
        const auto text = *rc::gen::container<std::string>(rc::gen::inRange('a', 'z'));
        const auto offset = *rc::gen::inRange<std::size_t>(0, text.size() + 1);
        RC_ASSERT(offsetAt(text, font, caretPosition(text, font, offset)) == offset);
    }));
}

TEST(Text, aLineThatIsLongerThanCanBeShownIsCutBeforeItIsLaidOut) {
    const std::string name(40'000, 'x');
    for (const LineBreak lineBreak :
         {LineBreak::Clip, LineBreak::TruncateHead, LineBreak::TruncateMiddle, LineBreak::TruncateTail}) {
        const TextStyle style{.font = Font::system(17), .lineBreak = lineBreak};
        EXPECT_EQ(measureText(name, style), measureText(name + name, style));
        EXPECT_TRUE(isTruncated(name, style, unboundedWidth));
        EXPECT_LE(measureText(name, TextStyle{.font = Font::system(17)}, 200).width, 200);
    }
    // The end is what a text keeps that is shortened at its head.
    const TextStyle head{.font = Font::system(17), .lineBreak = LineBreak::TruncateHead};
    EXPECT_NE(measureText(name + std::string(9, 'i'), head), measureText(name, head));
    EXPECT_FALSE(isTruncated(std::string(4096, 'x'), body, unboundedWidth));
}

TEST(Text, aTextOfManyLinesIsCutAndItsEndlessWordsAreBrokenBeforePangoSeesThem) {
    const TextStyle style{.font = Font::system(17), .lineBreak = LineBreak::Words, .lines = 0};
    const std::string word = "\xC3\xA4" + std::string(100'000, 'x');
    const TextLayout& layout = TextEngine::current().layout(word, style, 280);
    EXPECT_LT(layout.lines.size(), 1000U);
    EXPECT_TRUE(layout.truncated);
    ASSERT_EQ(layout.sources.size(), 1U);
    int count = 0, sinceBreak = 0, longest = 0;
    const PangoLogAttr* letters = pango_layout_get_log_attrs_readonly(layout.sources[0].get(), &count);
    for (int at = 0; at < count; ++at) {
        sinceBreak = letters[at].is_line_break != 0 ? 0 : sinceBreak + 1;
        longest = std::max(longest, sinceBreak);
    }
    EXPECT_LE(count, 17'000);
    EXPECT_LE(longest, 513);
}

TEST(Text, theCaretOfAnEndlessLineStandsWithinWhatIsLaidOut) {
    const Font font = Font::system(17);
    std::string line;
    while (line.size() < 40'000) line += "\xE5\xB1\xB1";
    const double end = caretPosition(line, font, 4095);
    EXPECT_EQ(caretPosition(line, font, line.size()), end);
    EXPECT_EQ(caretPosition(line, font, 10), caretPosition(line, font, 9));
    EXPECT_EQ(offsetAt(line, font, unboundedWidth), 4095U);
}

}  // namespace
}  // namespace graphics
