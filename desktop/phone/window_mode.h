// The Phone in a window.
#pragma once

#include <string>

namespace graphics {
class Window;
}

namespace phone {

/// Shows the running application in the window until it is closed. Answers what went wrong, or nothing.
std::string runInWindow(graphics::Window& window);

}  // namespace phone
