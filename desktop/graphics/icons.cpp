// The table of symbols, and drawing one of them in a rectangle.
#include "desktop/graphics/icons.h"

#include <array>
#include <numbers>

#include "desktop/graphics/icon_pen.h"

namespace graphics {

namespace {

struct Icon {
    Symbol symbol;
    std::string_view name;
    Size size;
    void (*draw)(const Pen&);
};

constexpr Size bar{24, 24};
constexpr Size tab{28, 28};
constexpr Size mark{14, 14};
constexpr Size field{16, 16};

constexpr std::array table = {
    Icon{Symbol::AllCalls, "all calls", bar, icons::allCalls},
    Icon{Symbol::DialledCalls, "dialled", bar, icons::dialledCalls},
    Icon{Symbol::ReceivedCalls, "received", bar, icons::receivedCalls},
    Icon{Symbol::MissedCalls, "missed calls", bar, icons::missedCalls},
    Icon{Symbol::DeleteAll, "delete all", bar, icons::deleteAll},
    Icon{Symbol::Delete, "delete", bar, icons::trash},
    Icon{Symbol::Cancel, "cancel", bar, icons::cancel},
    Icon{Symbol::Trash, "trash", bar, icons::trash},
    Icon{Symbol::Stop, "stop", bar, icons::stop},
    Icon{Symbol::Back, "back", {12, 21}, icons::back},
    Icon{Symbol::Disclosure, "disclosure", {8, 13}, icons::disclosure},
    Icon{Symbol::Detail, "detail", {22, 22}, icons::detail},
    Icon{Symbol::Magnifier, "magnifier", field, icons::magnifier},
    Icon{Symbol::Clear, "clear", field, icons::clear},
    Icon{Symbol::Add, "add", bar, icons::add},
    Icon{Symbol::Checkmark, "checkmark", field, icons::checkmark},
    Icon{Symbol::Favorites, "favorites", tab, icons::favorites},
    Icon{Symbol::Recents, "recents", tab, icons::recents},
    Icon{Symbol::Contacts, "contacts", tab, icons::contacts},
    Icon{Symbol::Keypad, "keypad", tab, icons::keypad},
    Icon{Symbol::Voicemail, "voicemail", tab, icons::voicemail},
    Icon{Symbol::Phone, "phone", bar, icons::phone},
    Icon{Symbol::PhoneFilled, "phone filled", bar, icons::phoneFilled},
    Icon{Symbol::Video, "video", bar, icons::video},
    Icon{Symbol::HangUp, "hang up", bar, icons::hangUp},
    Icon{Symbol::Message, "message", bar, icons::message},
    Icon{Symbol::Person, "person", bar, icons::person},
    Icon{Symbol::Outgoing, "outgoing", mark, icons::outgoing},
    Icon{Symbol::Incoming, "incoming", mark, icons::incoming},
    Icon{Symbol::Missed, "missed", mark, icons::missed},
};

constexpr auto symbols = [] {
    std::array<Symbol, table.size()> result{};
    for (std::size_t i = 0; i < table.size(); ++i) result[i] = table[i].symbol;
    return result;
}();

constexpr bool inOrder() {
    for (std::size_t i = 0; i < table.size(); ++i) {
        if (static_cast<std::size_t>(table[i].symbol) != i) return false;
    }
    return true;
}
static_assert(inOrder(), "a symbol's row is found by its number");

const Icon& icon(Symbol symbol) { return table[static_cast<std::size_t>(symbol)]; }

}  // namespace

std::span<const Symbol> allSymbols() { return symbols; }
std::string_view symbolName(Symbol symbol) { return icon(symbol).name; }
Size symbolSize(Symbol symbol) { return icon(symbol).size; }

void drawSymbol(Canvas& canvas, Symbol symbol, const Rect& rect, const Color& color) {
    if (rect.isEmpty() || color.alpha <= 0) return;
    const Icon& drawn = icon(symbol);
    const double factor = std::min(rect.width() / drawn.size.width, rect.height() / drawn.size.height);
    const Rect box = centred({drawn.size.width * factor, drawn.size.height * factor}, rect);
    const Point corner = canvas.snapped(box.origin);
    const SavedState saved(canvas);
    canvas.translate(corner.x, corner.y);
    canvas.scale(factor);
    // Lines cross, so that a translucent colour goes over the finished symbol.
    const bool translucent = color.alpha < 1;
    if (translucent) canvas.beginGroup();
    drawn.draw(Pen(canvas, color.withAlpha(1)));
    if (translucent) canvas.endGroup(color.alpha);
}

Image symbolImage(Symbol symbol, double scale) {
    const Image image(symbolSize(symbol), scale);
    Canvas canvas(image);
    drawSymbol(canvas, symbol, {{}, image.size()}, Color::black());
    return image;
}

void drawSpinner(Canvas& canvas, const Rect& rect, const Color& color, double turn) {
    constexpr int spokes = 12;
    const double radius = std::min(rect.width(), rect.height()) / 2, width = radius * 0.16;
    const int first = static_cast<int>(std::floor((turn - std::floor(turn)) * spokes)) % spokes;
    const SavedState saved(canvas);
    canvas.translate(rect.centre().x, rect.centre().y);
    for (int i = 0; i < spokes; ++i) {
        const int age = (first - i + spokes) % spokes;
        const double alpha = std::max(0.25, 1 - age * 0.095);
        const double angle = i * 2 * std::numbers::pi / spokes;
        const Point direction{std::sin(angle), -std::cos(angle)};
        const double inner = radius * 0.5, outer = radius - width / 2;
        canvas.line({direction.x * inner, direction.y * inner}, {direction.x * outer, direction.y * outer}, width,
                    color.withAlpha(color.alpha * alpha));
    }
}

}  // namespace graphics
