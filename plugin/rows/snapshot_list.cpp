// The class of the plug-in's own lists.
#include "plugin/rows/snapshot_list.h"

#include "objc/snapshot_array.h"

namespace rows {
namespace {
using SnapshotList = objc::SnapshotArray<"QVSnapshotList">;

SnapshotList* peerOf(NSMutableArray list) { return list ? objc::peerIf<SnapshotList>(list) : nullptr; }
}  // namespace

void registerSnapshotList() { objc::registerClasses<SnapshotList>(); }

objc::Strong<NSMutableArray> makeSnapshotList() { return objc::make<NSMutableArray>(objc::classOf<SnapshotList>()); }

SeenList::SeenList(NSMutableArray list) : list_(list) {
    if (auto* peer = peerOf(list)) state_ = peer->snapshot();
}

bool SeenList::append(NSMutableArray entries) {
    auto* list = peerOf(list_);
    auto* added = peerOf(entries);
    if (!list || !added) return true;
    const objc::Snapshot all = added->snapshot();
    return list->appendFrom(state_, {reinterpret_cast<const objc::Object*>(all.objects()), all.size()});
}

}  // namespace rows
