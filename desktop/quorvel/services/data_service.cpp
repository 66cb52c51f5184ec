// QVDataController: reading.
#include "desktop/quorvel/services/data_service.h"

#include <algorithm>
#include <cstdio>

#include "desktop/quorvel/services/counterpart.h"
#include "desktop/quorvel/services/guarded.h"
#include "desktop/quorvel/services/log_opening.h"
#include "desktop/quorvel/services/settings_service.h"
#include "desktop/uikit/text.h"

namespace quorvel {
namespace {

constexpr int dayList = 4;
/// A long read goes in pieces, so that the records that become entries are never many at a time.
constexpr std::int64_t mostAtOnce = 1000;

int listIndex(store::Filter filter, store::Mode mode) {
    if (store::rowKindOf(filter, mode) == store::RowKind::day) return dayList;
    return static_cast<int>(filter) - 1;
}

store::Mode presentMode() { return SettingsService::shared()->mode(); }

void report(const char* what, const store::Error& error) {
    std::fprintf(stderr, "libQuorvel: %s: %s\n", what, error.message.c_str());
    tellOfDamage(error);
}

/// A new list, which takes entries of calls as they are read.
class NewList {
  public:
    void add(const store::CallRecord& record) { entries_.push_back(CallEntry::of(record, texts_).takeOwner()); }
    /// The array of all that was added; once.
    objc::Strong<> takeArray() {
        const auto array = objc::Ref<CallArray>::make();
        array->store().adopt(entries_);
        return objc::Object{array.self()};
    }

  private:
    std::vector<objc::Strong<>> entries_;
    SharedTexts texts_;
};

}  // namespace

void DataService::define(objc::ClassDefinition<DataService>& definition) {
    using Self = DataService;
    definition.classMethod<"sharedInstance", &Self::sharedInstance>();
    definition.method<"callList", &Self::array<0>>().method<"setCallList:", &Self::setArray<0>>();
    definition.method<"dldCallList", &Self::array<1>>().method<"setDldCallList:", &Self::setArray<1>>();
    definition.method<"rcdCallList", &Self::array<2>>().method<"setRcdCallList:", &Self::setArray<2>>();
    definition.method<"msdCallList", &Self::array<3>>().method<"setMsdCallList:", &Self::setArray<3>>();
    definition.method<"dateCallsList", &Self::array<dayList>>().method<"setDateCallsList:", &Self::setArray<dayList>>();
    definition.method<"allCallsCount", &Self::count<0>>().method<"setAllCallsCount:", &Self::setCount<0>>();
    definition.method<"dldCallsCount", &Self::count<1>>().method<"setDldCallsCount:", &Self::setCount<1>>();
    definition.method<"rcdCallsCount", &Self::count<2>>().method<"setRcdCallsCount:", &Self::setCount<2>>();
    definition.method<"msdCallsCount", &Self::count<3>>().method<"setMsdCallsCount:", &Self::setCount<3>>();
    definition.method<"allCallsDuration", &Self::duration<0>>().method<"setAllCallsDuration:", &Self::setDuration<0>>();
    definition.method<"dldCallsDuration", &Self::duration<1>>().method<"setDldCallsDuration:", &Self::setDuration<1>>();
    definition.method<"rcdCallsDuration", &Self::duration<2>>().method<"setRcdCallsDuration:", &Self::setDuration<2>>();
    definition.method<"msdCallsDuration", &Self::duration<3>>().method<"setMsdCallsDuration:", &Self::setDuration<3>>();
    definition.method<"isAnyRecDeleted", &Self::isAnyRecDeleted>()
        .method<"setIsAnyRecDeleted:", &Self::setIsAnyRecDeleted>()
        .function<"readCallsFromDB:offset:flag:", guarded<&Self::readCalls>>()
        .function<"readCallsForDate:offset:flag:date:", guarded<&Self::readCallsForDate>>()
        .function<"getTotalCallCount:", guarded<&Self::totalCount>>()
        .function<"getTotalCallDuration:", guarded<&Self::totalDuration>>()
        .method<"getAllCallsDuration:", &Self::durationText>()
        .function<"getSearchedRecordsFromDB:searchString:date:", guarded<&Self::searchedRecords>>()
        .function<"getResult:", guarded<&Self::result>>()
        .function<"getHistoryForContact:", guarded<&Self::history>>()
        .function<"removeCallsFromDB:date:", guarded<&Self::removeCalls>>()
        .function<"removeDataFromDB:calFilterType:forDate:", guarded<&Self::removeListed>>()
        .function<"removeData:calFilterType:date:", guarded<&Self::removeEntry>>()
        .function<"removeEntriesFromCallList:calFilterType:", guarded<&Self::removeFromLists>>()
        .function<"removeLogEntry:calFilterType:", guarded<&Self::removeLogEntry>>()
        .function<"removeLogEntryFromDB:calFilterType:date:currentCount:", guarded<&Self::removeHistory>>()
        .function<"removeLogEntriesFromDB:calFilterType:", guarded<&Self::removeLogEntries>>()
        .function<"allHistoryDeletedForEntry:", guarded<&Self::historyDeleted>>()
        .function<"updateCallEntriesTimeStamp:dldCallEntry:rcdCallEntry:msdCallEntry:",
                  guarded<&Self::updateTimeStamps>>()
        .function<"sortArray:", guarded<&Self::sortArray>>()
        .function<"showErrorMessage:", guarded<&Self::showErrorMessage>>();
}

DataService* DataService::shared() {
    static const auto one = objc::Ref<DataService>::make();
    return one;
}

objc::Object DataService::sharedInstance(Class) { return objc::Object{shared()->self}; }

void DataService::setStore(std::unique_ptr<store::CallStore> calls) {
    const std::lock_guard lock(filling_);
    store_ = std::move(calls);
    for (auto& list : lists_) {
        list.array.store({});
        list.count = list.duration = 0;
        list.last = {};
        list.day.clear();
    }
    days_.clear();
    texts_.forgetCounterparts();
    anyDeleted_ = false;
}

/// The list's array, made where the property is nil. An array that is not ours was set from outside: it is left to its
/// holder and replaced by one of ours with the same entries.
objc::Ref<CallArray> DataService::arrayIn(List& list) {
    const auto present = list.array.load();
    if (auto* array = objc::peerIf<CallArray>(present)) return array;
    auto made = objc::Ref<CallArray>::make();
    if (present) made->setArray(present);
    list.array.store(objc::Strong<>(objc::Object{made.self()}));
    return made;
}

/// The day's one entry, as it is now: a screen that stands over the day sees its counts.
objc::Ref<CallEntry> DataService::dayOf(const store::CallRecord& record) {
    const auto [known, isNew] = days_.try_emplace(record.day);
    if (isNew)
        known->second = CallEntry::of(record, texts_);
    else
        known->second->fill(record, texts_);
    return known->second;
}

/// Appends the page's rows to the state of the list that the page was read for, and remembers where the next page
/// begins. What rows say of numbers is worked out before the first of them can be seen, and an empty list gets them in
/// one change: who counts it meanwhile takes no part of a page for the whole.
bool DataService::append(List& list, CallArray& array, objc::Snapshot& seen, const store::Page& page,
                         store::Mode mode) {
    std::vector<objc::Ref<CallEntry>> entries;
    for (const auto& record : page.rows)
        entries.push_back(&list == &lists_[dayList] ? dayOf(record) : CallEntry::of(record, texts_));
    if (!array.appendFrom(seen, objectsOf(entries))) return false;
    if (!entries.empty()) list.last = objc::Strong<>(objc::Object{entries.back().self()});
    list.below = page.next;
    list.mode = mode;
    return true;
}

void DataService::readCalls(std::int64_t count, std::int64_t offset, std::int64_t code) {
    if (!store_ || count <= 0) return;
    const std::lock_guard lock(filling_);
    std::int64_t end = 0;
    if (__builtin_add_overflow(count, std::max<std::int64_t>(offset, 0), &end)) end = store::noLimit;
    const store::Filter filter = store::filterOf(code);
    // A list that a screen empties or shortens meanwhile is read again: pages from before that may lack a call.
    while (!readUpTo(end, filter, presentMode())) {
    }
}

/// By key where the list ends as it was left, so that calls that arrived above shift nothing.
store::Result<store::Cursor> DataService::placeBelow(const List& list, const objc::Snapshot& held, store::Filter filter,
                                                     store::Mode mode) const {
    if (held.size() == 0) return store::Cursor::top();
    const bool isContinued = held[held.size() - 1] == list.last.get() && list.mode == mode && list.day.empty();
    if (isContinued) return list.below;
    return store_->cursorAt(filter, mode, static_cast<std::int64_t>(held.size()));
}

bool DataService::readUpTo(std::int64_t end, store::Filter filter, store::Mode mode) {
    List& list = lists_[listIndex(filter, mode)];
    const auto array = arrayIn(list);
    // The list is never given a row twice and never left with a gap: another thread may have emptied it.
    auto seen = array->snapshot();
    std::int64_t wanted = end - static_cast<std::int64_t>(seen.size());
    if (wanted <= 0) return true;
    if (seen.size() == 0) list.day.clear();
    const auto start = placeBelow(list, seen, filter, mode);
    if (!start) {
        report("the place in the list could not be found", start.error());
        return true;
    }
    for (store::Cursor cursor = *start; wanted > 0;) {
        const auto page = store_->page(filter, mode, cursor, std::min(wanted, mostAtOnce));
        if (!page) {
            report("calls could not be read", page.error());
            return true;
        }
        if (!append(list, *array, seen, *page, mode)) return false;
        if ((*page).atEnd || (*page).rows.empty()) return true;
        wanted -= static_cast<std::int64_t>((*page).rows.size());
        cursor = (*page).next;
    }
    return true;
}

void DataService::readCallsForDate(objc::Object, std::int64_t, std::int64_t code, objc::Object day) {
    if (!store_ || !day) return;
    const std::lock_guard lock(filling_);
    const store::Filter filter = store::filterOf(code);
    const store::Mode mode = presentMode();
    List& list = lists_[static_cast<int>(filter) - 1];
    const std::string text = uikit::utf8(day);
    // From where the list ends, whatever offset the caller remembers: a list that was emptied since begins anew.
    for (bool isDone = false; !isDone;) {
        const auto array = arrayIn(list);
        auto seen = array->snapshot();
        const auto page = store_->dayPage(filter, mode, text, static_cast<std::int64_t>(seen.size()), store::noLimit);
        if (!page) return report("the day's calls could not be read", page.error());
        if (seen.size() == 0) list.day = text;
        isDone = append(list, *array, seen, *page, mode);
    }
}

std::int64_t DataService::totalCount(std::int64_t code) {
    const store::Filter filter = store::filterOf(code);
    if (!store_) return 0;
    const auto totals = countRows(filter);
    if (totals) return (*totals).rows;
    report("calls could not be counted", totals.error());
    return 0;
}

store::Result<store::Totals> DataService::countRows(store::Filter filter) {
    const std::lock_guard lock(counting_);
    List& list = lists_[static_cast<int>(filter) - 1];
    const store::Mode mode = presentMode();
    // Before the log is read, so that a hint that comes meanwhile has it counted once more.
    const std::uint64_t hints = list.hints;
    auto totals = store_->totals(filter, mode);
    if (!totals) return totals;
    list.count = (*totals).rows;
    // Of the same moment: a duration that was kept from before would be shown beside the new count.
    list.duration.store((*totals).duration, std::memory_order_relaxed);
    list.countedMode = mode;
    list.countedHints = hints;
    return totals;
}

std::int64_t DataService::knownCount(int index) {
    const List& list = lists_[index];
    const bool isUpToDate = list.countedHints == list.hints && list.countedMode == presentMode();
    const std::int64_t counted = list.count;
    return counted == 0 || isUpToDate || !store_ ? counted : totalCount(index + 1);
}

void DataService::suggestCount(int index, std::int64_t count) {
    List& list = lists_[index];
    ++list.hints;
    if (count == 0) list.count = 0;
}

std::int64_t DataService::totalDuration(std::int64_t code) {
    const store::Filter filter = store::filterOf(code);
    // Missed calls last no time: nobody has to ask the log.
    if (!store_ || filter == store::Filter::missed) return 0;
    const auto totals = store_->totals(filter, presentMode());
    if (!totals) {
        report("calls could not be summed", totals.error());
        return 0;
    }
    lists_[static_cast<int>(filter) - 1].duration.store((*totals).duration, std::memory_order_relaxed);
    return (*totals).duration;
}

objc::Strong<> DataService::durationText(std::int64_t seconds) const {
    char text[48];
    const long long all = std::max<std::int64_t>(seconds, 0);
    std::snprintf(text, sizeof text, "%lld:%02lld:%02lld", all / 3600, all / 60 % 60, all % 60);
    return uikit::nsString(text);
}

objc::Strong<> DataService::searchedRecords(std::int64_t code, objc::Object text, objc::Object day) const {
    const std::string dayText = uikit::utf8(day);
    NewList found;
    if (store_) {
        const auto all = store_->eachFound(store::filterOf(code), uikit::utf8(text),
                                           day ? std::optional<std::string_view>(dayText) : std::nullopt,
                                           [&](const store::CallRecord& record) { found.add(record); });
        if (!all) report("the search failed", all.error());
    }
    return found.takeArray();
}

objc::Strong<> DataService::result(objc::Object statement) const {
    NewList found;
    if (store_) {
        for (const auto& record : store_->query(uikit::utf8(statement))) found.add(record);
    }
    return found.takeArray();
}

store::Result<std::vector<store::CallRecord>> DataService::historyOf(const CallEntry& entry,
                                                                     store::Filter filter) const {
    const auto with = Counterpart(entry).in(*store_);
    if (!with) return with.error();
    auto page = store_->history(filter, *with, store::Cursor::top(), store::noLimit);
    if (!page) return page.error();
    return std::move((*page).rows);
}

objc::Strong<> DataService::history(CallEntry* entry) const {
    NewList found;
    if (store_ && entry) {
        const auto with = Counterpart(*entry).in(*store_);
        const auto all = with ? store_->eachOfHistory(store::Filter::all, *with,
                                                      [&](const store::CallRecord& record) { found.add(record); })
                              : with.error();
        if (!all) report("the history could not be read", all.error());
    }
    return found.takeArray();
}

}  // namespace quorvel
