// The lists that the plug-in owns: several threads touch them, and a reader sees one consistent state.
#pragma once

#include "objc/snapshot_store.h"
#include "platform/foundation.h"

namespace rows {

/// Registers the lists' class. Once, at load, before any list is made.
void registerSnapshotList();
/// A new empty list.
objc::Strong<NSMutableArray> makeSnapshotList();

/// One state of such a list, for work that takes time. Of null, or of another array, it is an empty one.
class SeenList {
  public:
    explicit SeenList(NSMutableArray list);

    NSUInteger count() const { return state_.size(); }
    template <class T>
    T at(NSUInteger index) const {
        return objc::as<T>(state_[index]);
    }
    /// Adds the entries of another such list at the end, and shows them too. False where the list is in another state
    /// by now, even one of the same entries; the first of the entries may have been added before that.
    bool append(NSMutableArray entries);

  private:
    objc::Strong<NSMutableArray> list_;
    objc::Snapshot state_;
};

}  // namespace rows
