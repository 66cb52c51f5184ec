// Memory of SQLite past the sanitizer.
#pragma once

namespace quorvel::store::fuzz {

/// Gives SQLite, which is not compiled for the sanitizers, memory that they do not look after, and no locks. That makes
/// a run several times as fast. Before the first use of SQLite, by a process of one thread.
void usePlainMemory();

}  // namespace quorvel::store::fuzz
