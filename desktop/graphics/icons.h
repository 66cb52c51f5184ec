// The product's and the system's symbols, drawn as lines and shapes in one colour, sharp at any size.
#pragma once

#include <span>
#include <string_view>

#include "desktop/graphics/canvas.h"

namespace graphics {

enum class Symbol {
    // The product's application.
    AllCalls,
    DialledCalls,
    ReceivedCalls,
    MissedCalls,
    DeleteAll,
    Delete,
    Cancel,
    // Bars, rows and fields.
    Trash,
    Stop,
    Back,
    Disclosure,
    Detail,
    Magnifier,
    Clear,
    Add,
    Checkmark,
    // The tab bar.
    Favorites,
    Recents,
    Contacts,
    Keypad,
    Voicemail,
    // Calls and people.
    Phone,
    PhoneFilled,
    Video,
    HangUp,
    Message,
    Person,
    Outgoing,
    Incoming,
    Missed,
};

/// Every symbol, in the order of the enumeration.
std::span<const Symbol> allSymbols();

/// A short name, as in the sample sheet: "all calls".
std::string_view symbolName(Symbol symbol);

/// The size that the symbol is meant for, in points.
Size symbolSize(Symbol symbol);

/// Draws the symbol as large as the rectangle allows, in its middle, keeping its proportions.
void drawSymbol(Canvas& canvas, Symbol symbol, const Rect& rect, const Color& color);

/// The symbol at its own size, black, on a transparent ground: a stencil to be tinted.
Image symbolImage(Symbol symbol, double scale);

/// The twelve spokes of an activity indicator. `turn` is how far it has gone round; whole turns look the same.
void drawSpinner(Canvas& canvas, const Rect& rect, const Color& color, double turn);

}  // namespace graphics
