// The round picture of a contact in a row: a photograph, the initials, or a figure for people nobody knows.
#pragma once

#include <string>

#include "desktop/graphics/canvas.h"

namespace quorvel {

/// Up to two letters that stand for the name: of its first and last word, or of the first alone in scripts where
/// letters join or a letter is a word. Empty where the name has no letters.
std::string initialsOf(const std::string& name);

/// Draws the image, cut round; without one the initials on a muted colour that `record` picks, or the figure.
void drawContactPicture(graphics::Canvas& canvas, const graphics::Rect& circle, const graphics::Image& image,
                        const std::string& initials, int record);

}  // namespace quorvel
