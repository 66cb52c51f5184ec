// The companion's visual classes, all of them.
#pragma once

namespace quorvel {

/// Registers them, and what the companion adds to the toolkit's classes. At load; nothing happens the second time.
void registerVisualClasses();

}  // namespace quorvel
