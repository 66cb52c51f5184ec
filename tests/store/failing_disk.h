// A file system for SQLite whose n-th change of a file fails, as a full or broken disk does.
#pragma once

namespace quorvel::store {

/// Registered at first use; the system's own underneath.
class FailingDisk {
  public:
    static const char* name();
    /// From now on the n-th write, sync or truncation fails, counted from 1, and each after it; 0 for none.
    static void failFrom(int operation);
    /// Whether any failed since then.
    static bool hasFailed();
};

}  // namespace quorvel::store
