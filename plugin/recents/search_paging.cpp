// The rest of a search's matches, fetched from the database in one go.
#include "plugin/companion/data_controller.h"
#include "plugin/companion/settings.h"
#include "plugin/recents/loading.h"
#include "plugin/recents/record_set.h"
#include "plugin/recents/search.h"
#include "plugin/rows/snapshot_list.h"

namespace recents {
namespace {

bool equalTexts(NSString left, NSString right) { return left && right && left.isEqualToString(right); }

/// The results that are shown, looked up by what makes another the same: many are compared with many.
class Shown {
  public:
    explicit Shown(const rows::SeenList& results) {
        const NSUInteger count = results.count();
        for (NSUInteger i = 0; i < count; ++i) {
            auto entry = results.at<QVCallEntry>(i);
            records_.add(entry.ROWID());
            if (auto name = entry.name()) names_->addObject(name);
            if (auto number = entry.phoneNumber()) numbers_->addObject(number);
        }
    }
    bool holds(QVCallEntry entry) const {
        // The setting is read for every entry: it may change while the list is long.
        if (!QVSettingsDataController::sharedInstance().isGroupContacts_Call()) return records_.holds(entry.ROWID());
        return isAmong(entry.name(), names_.get()) || isAmong(entry.phoneNumber(), numbers_.get());
    }

  private:
    static bool isAmong(NSString value, NSMutableSet values) { return value && values.containsObject(value); }

    RecordSet records_;
    objc::Strong<NSMutableSet> names_ = NSMutableSet::make();
    objc::Strong<NSMutableSet> numbers_ = NSMutableSet::make();
};

objc::Strong<NSMutableArray> notShownYet(NSArray fetched, const rows::SeenList& results) {
    const Shown shown(results);
    auto fresh = rows::makeSnapshotList();
    const NSUInteger count = fetched.count();
    for (NSUInteger i = 0; i < count; ++i) {
        auto entry = fetched.objectAtIndex<QVCallEntry>(i);
        if (!shown.holds(entry)) fresh->addObject(entry);
    }
    return fresh;
}

void putCopies(objc::StrongSlot<NSMutableArray>& slot, NSMutableArray matches) {
    if (!slot.load()) slot.compareExchange({}, rows::makeSnapshotList());
    auto copies = slot.load();
    copies->removeAllObjects();
    copies->addObjectsFromArray(matches);
}

}  // namespace

bool sameNameOrNumber(QVCallEntry left, QVCallEntry right) {
    return equalTexts(left.name(), right.name()) || equalTexts(left.phoneNumber(), right.phoneNumber());
}

void loadMoreSearchedRecords(CallList list) { loadMoreMatches(list, {}); }

void loadMoreMatches(const CallList& list, NSString day) {
    auto& state = list.state;
    auto asked = state.edition.now();
    if (!state.searching) return;
    const Filter filter = state.filter();
    auto part = list.screen.searchDisplayController().searchBar().text();
    auto fetched = QVDataController::sharedInstance().getSearchedRecordsFromDB(filter, part, day);
    // Another thread may have ended or changed the search meanwhile: it is given nothing then.
    if (!state.edition.isCurrent(asked)) return;
    state.isAllRecsLoaded = true;
    rows::SeenList found(foundList(state));
    auto fresh = notShownYet(fetched, found);
    if (!state.isAllRecsLoaded || !state.searching) return;
    const auto putMatches = [&] {
        putCopies(state.searchCopies(filter), fresh);
        if (!found.append(fresh)) return false;
        state.rowCount = static_cast<std::int64_t>(found.count());
        return true;
    };
    if (putIn(list, asked, putMatches, [&] { forgetLoadedMatches(state); }))
        showEditButtonLater(list);
    else
        state.isAllRecsLoaded = false;  // the load-more row offers them again
}

}  // namespace recents
