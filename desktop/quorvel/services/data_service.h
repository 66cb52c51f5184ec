// QVDataController: the lists, counts and operations of the call log, over the store.
#pragma once

#include <functional>
#include <map>
#include <memory>
#include <mutex>

#include "desktop/quorvel/services/call_entry.h"
#include "desktop/quorvel/store/call_store.h"
#include "objc/snapshot_array.h"

namespace quorvel {

/// The lists that the service hands out.
using CallArray = objc::SnapshotArray<"QVCallArray">;

class DataService : public objc::PeerBase {
  public:
    using Super = objc::Foreign<"NSObject">;
    static constexpr objc::Name className{"QVDataController"};
    static void define(objc::ClassDefinition<DataService>& definition);

    /// The one for the process; `sharedInstance`.
    static DataService* shared();
    /// The log that it works on. Before any operation.
    void setStore(std::unique_ptr<store::CallStore> calls);
    store::CallStore* store() const { return store_.get(); }

    // Operations, by the names of their messages. Any thread.
    void readCalls(std::int64_t count, std::int64_t offset, std::int64_t filter);
    void readCallsForDate(objc::Object, std::int64_t offset, std::int64_t filter, objc::Object day);
    std::int64_t totalCount(std::int64_t filter);
    std::int64_t totalDuration(std::int64_t filter);
    objc::Strong<> durationText(std::int64_t seconds) const;
    objc::Strong<> searchedRecords(std::int64_t filter, objc::Object text, objc::Object day) const;
    objc::Strong<> result(objc::Object statement) const;
    objc::Strong<> history(CallEntry* entry) const;
    bool removeCalls(std::int64_t filter, objc::Object day);
    bool removeListed(objc::Object entries, std::int64_t filter, bool);
    bool removeEntry(CallEntry* entry, std::int64_t filter, objc::Object);
    void removeFromLists(CallEntry* entry, std::int64_t filter);
    bool removeLogEntry(CallEntry* entry, std::int64_t filter);
    bool removeLogEntryForDay(CallEntry* entry, std::int64_t filter, objc::Object day, std::int64_t count);
    bool removeLogEntries(objc::Object entries, std::int64_t filter);
    void historyDeleted(CallEntry* entry);
    void updateTimeStamps(CallEntry* all, CallEntry* dialled, CallEntry* received, CallEntry* missed);
    void sortArray(objc::Object list) const;
    void showErrorMessage(objc::Object text) const;

  private:
    struct List {
        objc::StrongSlot<> array;
        std::atomic<std::int64_t> count{0};
        std::atomic<std::int64_t> duration{0};
    };
    static objc::Object sharedInstance(Class);
    template <int list>
    objc::Strong<> array() const {
        return lists_[list].array.load();
    }
    template <int list>
    void setArray(objc::Object array) {
        lists_[list].array.store(objc::Strong<>(array));
    }
    template <int list>
    std::int64_t count() const {
        return lists_[list].count.load(std::memory_order_relaxed);
    }
    template <int list>
    void setCount(std::int64_t count) {
        lists_[list].count.store(count, std::memory_order_relaxed);
    }
    template <int list>
    std::int64_t duration() const {
        return lists_[list].duration.load(std::memory_order_relaxed);
    }
    template <int list>
    void setDuration(std::int64_t seconds) {
        lists_[list].duration.store(seconds, std::memory_order_relaxed);
    }
    bool isAnyRecDeleted() const { return anyDeleted_.load(std::memory_order_relaxed); }
    void setIsAnyRecDeleted(bool deleted) { anyDeleted_.store(deleted, std::memory_order_relaxed); }

    objc::Ref<CallArray> listFor(store::Filter filter);
    bool finish(const store::Result<std::int64_t>& deleted);
    bool removeWhere(const std::function<bool(const CallEntry&)>& isGone);
    void forgetTotals();

    std::unique_ptr<store::CallStore> store_;
    // All, dialled, received, missed; the last is the days. Counts and durations belong to the first four.
    List lists_[5];
    std::atomic<bool> anyDeleted_{false};

    struct Position {
        std::int64_t row = -1;
        store::Cursor cursor;
        store::Mode mode;
    };
    std::mutex positionsMutex_;
    std::map<store::Filter, Position> positions_;
};

}  // namespace quorvel
