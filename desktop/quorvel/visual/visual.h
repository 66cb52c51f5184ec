// The companion's visual classes.
#pragma once

namespace quorvel {

/// Registers them all, and what the companion adds to the toolkit's classes. Once, at load.
void registerVisualClasses();

}  // namespace quorvel
