// What the companion adds to the toolkit's own classes.
#pragma once

namespace quorvel {

/// Adds `colorWithHex:` to UIColor (24 bits, red first) and `setImageTintColor:` to UIButton. Once, at load.
void addCategories();

}  // namespace quorvel
