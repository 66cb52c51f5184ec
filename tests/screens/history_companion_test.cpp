// What the companion sees while the history screen asks it to delete, and the days that are empty afterwards.
#include "desktop/substrate/substrate.h"
#include "tests/screens/history_fixture.h"

namespace screens {
namespace {

using testing::ElementsAre;

/// What one deletion of a contact's calls was asked with, as the companion sees it during the call.
struct Asked {
    int flag;
    int duration;
    std::int64_t filter;
    bool hasDay;
    std::int64_t count;

    friend bool operator==(const Asked&, const Asked&) = default;
};
std::vector<Asked> asked;

using Deletion = BOOL (*)(id, SEL, id entry, std::int64_t filter, id day, std::int64_t count);
Deletion original = nullptr;

BOOL deleteContact(id service, SEL name, id entry, std::int64_t filter, id day, std::int64_t count) {
    const auto call = objc::as<QVCallEntry>(entry);
    asked.push_back({call.flag(), call.duration(), filter, day != nullptr, count});
    return original(service, name, entry, filter, day, count);
}

using CountSetter = void (*)(id, SEL, std::int64_t count);
CountSetter originalSetter = nullptr;
/// What each count that was set took off or added to the count at that moment.
std::vector<std::int64_t> countChanges;

void setCount(id service, SEL name, std::int64_t count) {
    countChanges.push_back(count - objc::as<QVDataController>(service).allCallsCount());
    originalSetter(service, name, count);
}

template <objc::Name name, class Function>
void watchMessage(Function replacement, Function& former) {
    IMP previous = nullptr;
    MSHookMessageEx(objc::classNamed<"QVDataController">(), objc::selector<name>(), objc::implementation(replacement),
                    &previous);
    former = reinterpret_cast<Function>(reinterpret_cast<void (*)()>(previous));
}

class HistoryCompanion : public HistoryTest {
  protected:
    void SetUp() override {
        asked.clear();
        static const bool once = (watch(), true);
        ASSERT_TRUE(once);
    }
    objc::Strong<QVCallEntry> dayEntry(const char* text, std::int64_t dialled, std::int64_t received,
                                       std::int64_t missed) {
        auto entry = objc::make<QVCallEntry>(objc::classNamed<"QVCallEntry">());
        objc::send<"setGrpByDate:">(entry.get(), ns(text));
        entry->setDldCallsCnt(dialled);
        entry->setRcdCallsCnt(received);
        entry->setMsdCallsCnt(missed);
        service().dateCallsList().addObject(entry);
        return entry;
    }

  private:
    static void watch() {
        watchMessage<"removeLogEntryFromDB:calFilterType:date:currentCount:">(&deleteContact, original);
        watchMessage<"setAllCallsCount:">(&setCount, originalSetter);
    }
};

TEST_F(HistoryCompanion, seesTheEntrySteeredDuringTheCallAndItsOwnFlagAfterwards) {
    fill(oneOfEach());
    open();
    setSetting("isGroupContacts_Call", "on");
    entry().setFlag(4);
    entry().setDuration(42);
    closeDatabase();
    for (const std::int64_t filter : {1, 2, 3, 4}) {
        objc::send<"setFilterType:">(screen_.get(), filter);
        objc::send<"showLogDeleteAllRecordsAction">(screen_.get());
        EXPECT_EQ(entry().flag(), 4);
        EXPECT_EQ(entry().duration(), 42);
    }
    EXPECT_THAT(asked, ElementsAre(Asked{4, 42, 1, false, 4}, Asked{9, 42, 2, false, 4}, Asked{0, 42, 3, false, 4},
                                   Asked{0, 0, 4, false, 4}));
}

TEST_F(HistoryCompanion, isNotAskedForWhatTheScreenIsGiven) {
    start();
    make({});
    const auto list = NSMutableArray::make();
    const auto given = objc::make<QVCallEntry>(objc::classNamed<"QVCallEntry">());
    objc::send<"setEntry:">(screen_.get(), given.get());
    objc::send<"setLogInfoList:">(screen_.get(), list.get());
    objc::send<"setHistory:">(screen_.get(), list.get());
    objc::send<"setFooterInfo:">(screen_.get(), ns("seven calls"));
    objc::send<"setFilterType:">(screen_.get(), std::int64_t{3});
    objc::send<"setIsLogEditing:">(screen_.get(), true);
    EXPECT_EQ(entry(), given.get());
    EXPECT_EQ((objc::send<"delegate", objc::Object>(screen_.get())), objc::Object{delegate_->self});
    EXPECT_EQ(screen_->logInfoList(), list.get());
    EXPECT_EQ(screen_->history(), list.get());
    EXPECT_EQ(utf8(screen_->footerInfo()), "seven calls");
    EXPECT_EQ(screen_->filterType(), 3);
    EXPECT_TRUE(screen_->isLogEditing());
}

TEST_F(HistoryCompanion, isToldHowManyRowsTheScreenCountedLast) {
    fill(oneOfEach());
    open();
    setSetting("isGroupContacts_Call", "on");
    closeDatabase();
    screen_->chooseSegment(1);
    objc::send<"showLogDeleteAllRecordsAction">(screen_.get());
    // Two dialled calls were counted; what became of the list since is not asked.
    screen_->logInfoList().removeObjectAtIndex(0);
    objc::send<"showLogDeleteAllRecordsAction">(screen_.get());
    EXPECT_THAT(asked, ElementsAre(Asked{9, 0, 2, false, 2}, Asked{9, 0, 2, false, 2}));
}

TEST_F(HistoryCompanion, losesEachDayWhoseCountsAddUpToNoneOrLess) {
    fill(oneOfEach());
    open();
    setSetting("isGroupByDate", "on");
    service().setDateCallsList(NSMutableArray::make());
    const auto none = dayEntry("2024-06-15", 0, 0, 1);           // loses a missed call
    const auto fewerThanNone = dayEntry("2024-06-14", 0, 0, 0);  // loses a received call
    const auto one = dayEntry("2024-06-13", 2, -1, 1);           // loses a dialled call
    countChanges.clear();
    objc::send<"showLogDeleteAllRecordsAction">(screen_.get());
    EXPECT_EQ(none->callsOfDay(), 0);
    EXPECT_EQ(fewerThanNone->callsOfDay(), -1);
    EXPECT_EQ(one->callsOfDay(), 1);
    ASSERT_EQ(service().dateCallsList().count(), 1U);
    EXPECT_EQ(service().dateCallsList().objectAtIndex<QVCallEntry>(0), one.get());
    EXPECT_THAT(countChanges, ElementsAre(-2));
}

}  // namespace
}  // namespace screens
