// QVDataController: the lists, counts and operations of the call log, over the store.
#pragma once

#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <unordered_map>
#include <vector>

#include "desktop/quorvel/services/call_array.h"
#include "desktop/quorvel/services/call_entry.h"
#include "desktop/quorvel/store/call_store.h"
#include "objc/strong_slot.h"

namespace quorvel {

class DataService : public objc::PeerBase {
  public:
    using Super = objc::Foreign<"NSObject">;
    static constexpr objc::Name className{"QVDataController"};
    static void define(objc::ClassDefinition<DataService>& definition);

    /// The one for the process; `sharedInstance`.
    static DataService* shared();
    /// The log that it works on, null for none; lists, counts and flags begin anew. Not while operations run.
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
    /// All calls of the entry's contact, with any of its numbers, or of its number in any form; newest first.
    objc::Strong<> history(CallEntry* entry) const;
    bool removeCalls(std::int64_t filter, objc::Object day);
    bool removeListed(objc::Object entries, std::int64_t filter, bool);
    bool removeEntry(CallEntry* entry, std::int64_t filter, objc::Object);
    void removeFromLists(CallEntry* entry, std::int64_t filter);
    bool removeLogEntry(CallEntry* entry, std::int64_t filter);
    /// The history's calls of the filter, on the day where one is given. `shown` is how many the user saw, 0 for all:
    /// calls that came since stay.
    bool removeHistory(CallEntry* entry, std::int64_t filter, objc::Object day, std::int64_t shown);
    bool removeLogEntries(objc::Object entries, std::int64_t filter);
    /// The entry's calls leave the lists, but for those that came since.
    void historyDeleted(CallEntry* entry);
    /// The grouped entries show their newest remaining call. The log knows which those are.
    void updateTimeStamps(CallEntry* all, CallEntry* dialled, CallEntry* received, CallEntry* missed);
    void sortArray(objc::Object list) const;
    void showErrorMessage(objc::Object text) const;

  private:
    struct List {
        objc::StrongSlot<> array;
        // The log's own number of rows, as it was counted last; 0 while not known.
        std::atomic<std::int64_t> count{0};
        std::atomic<store::Mode> countedMode{};
        std::atomic<std::uint64_t> countedHints{0};  // the hints that the counting knew of
        std::atomic<std::uint64_t> hints{0};
        std::atomic<std::int64_t> duration{0};

        // Under the lock of filling: the entry that was read last and the place below it, in the mode of then.
        objc::Strong<> last;
        store::Cursor below;
        store::Mode mode;
        std::string day;  // the day that the list is of; empty for all days
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
    std::int64_t count() {
        return knownCount(list);
    }
    template <int list>
    void setCount(std::int64_t count) {
        suggestCount(list, count);
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

    /// What a deletion in the log takes out of lists of single calls.
    using IsGone = std::function<bool(const CallEntry&)>;
    /// Whether the days' entries are read again, or the screen takes the calls that it deleted off them itself.
    enum class Days { Reread, LeftToTheScreen };

    /// The log's number of rows of that list in the present mode; 0 while not known.
    std::int64_t knownCount(int list);
    /// 0 makes the number unknown. Any other one is a hint that it changed: the log is asked again, so that screens
    /// that take the same row off the number, each for itself, take it off once.
    void suggestCount(int list, std::int64_t count);
    /// Counts the list's rows and sums their durations.
    store::Result<store::Totals> countRows(store::Filter filter);

    static objc::Ref<CallArray> arrayIn(List& list);
    bool append(List& list, CallArray& array, objc::Snapshot& seen, const store::Page& page, store::Mode mode);
    store::Result<store::Cursor> placeBelow(const List& list, const objc::Snapshot& held, store::Filter filter,
                                            store::Mode mode) const;
    /// Reads what the filter's list lacks of its first `end` rows. False where somebody changed the list meanwhile.
    bool readUpTo(std::int64_t end, store::Filter filter, store::Mode mode);
    objc::Ref<CallEntry> dayOf(const store::CallRecord& record);
    bool failed(const store::Error& error) const;
    store::Result<std::vector<std::int64_t>> rowIdsOf(const CallEntry& entry, store::Filter filter) const;
    bool removeNamed(const std::vector<objc::Ref<CallEntry>>& entries, std::int64_t filter, Days days);
    store::Result<std::vector<store::CallRecord>> historyOf(const CallEntry& entry, store::Filter filter) const;
    bool removeRows(std::vector<std::int64_t> rowIds, Days days);
    void keepInStep(const IsGone& isGone, Days days);
    bool reread(store::Filter filter, store::Mode mode);
    bool replaceFrom(List& list, const objc::Snapshot& seen, const store::Page& page, store::Mode mode);
    static std::vector<objc::Object> objectsOf(const std::vector<objc::Ref<CallEntry>>& entries);
    void rereadDays(store::Mode mode);
    void recount();

    std::unique_ptr<store::CallStore> store_;
    // All, dialled, received, missed; the last is the days. Counts and durations belong to the first four.
    List lists_[5];
    // Under the lock of filling: one entry for each day that was read, also while screens alone hold it.
    std::unordered_map<std::string, objc::Ref<CallEntry>> days_;
    std::atomic<bool> anyDeleted_{false};
    // Held by whatever reads the log into lists or brings them in step with it; guards the texts too.
    std::recursive_mutex filling_;
    // Held while rows are counted, so that the number that is kept is the latest one.
    std::mutex counting_;
    SharedTexts texts_;
};

}  // namespace quorvel
