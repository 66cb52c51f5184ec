// A companion whose database is an array: entries, lists, counts and deletions as the call list asks for them, with
// every question written down.
#pragma once

#include <array>
#include <atomic>
#include <functional>
#include <mutex>
#include <set>
#include <string>
#include <vector>

#include "objc/snapshot_array.h"
#include "objc/strong_slot.h"
#include "plugin/companion/entry.h"

namespace callcompanion {

struct Call {
    int id = 0;  // its row
    const char* name = "";
    const char* number = "";
    int count = 1;
    int duration = 30;
    bool isDialed = false;
    bool isReceived = false;
    bool isMissed = false;
    bool isCanceled = false;
    const char* day = "2024-06-15";
    int contact = -1;
    int record = 0;  // 0: as its row
};

/// A QVCallEntry with those fields.
objc::Strong<QVCallEntry> entryOf(const Call& call);

/// The lists that it hands out, as any number of threads may read them.
using CallArray = objc::SnapshotArray<"QVTestCallArray">;
objc::Strong<NSMutableArray> arrayOf(const std::vector<Call>& calls);
std::vector<int> idsIn(NSArray entries);

/// Where code runs: "main", "default", "background", or "worker" for a thread of its own.
const char* place();

/// What happened, in order, each line with its place in front: "default: read 20 from 20 of 1". Any thread.
class Log {
  public:
    void add(const std::string& what);
    std::vector<std::string> lines() const;
    /// The lines that hold the words.
    std::vector<std::string> linesWith(const std::string& words) const;
    void clear();

  private:
    mutable std::mutex mutex_;
    std::vector<std::string> lines_;
};
Log& log();

/// What it holds and answers. Reset by the tests, on the main thread while nothing runs.
struct Companion {
    // Settings.
    int pageSize = 50;
    bool isReplaceRecentsOn = true;
    bool isGroupByDate = false;
    bool isGroupContacts = false;
    bool isSearchEnabled = true;
    bool isHeaderShown = true;
    bool isFooterShown = true;
    bool mayReadContacts = true;
    bool areImagesShown = false;
    std::atomic<bool> isNeedToLoadData{false};
    std::atomic<bool> isSettingsChanged{false};
    std::atomic<bool> isAnyRecordDeleted{false};

    // Contacts' pictures: those in the cache, and those that a look into the address book brings.
    std::set<int> cachedImages;
    std::set<int> images;

    // The database, by filter code; all calls first, the days last.
    std::array<std::vector<objc::Strong<QVCallEntry>>, 5> rows;
    std::array<std::int64_t, 4> durations{};
    /// What a search of the database answers.
    std::vector<objc::Strong<QVCallEntry>> matches;
    /// The most that one reading brings.
    std::int64_t mostPerReading = INT64_MAX;
    bool refusesDeletions = false;
    /// Run within a reading, a search and a deletion, on the thread that asked.
    std::function<void()> duringReading;
    std::function<void()> duringSearch;
    std::function<void()> duringDeletion;
    /// Run when a list is dropped.
    std::function<void()> duringDropping;

    // What it has loaded, and the counts that it keeps: properties.
    std::array<objc::StrongSlot<NSMutableArray>, 5> lists;
    std::array<std::atomic<std::int64_t>, 4> counts{};
    std::array<std::atomic<std::int64_t>, 4> keptDurations{};

    void setRows(int filter, const std::vector<Call>& calls);
    NSMutableArray list(int filter) const;
};
Companion& companion();
void startOver();

/// Registers QVDataController, QVSettingsDataController, QuorvelUtils and QVCallEntry.
void registerClasses();

}  // namespace callcompanion
