// The round picture of a contact in a row: a photograph, the initials, or a figure for people nobody knows.
#pragma once

#include <string>

#include "desktop/graphics/canvas.h"

namespace quorvel {

/// Up to two letters that stand for the name: of its first and last word, or of the first alone in scripts where
/// letters join or a letter is a word. Empty where the name has no letters.
std::string initialsOf(const std::string& name);

/// Which muted colour stands behind a caller's initials: that of the contact with this record, or, where that is below
/// 1, of the address in any of its forms. A caller has the same one in every list and on every card. Numbers that
/// share their last seven digits share the colour. Any thread.
unsigned pictureTone(int record, const std::string& address);

/// Draws the image, cut round; without one the initials on the colour that `tone` picks, or the figure.
void drawContactPicture(graphics::Canvas& canvas, const graphics::Rect& circle, const graphics::Image& image,
                        const std::string& initials, unsigned tone);

}  // namespace quorvel
