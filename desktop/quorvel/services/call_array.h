// The array class of the lists that the service hands out.
#pragma once

#include "objc/snapshot_array.h"

namespace quorvel {

using CallArray = objc::SnapshotArray<"QVCallArray">;

}  // namespace quorvel
