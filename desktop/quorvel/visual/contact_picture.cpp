// Contact pictures.
#include "desktop/quorvel/visual/contact_picture.h"

#include <unicode/uchar.h>
#include <unicode/unistr.h>
#include <unicode/uscript.h>

#include <algorithm>
#include <cstdint>
#include <iterator>
#include <vector>

#include "desktop/graphics/icons.h"
#include "desktop/graphics/text.h"

namespace quorvel {
namespace {

using graphics::Color;

// Neighbours of the product's blue, all dark enough for white letters.
const Color grounds[] = {Color::fromHex(0x4A7A90), Color::fromHex(0x6B8E7F), Color::fromHex(0x7D7396),
                         Color::fromHex(0x9A7B6A), Color::fromHex(0x5F83A8), Color::fromHex(0x8A8060)};
const Color nobody = Color::fromHex(0xC9D0D5);

bool standsAlone(UChar32 letter) {
    UErrorCode status = U_ZERO_ERROR;
    const UScriptCode script = uscript_getScript(letter, &status);
    return script != USCRIPT_LATIN && script != USCRIPT_CYRILLIC && script != USCRIPT_GREEK &&
           script != USCRIPT_ARMENIAN && script != USCRIPT_HEBREW;
}

/// What all spellings of a number share, its last digits, or the address in small letters. Rows are drawn with it while
/// the list scrolls, so the library of numbers is not asked.
std::string spellingIndependentPart(const std::string& address) {
    constexpr std::size_t sharedDigits = 7;
    std::string digits;
    std::string letters;
    for (const char letter : address) {
        if (letter >= '0' && letter <= '9') digits += letter;
        letters += letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter;
    }
    if (address.find('@') != std::string::npos || digits.empty()) return letters;
    return digits.size() > sharedDigits ? digits.substr(digits.size() - sharedDigits) : digits;
}

}  // namespace

std::string initialsOf(const std::string& name) {
    const auto text = icu::UnicodeString::fromUTF8(name);
    std::vector<UChar32> letters;
    std::vector<UChar32> ofTitles;  // "Dr.", "Mrs."
    for (std::int32_t start = 0; start < text.length();) {
        std::int32_t end = start;
        while (end < text.length() && !u_isUWhiteSpace(text.char32At(end))) ++end;
        if (end > start && u_isalpha(text.char32At(start)))
            (end - start > 2 && text.charAt(end - 1) == '.' ? ofTitles : letters).push_back(text.char32At(start));
        start = end + 1;
    }
    if (letters.empty()) letters = ofTitles;
    if (letters.empty()) return {};
    std::string result;
    icu::UnicodeString initials(letters.front());
    if (standsAlone(letters.front())) return initials.toUTF8String(result);
    if (letters.size() > 1) initials += letters.back();
    return initials.toUpper().toUTF8String(result);
}

unsigned pictureTone(int record, const std::string& address) {
    if (record > 0) return static_cast<unsigned>(record);
    // FNV-1a: the same in every process and on every machine.
    unsigned hash = 2166136261U;
    for (const char letter : spellingIndependentPart(address))
        hash = (hash ^ static_cast<unsigned char>(letter)) * 16777619U;
    return hash;
}

void drawContactPicture(graphics::Canvas& canvas, const graphics::Rect& circle, const graphics::Image& image,
                        const std::string& initials, unsigned tone) {
    const double side = circle.width();
    if (image) {
        const graphics::SavedState saved(canvas);
        canvas.clipRounded(circle, side / 2);
        const double factor = std::max(side / image.size().width, side / image.size().height);
        canvas.draw(image, graphics::centred({image.size().width * factor, image.size().height * factor}, circle));
        return;
    }
    if (initials.empty()) {
        canvas.fillCircle(circle.centre(), side / 2, nobody);
        const double inset = side / 5;
        graphics::drawSymbol(canvas, graphics::Symbol::Person, circle.inset(inset, inset), Color::white());
        return;
    }
    canvas.fillCircle(circle.centre(), side / 2, grounds[tone % std::size(grounds)]);
    graphics::TextStyle style;
    style.font = graphics::Font::system(side * 0.41, graphics::Weight::Medium);
    style.alignment = graphics::Alignment::Centre;
    graphics::drawText(canvas, initials, circle, style, Color::white());
}

}  // namespace quorvel
