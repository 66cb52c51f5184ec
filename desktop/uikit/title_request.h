// Who is asked for the title of a table's section.
#pragma once

#include "objc/layer.h"

namespace uikit {

/// The data source that a table asks for a section's title on this thread right now; null while none is asked. A
/// library that forms the titles' texts learns from it which list they are for.
objc::Object dataSourceAskedForTitle();

}  // namespace uikit
