// The class of the plug-in's own lists.
#include "plugin/rows/snapshot_list.h"

#include "objc/snapshot_array.h"

namespace rows {
namespace {
using SnapshotList = objc::SnapshotArray<"QVSnapshotList">;
}

void registerSnapshotList() { objc::registerClasses<SnapshotList>(); }

objc::Strong<NSMutableArray> makeSnapshotList() { return objc::make<NSMutableArray>(objc::classOf<SnapshotList>()); }

}  // namespace rows
