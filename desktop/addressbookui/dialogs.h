// Short questions and messages over a screen.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "desktop/uikit/sheet.h"

namespace addressbookui {

/// An alert with one button.
void tell(const std::string& title, const std::string& message);

/// A sheet with these choices and one to cancel; `chosen` is called with the index of a choice, and not after a cancel.
void choose(const std::string& title, const std::vector<std::string>& choices, std::function<void(std::size_t)> chosen);

/// A sheet that asks before something that cannot be taken back.
void confirm(const std::string& question, const std::string& action, std::function<void()> confirmed);

/// Hands the address to the application; nothing happens for an empty one.
void openAddress(const std::string& address);

}  // namespace addressbookui
