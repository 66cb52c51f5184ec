// QVDataController: deleting, and what a deletion leaves in the lists in memory.
#include <algorithm>
#include <cstdio>

#include "desktop/quorvel/services/data_service.h"
#include "desktop/quorvel/services/settings_service.h"
#include "desktop/uikit/alert_view.h"
#include "desktop/uikit/text.h"
#include "platform/dispatch.h"

namespace quorvel {
namespace {

std::vector<objc::Ref<CallEntry>> entriesIn(objc::Object array) {
    std::vector<objc::Ref<CallEntry>> entries;
    const auto kept = objc::Strong<>::adopt(objc::send<"copy", objc::Object>(array));
    const auto count = objc::send<"count", unsigned long>(kept.get());
    for (unsigned long i = 0; i < count; ++i)
        entries.emplace_back(objc::send<"objectAtIndex:", CallEntry*>(kept.get(), i));
    return entries;
}

/// No call that arrived after the user asked is deleted.
std::int64_t boundOf(const store::CallStore& calls) { return calls.newestRowId().valueOr(store::anyRowId); }

bool sameParty(const CallEntry& left, const CallEntry& right) {
    if (left.contact != store::noContact || right.contact != store::noContact) return left.contact == right.contact;
    return uikit::utf8(left.phoneNumber.load()) == uikit::utf8(right.phoneNumber.load());
}

}  // namespace

/// What every deletion ends with: the flag, and counts and durations that are asked anew.
bool DataService::finish(const store::Result<std::int64_t>& deleted) {
    if (!deleted) {
        std::fprintf(stderr, "libQuorvel: calls could not be deleted: %s\n", deleted.error().message.c_str());
        return false;
    }
    setIsAnyRecDeleted(true);
    forgetTotals();
    return true;
}

void DataService::forgetTotals() {
    for (auto& list : lists_) {
        list.count.store(0, std::memory_order_relaxed);
        list.duration.store(0, std::memory_order_relaxed);
    }
    const std::lock_guard lock(positionsMutex_);
    positions_.clear();
}

/// Takes the entries out of every list in memory; answers whether there were any.
bool DataService::removeWhere(const std::function<bool(const CallEntry&)>& isGone) {
    bool any = false;
    for (auto& list : lists_) {
        const auto kept = list.array.load();
        if (!kept) continue;
        objc::peerOf<CallArray>(kept.self())->removeIf([&](objc::Object object) {
            const bool gone = isGone(*objc::peerOf<CallEntry>(object));
            any = any || gone;
            return gone;
        });
    }
    return any;
}

bool DataService::removeCalls(std::int64_t code, objc::Object day) {
    if (!store_) return false;
    const store::Filter filter = store::filterOf(code);
    const std::int64_t bound = boundOf(*store_);
    return finish(day ? store_->deleteDay(filter, uikit::utf8(day), bound) : store_->deleteAll(filter, bound));
}

bool DataService::removeListed(objc::Object entries, std::int64_t, bool) {
    if (!store_) return false;
    std::vector<std::int64_t> rowIds;
    for (const auto& entry : entriesIn(entries)) rowIds.push_back(entry->rowId);
    return finish(store_->deleteCalls(rowIds));
}

bool DataService::removeEntry(CallEntry* entry, std::int64_t code, objc::Object) {
    if (!store_ || !entry) return false;
    const store::Mode mode = SettingsService::shared()->mode();
    return finish(store_->deleteRow(store::filterOf(code), mode, entry->record(), boundOf(*store_)));
}

void DataService::removeFromLists(CallEntry* entry, std::int64_t) {
    if (!entry) return;
    const std::int32_t rowId = entry->rowId;
    removeWhere([rowId](const CallEntry& each) { return each.rowId == rowId; });
    forgetTotals();
}

bool DataService::removeLogEntry(CallEntry* entry, std::int64_t) {
    if (!store_ || !entry) return false;
    const std::int64_t rowId = entry->rowId;
    return finish(store_->deleteCalls({&rowId, 1}));
}

bool DataService::removeLogEntryForDay(CallEntry* entry, std::int64_t code, objc::Object day, std::int64_t) {
    if (!store_ || !entry) return false;
    const std::string dayText = uikit::utf8(day);
    return finish(store_->deleteHistory(store::filterOf(code), entry->contact, uikit::utf8(entry->phoneNumber.load()),
                                        day ? std::optional<std::string_view>(dayText) : std::nullopt,
                                        boundOf(*store_)));
}

bool DataService::removeLogEntries(objc::Object entries, std::int64_t code) {
    return removeListed(entries, code, true);
}

void DataService::historyDeleted(CallEntry* entry) {
    if (!entry) return;
    const objc::Ref<CallEntry> gone(entry);
    removeWhere([&gone](const CallEntry& each) { return sameParty(each, *gone); });
    forgetTotals();
}

/// The entry of the party in each list shows its newest remaining call; without one it leaves the list.
void DataService::updateTimeStamps(CallEntry* all, CallEntry* dialled, CallEntry* received, CallEntry* missed) {
    CallEntry* newest[] = {all, dialled, received, missed};
    const CallEntry* any = nullptr;
    for (auto* each : newest) any = any ? any : each;
    if (!any) return;
    for (std::size_t i = 0; i < std::size(newest); ++i) {
        const auto kept = lists_[i].array.load();
        if (!kept) continue;
        auto* list = objc::peerOf<CallArray>(kept.self());
        if (!newest[i]) {
            list->removeIf([&](objc::Object object) { return sameParty(*objc::peerOf<CallEntry>(object), *any); });
            continue;
        }
        for (const auto& entry : entriesIn(kept.get())) {
            if (!sameParty(*entry, *newest[i])) continue;
            entry->rowId = newest[i]->rowId.load();
            entry->logId = newest[i]->logId.load();
            entry->date = newest[i]->date.load();
            entry->duration = newest[i]->duration.load();
            entry->flag = newest[i]->flag.load();
            break;
        }
    }
    forgetTotals();
}

void DataService::sortArray(objc::Object list) const {
    auto* array = objc::peerIf<CallArray>(list);
    if (!array) return;
    auto entries = entriesIn(list);
    std::stable_sort(entries.begin(), entries.end(), [](const auto& left, const auto& right) {
        if (left->date != right->date) return left->date > right->date;
        return left->rowId > right->rowId;
    });
    std::vector<objc::Object> sorted;
    for (const auto& entry : entries) sorted.push_back(objc::Object{entry.self()});
    array->replaceAll(sorted);
}

void DataService::showErrorMessage(objc::Object text) const {
    dispatch::asyncOnMain([text = objc::Strong<>(text)] {
        auto alert = objc::make<objc::Object>(objc::classOf<uikit::AlertView>());
        auto* view = objc::peerOf<uikit::AlertView>(alert.self());
        view->initWithTitleMessage(uikit::nsString(""), text, {}, uikit::nsString("OK"), {});
        view->show();
    });
}

}  // namespace quorvel
