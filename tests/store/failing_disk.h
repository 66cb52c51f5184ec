// A file system for SQLite whose n-th operation fails, as on a full or broken disk, or is the last of its process.
#pragma once

namespace quorvel::store {

enum class Fault {
    full,      ///< Writes find no room, syncs and truncations fail.
    readOnly,  ///< The same operations find a disk that has become read-only.
    broken,    ///< Those and reading end in an input or output error.
    death,     ///< The process is killed before the operation; locks and barriers between processes count too.
};

/// Registered at first use; the system's own underneath.
class FailingDisk {
  public:
    static const char* name();
    /// From now on the n-th operation of the fault's kind fails, counted from 1, and each after it; 0 for none.
    static void failFrom(int operation, Fault fault = Fault::full);
    /// Whether any failed since then.
    static bool hasFailed();
};

}  // namespace quorvel::store
