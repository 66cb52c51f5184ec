// The desktop's keyboard: what is typed goes to what is edited, or to the search of the screen in front.
#pragma once

#include <optional>
#include <string>

#include "desktop/graphics/window.h"
#include "desktop/uikit/geometry.h"

namespace phone {

/// Puts the text where typing goes now; where nothing is edited, a search begins with it, or the keypad takes its
/// digits. While something covers the screen or blocks it, and where there is nothing to type into, it is dropped. Main
/// thread, as all of these.
void typeText(const std::string& text);

/// Edits with the key, or without anything to edit: Escape ends a search or a call, or takes a sheet's cancel, Return
/// answers an alert with one button, and the arrows, Page Up and Page Down scroll the list in front.
void pressKey(graphics::KeyCode code);

/// The field that typing goes to, in the window's coordinates; nothing where text would be dropped.
std::optional<uikit::Rect> typingArea();

}  // namespace phone
