// The lists that the plug-in owns: several threads touch them, and a reader sees one consistent state.
#pragma once

#include "platform/foundation.h"

namespace rows {

/// Registers the lists' class. Once, at load, before any list is made.
void registerSnapshotList();
/// A new empty list.
objc::Strong<NSMutableArray> makeSnapshotList();

}  // namespace rows
