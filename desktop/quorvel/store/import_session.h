// Many calls written as one transaction: all of them, or none.
#pragma once

#include <cstdint>
#include <memory>

#include "desktop/quorvel/store/call.h"
#include "desktop/quorvel/store/result.h"

namespace quorvel::store {

/// An import under way, with a connection of its own; readers see nothing of it until it is finished. It belongs to
/// one thread at a time. It may outlive the store that began it.
class ImportSession {
  public:
    ImportSession(ImportSession&&) noexcept;
    ImportSession& operator=(ImportSession&&) noexcept;
    /// Abandons what was not finished: the log is as it was before.
    ~ImportSession();

    /// Adds one call and returns its row identifier. After badInput the session goes on without that call; after
    /// any other error only abandoning it is left.
    Result<std::int64_t> add(const NewCall& call);

    /// Whether the log, with what this session added, holds a call of this address, date, duration and direction.
    Result<bool> contains(const NewCall& call) const;

    /// From here on calls are claimed for another source.
    Result<Done> beginSource();
    /// Whether the log, as it was when the source began, holds a call of this address, date, duration and direction
    /// that the source has not claimed before; it is claimed. So each call of the log stands for one of the source's.
    Result<bool> claim(const NewCall& call);

    std::int64_t added() const;

    /// Puts all calls on disk at once and returns their number. The session is over, whatever the answer.
    Result<std::int64_t> finish();

  private:
    friend class CallStore;
    class Impl;
    explicit ImportSession(std::unique_ptr<Impl> impl);
    std::unique_ptr<Impl> impl_;
};

}  // namespace quorvel::store
