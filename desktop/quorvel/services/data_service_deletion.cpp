// QVDataController: deleting. Each operation is one transaction on calls that were there when it was asked for.
#include <algorithm>
#include <cstdio>
#include <unordered_set>

#include "desktop/quorvel/services/counterpart.h"
#include "desktop/quorvel/services/data_service.h"
#include "desktop/quorvel/services/log_opening.h"
#include "desktop/quorvel/services/settings_service.h"
#include "desktop/quorvel/services/texts.h"
#include "desktop/uikit/alert_view.h"
#include "desktop/uikit/text.h"
#include "platform/dispatch.h"

namespace quorvel {
namespace {

/// The key of the message after a deletion that failed, which the application has among its own texts.
constexpr std::string_view unableToDelete = "UNABLE_DELETE";

std::vector<objc::Ref<CallEntry>> entriesIn(objc::Object array) {
    std::vector<objc::Ref<CallEntry>> entries;
    const auto kept = objc::Strong<>::adopt(objc::send<"copy", objc::Object>(array));
    const auto count = objc::send<"count", unsigned long>(kept.get());
    for (unsigned long i = 0; i < count; ++i)
        entries.emplace_back(objc::send<"objectAtIndex:", CallEntry*>(kept.get(), i));
    return entries;
}

bool isOf(store::Filter filter, const CallEntry& entry) {
    return filter == store::Filter::all || filter == entry.kind();
}

bool isAt(objc::Object day, const CallEntry& entry) { return !day || uikit::utf8(day) == uikit::utf8(entry.dayText()); }

}  // namespace

bool DataService::failed(const store::Error& error) const {
    std::fprintf(stderr, "libQuorvel: calls could not be deleted: %s\n", error.message.c_str());
    tellOfDamage(error);
    return false;
}

bool DataService::removeCalls(std::int64_t code, objc::Object day) {
    if (!store_) return false;
    const store::Filter filter = store::filterOf(code);
    const auto bound = store_->newestRowId();
    if (!bound) return failed(bound.error());
    const auto deleted = day ? store_->deleteDay(filter, uikit::utf8(day), *bound) : store_->deleteAll(filter, *bound);
    if (!deleted) return failed(deleted.error());
    if (*deleted > 0) setIsAnyRecDeleted(true);
    const std::int64_t newest = *bound;
    keepInStep([&](const CallEntry& entry) { return entry.rowId <= newest && isOf(filter, entry) && isAt(day, entry); },
               Days::Reread);
    return true;
}

/// The calls that the entry stood for when the user saw it: itself, or as many from it on as it folds.
store::Result<std::vector<std::int64_t>> DataService::rowIdsOf(const CallEntry& entry, store::Filter filter) const {
    if (entry.count <= 1) return std::vector<std::int64_t>{entry.rowId};
    const store::Cursor above{entry.date, entry.rowId + std::int64_t{1}, INT64_MAX};
    const auto page = store_->page(filter, {}, above, entry.count);
    if (!page) return page.error();
    const std::int32_t contact = entry.contact;
    const std::string address = uikit::utf8(entry.phoneNumber());
    std::vector<std::int64_t> rowIds;
    for (const auto& record : (*page).rows) {
        const bool isSame = contact != store::noContact || record.contactId != store::noContact
                                ? contact == record.contactId
                                : address == record.address;
        if (!isSame) break;
        rowIds.push_back(record.rowId);
    }
    return rowIds;
}

bool DataService::removeNamed(const std::vector<objc::Ref<CallEntry>>& entries, std::int64_t code, Days days) {
    if (!store_) return false;
    std::vector<std::int64_t> rowIds;
    for (const auto& entry : entries) {
        const auto folded = rowIdsOf(*entry, store::filterOf(code));
        if (!folded) return failed(folded.error());
        rowIds.insert(rowIds.end(), (*folded).begin(), (*folded).end());
    }
    const bool isAny = !entries.empty();
    if (!removeRows(std::move(rowIds), days)) return false;
    if (isAny) setIsAnyRecDeleted(true);
    for (const auto& entry : entries) entry->setIsDeleted(true);
    return true;
}

bool DataService::removeRows(std::vector<std::int64_t> rowIds, Days days) {
    const auto deleted = store_->deleteCalls(rowIds);
    if (!deleted) return failed(deleted.error());
    const std::unordered_set<std::int64_t> gone(rowIds.begin(), rowIds.end());
    keepInStep([&](const CallEntry& entry) { return gone.contains(entry.rowId); }, days);
    return true;
}

bool DataService::removeListed(objc::Object entries, std::int64_t code, bool) {
    return removeNamed(entriesIn(entries), code, Days::Reread);
}

bool DataService::removeEntry(CallEntry* entry, std::int64_t code, objc::Object) {
    if (!store_ || !entry) return false;
    if (entry->isDay()) return removeCalls(code, entry->dayText().get());
    return removeNamed({entry}, code, Days::Reread);
}

/// A screen that deleted many calls asks this for each of them: those left the lists together, with their calls.
void DataService::removeFromLists(CallEntry* entry, std::int64_t) {
    if (!entry || entry->isDeleted()) return;
    const std::int32_t rowId = entry->rowId;
    const std::lock_guard lock(filling_);
    for (int i = 0; i < 4; ++i) {
        const auto kept = lists_[i].array.load();
        if (auto* array = objc::peerIf<CallArray>(kept))
            array->removeIf([&](objc::Object object) {
                const auto* each = objc::peerOf<CallEntry>(object);
                return each && each->rowId == rowId;
            });
    }
}

bool DataService::removeLogEntry(CallEntry* entry, std::int64_t code) {
    return store_ && entry && removeNamed({entry}, code, Days::Reread);
}

bool DataService::removeHistory(CallEntry* entry, std::int64_t code, objc::Object day, std::int64_t shown) {
    if (!store_ || !entry) return false;
    const auto calls = historyOf(*entry, store::filterOf(code));
    if (!calls) return failed(calls.error());
    const std::string dayText = uikit::utf8(day);
    std::vector<std::int64_t> rowIds;
    for (const auto& call : *calls)
        if (!day || call.day == dayText) rowIds.push_back(call.rowId);
    // Row identifiers rise as calls come in.
    std::sort(rowIds.begin(), rowIds.end());
    if (shown > 0 && static_cast<std::uint64_t>(shown) < rowIds.size()) rowIds.resize(static_cast<std::size_t>(shown));
    if (!removeRows(std::move(rowIds), Days::LeftToTheScreen)) return false;
    setIsAnyRecDeleted(true);
    return true;
}

bool DataService::removeLogEntries(objc::Object entries, std::int64_t code) {
    return removeNamed(entriesIn(entries), code, Days::LeftToTheScreen);
}

void DataService::historyDeleted(CallEntry* entry) {
    if (!store_ || !entry) return;
    setIsAnyRecDeleted(true);
    const auto left = historyOf(*entry, store::Filter::all);
    if (!left) {
        failed(left.error());
        return;
    }
    std::unordered_set<std::int64_t> remaining;
    for (const auto& call : *left) remaining.insert(call.rowId);
    const Counterpart counterpart(*entry);
    keepInStep([&](const CallEntry& each) { return !remaining.contains(each.rowId) && counterpart.isOn(each); },
               Days::Reread);
}

void DataService::updateTimeStamps(CallEntry*, CallEntry*, CallEntry*, CallEntry*) {
    if (!store_) return;
    keepInStep([](const CallEntry&) { return false; }, Days::Reread);
}

void DataService::showErrorMessage(objc::Object text) const {
    dispatch::asyncOnMain([text = objc::Strong<>(text)] {
        auto alert = objc::make<objc::Object>(objc::classOf<uikit::AlertView>());
        auto* view = objc::peerOf<uikit::AlertView>(alert.self());
        const auto ok = objc::sendClass<"QuorvelUtils", "getLocalizedString:", objc::Object>(uikit::nsString("OK"));
        // An application whose own texts are missing asks for the message by its key.
        const bool isKey = uikit::utf8(text) == unableToDelete;
        view->initWithTitleMessage(uikit::nsString(""), isKey ? Texts::shared().text(text).get() : text.get(), {}, ok,
                                   {});
        view->show();
    });
}

}  // namespace quorvel
