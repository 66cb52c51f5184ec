// The store's connections and the order of work on them: one for reading, one for writing, one for foreign texts.
#pragma once

#include <mutex>

#include "desktop/quorvel/store/call_store.h"
#include "desktop/quorvel/store/call_writer.h"
#include "desktop/quorvel/store/query_runner.h"
#include "desktop/quorvel/store/reader.h"
#include "desktop/quorvel/store/watch.h"

namespace quorvel::store {

class CallStore::Impl {
  public:
    /// Throws Failure.
    Impl(const std::filesystem::path& path, const OpenOptions& options);

    /// Does the work in a reading transaction; the sums are right before it begins.
    template <class Work>
    auto read(Work&& work) {
        return guarded([&] {
            const std::lock_guard lock(readMutex_);
            for (int attempt = 0;; ++attempt) {
                Transaction transaction(*reading_, Transaction::Kind::read);
                const Watch now = readWatch_.look(*reading_);
                if (now.wasStranger && writing_ && attempt == 0) {
                    // The reading transaction ends first: it would not see what is made anew.
                    transaction.commit();
                    heal();
                    continue;
                }
                readWatch_ = now;
                reader_.logIs(now.dataVersion, now.partyRevision);
                auto result = work(reader_);
                transaction.commit();
                return result;
            }
        });
    }

    /// Does the work in a writing transaction, which is committed unless the work returns 0.
    template <class Work>
    Result<std::int64_t> write(Work&& work) {
        return guarded([&] {
            requireWriting();
            const std::lock_guard lock(writeMutex_);
            Transaction transaction(*writing_, Transaction::Kind::write);
            Watch now = writeWatch_.look(*writing_);
            if (now.wasStranger) rebuildDerivedNow();
            CallWriter writer(*writing_, moment());
            Reader reader(*writing_);
            const std::int64_t result = work(writer, reader);
            if (result == 0 && !now.wasStranger) return result;
            writer.settle();
            transaction.commit();
            writeWatch_ = now;
            return result;
        });
    }

    std::vector<std::string> verify();
    void rebuild();
    /// A connection for an import.
    std::unique_ptr<Connection> importConnection();
    std::vector<CallRecord> query(std::string_view text);
    const std::filesystem::path& path() const { return path_; }
    /// Seconds since 1970.
    std::int64_t moment() const;

  private:
    void requireWriting() const;
    void heal();
    void rebuildDerivedNow();

    std::filesystem::path path_;
    OpenOptions options_;

    std::mutex writeMutex_;
    std::unique_ptr<Connection> writing_;  ///< Null where the store only reads.
    Watch writeWatch_;

    // A reader that has to heal takes the writing mutex under its own; a writer never takes the reader's.
    std::mutex readMutex_;
    Connection::Use readingUse_;
    std::unique_ptr<Connection> reading_;
    Reader reader_;
    Watch readWatch_;

    std::mutex queryMutex_;
    QueryRunner queries_;
};

}  // namespace quorvel::store
