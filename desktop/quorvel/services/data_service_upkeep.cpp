// QVDataController: the lists, counts and durations in memory, brought in step with the log after a deletion.
#include <algorithm>
#include <cstdio>
#include <unordered_map>
#include <unordered_set>

#include "desktop/quorvel/services/data_service.h"
#include "desktop/quorvel/services/log_opening.h"
#include "desktop/quorvel/services/settings_service.h"
#include "desktop/uikit/text.h"

namespace quorvel {
namespace {

constexpr int dayList = 4;
constexpr store::Filter filters[] = {store::Filter::all, store::Filter::dialled, store::Filter::received,
                                     store::Filter::missed};

void report(const store::Error& error) {
    std::fprintf(stderr, "libQuorvel: a list could not be brought up to date: %s\n", error.message.c_str());
    tellOfDamage(error);
}

CallEntry* entryOf(objc::Object object) { return objc::peerOf<CallEntry>(object); }

}  // namespace

std::vector<objc::Object> DataService::objectsOf(const std::vector<objc::Ref<CallEntry>>& entries) {
    std::vector<objc::Object> objects;
    for (const auto& entry : entries) objects.push_back(objc::Object{entry.self()});
    return objects;
}

/// Lists of single calls lose what is gone. Folded ones are read again as far as they were loaded: runs may have joined
/// where a call between them went. What is gone leaves them too where the log cannot be read.
void DataService::keepInStep(const IsGone& isGone, Days days) {
    const std::lock_guard lock(filling_);
    const store::Mode mode = SettingsService::shared()->mode();
    for (const auto filter : filters) {
        List& list = lists_[static_cast<int>(filter) - 1];
        const auto kept = list.array.load();
        if (auto* array = objc::peerIf<CallArray>(kept)) {
            if (!mode.groupByContact || !reread(filter, mode))
                array->removeIf([&](objc::Object object) { return isGone(*entryOf(object)); });
        }
    }
    if (days == Days::Reread) rereadDays(mode);
    recount();
}

/// The first rows of the filter's list, as many as it holds, in one step. Entries that stay keep their objects. False
/// when the log cannot be read; the list is as it was then.
bool DataService::reread(store::Filter filter, store::Mode mode) {
    List& list = lists_[static_cast<int>(filter) - 1];
    // The list of all calls is one of calls or runs here, also where the screen shows days.
    mode.groupByDate = false;
    // What a screen changes while the log is read is not undone: the log is read again.
    for (;;) {
        const auto kept = list.array.load();
        auto* array = objc::peerIf<CallArray>(kept);
        if (!array) return true;
        const auto held = array->snapshot();
        const auto rows = static_cast<std::int64_t>(held.size());
        if (rows == 0) return true;
        const auto page = list.day.empty() ? store_->page(filter, mode, store::Cursor::top(), rows)
                                           : store_->dayPage(filter, mode, list.day, 0, store::noLimit);
        if (!page) {
            report(page.error());
            return false;
        }
        if (replaceFrom(list, held, *page, mode)) return true;
    }
}

/// Entries that stay keep their objects.
bool DataService::replaceFrom(List& list, const objc::Snapshot& seen, const store::Page& page, store::Mode mode) {
    std::unordered_map<std::int64_t, CallEntry*> known;
    for (std::size_t i = 0; i < seen.size(); ++i) known.emplace(entryOf(seen[i])->rowId, entryOf(seen[i]));
    std::vector<objc::Ref<CallEntry>> entries;
    for (const auto& record : page.rows) {
        const auto found = known.find(record.rowId);
        entries.push_back(found == known.end() ? CallEntry::of(record, texts_) : objc::Ref<CallEntry>(found->second));
        entries.back()->fill(record, texts_);
    }
    const auto array = arrayIn(list);
    if (!array->replaceFrom(seen, objectsOf(entries))) return false;
    list.last = entries.empty() ? objc::Strong<>() : objc::Strong<>(objc::Object{entries.back().self()});
    list.below = page.next;
    list.mode = mode;
    return true;
}

/// The days' entries: those whose calls are all gone say so and leave the list.
void DataService::rereadDays(store::Mode mode) {
    mode.groupByDate = true;
    std::unordered_set<const CallEntry*> emptied;
    std::erase_if(days_, [&](const auto& each) {
        CallEntry& entry = *each.second;
        const auto found = store_->remaining(store::Filter::all, mode, entry.record());
        if (!found) report(found.error());
        if (found && *found) entry.fill(**found, texts_);
        if (!found || *found) return false;
        for (auto* number : {&entry.dialledCount, &entry.receivedCount, &entry.missedCount, &entry.dialledDuration,
                             &entry.receivedDuration})
            *number = 0;
        emptied.insert(&entry);
        return true;
    });
    const auto kept = lists_[dayList].array.load();
    auto* array = objc::peerIf<CallArray>(kept);
    if (array) array->removeIf([&](objc::Object object) { return emptied.contains(entryOf(object)); });
}

void DataService::recount() {
    for (const auto filter : filters)
        if (const auto totals = countRows(filter); !totals) report(totals.error());
}

void DataService::sortArray(objc::Object list) const {
    const auto copied = objc::Strong<>::adopt(objc::send<"copy", objc::Object>(list));
    const auto count = objc::send<"count", unsigned long>(copied.get());
    std::vector<objc::Object> entries;
    for (unsigned long i = 0; i < count; ++i)
        entries.push_back(objc::send<"objectAtIndex:", objc::Object>(copied.get(), i));
    std::stable_sort(entries.begin(), entries.end(), [](objc::Object left, objc::Object right) {
        const CallEntry& one = *entryOf(left);
        const CallEntry& other = *entryOf(right);
        return one.date != other.date ? one.date > other.date : one.rowId > other.rowId;
    });
    const auto sorted = objc::make<objc::Object, "initWithObjects:count:">(objc::classNamed<"NSArray">(),
                                                                           reinterpret_cast<const id*>(entries.data()),
                                                                           static_cast<unsigned long>(entries.size()));
    if (list) objc::send<"setArray:">(list, sorted.get());
}

}  // namespace quorvel
