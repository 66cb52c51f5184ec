// The product's colour.
#pragma once

#include "platform/uikit_views.h"

namespace host {

/// The dark blue, 0x03445F.
inline UIColor brandColor() { return UIColor::colorWithHex(0x03445F); }

}  // namespace host
