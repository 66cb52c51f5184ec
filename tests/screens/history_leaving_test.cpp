// What the history screen reports when it goes away.
#include "tests/screens/history_fixture.h"

namespace screens {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;

class HistoryLeaving : public HistoryTest {
  protected:
    /// Leaves, and answers what companion and delegate were told.
    std::vector<std::string> leave() {
        trace({"QVDataController", "ScreensTestDelegate"});
        objc::send<"viewWillDisappear:">(screen_.get(), false);
        std::vector<std::string> told;
        for (const auto& line : traced())
            if (!line.starts_with("isAnyRecDeleted")) told.push_back(line);
        return told;
    }
    std::vector<std::string> reported() {
        std::vector<std::string> found;
        for (const auto& line : leave())
            if (line.starts_with("updateCallEntries") || line.starts_with("allHistory") ||
                line.starts_with("entryDeleted"))
                found.push_back(line);
        return found;
    }
};

TEST_F(HistoryLeaving, reportsNothingWhereNothingWasDeletedAnywhere) {
    fill(oneOfEach());
    open();
    EXPECT_THAT(reported(), IsEmpty());
    EXPECT_THAT(delegate_->deleted, IsEmpty());
}

TEST_F(HistoryLeaving, tellsTheDelegateThenTheCompanionWhatRemains) {
    fill(oneOfEach());
    open();
    service().setIsAnyRecDeleted(true);
    EXPECT_THAT(reported(), ElementsAre("entryDeleted: <QVCallEntry>",
                                        "updateCallEntriesTimeStamp:dldCallEntry:rcdCallEntry:msdCallEntry: "
                                        "<QVCallEntry> <QVCallEntry> <QVCallEntry> <QVCallEntry>"));
    EXPECT_THAT(delegate_->deleted, ElementsAre(entry()));
}

/// Recents answers the notification of a single deletion at once, and clears the companion's flag with it.
TEST_F(HistoryLeaving, reportsItsOwnDeletionOnceThoughTheFlagWasClearedMeanwhile) {
    fill(oneOfEach());
    open();
    screen_->commitDeletion(1);
    settle();
    service().setIsAnyRecDeleted(false);
    EXPECT_THAT(reported(), ElementsAre("entryDeleted: <QVCallEntry>", StartsWith("updateCallEntriesTimeStamp:")));
    EXPECT_THAT(reported(), IsEmpty());
}

TEST_F(HistoryLeaving, reportsThatItDeletedAllOfAKindThoughTheFlagWasClearedMeanwhile) {
    fill(oneOfEach());
    open();
    screen_->chooseSegment(1);
    objc::send<"showLogDeleteAllRecordsAction">(screen_.get());
    service().setIsAnyRecDeleted(false);
    EXPECT_THAT(reported(), ElementsAre("entryDeleted: <QVCallEntry>", StartsWith("updateCallEntriesTimeStamp:")));
}

TEST_F(HistoryLeaving, reportsNoDeletionThatWasRefused) {
    fill(oneOfEach());
    open();
    closeDatabase();
    screen_->commitDeletion(0);
    objc::send<"showLogDeleteAllRecordsAction">(screen_.get());
    EXPECT_THAT(reported(), IsEmpty());
}

TEST_F(HistoryLeaving, saysNilForAKindThatHasNoCallLeft) {
    fill({{.address = "+4930100", .date = noon, .flags = outgoing}});
    open();
    service().setIsAnyRecDeleted(true);
    EXPECT_THAT(reported(), Contains(HasSubstr("msdCallEntry: <QVCallEntry> <QVCallEntry> nil nil")));
}

TEST_F(HistoryLeaving, ofAnEmptyHistoryTellsTheCompanionAlone) {
    fill({{.address = "+4930100", .date = noon, .flags = outgoing}});
    open();
    service().setIsAnyRecDeleted(true);
    screen_->history().removeAllObjects();
    EXPECT_THAT(reported(), ElementsAre("allHistoryDeletedForEntry: <QVCallEntry>"));
    objc::send<"setHistory:">(screen_.get(), objc::Object{});
    EXPECT_THAT(reported(), ElementsAre("allHistoryDeletedForEntry: <QVCallEntry>"));
    EXPECT_THAT(delegate_->deleted, IsEmpty());
}

TEST_F(HistoryLeaving, withDaysShownReportsOnlyCallsOfTheEntrysOwnDay) {
    fill({{.address = "+4930100", .date = noon - day, .flags = outgoing},
          {.address = "+4930100", .date = noon, .flags = incoming}});
    open();
    setSetting("isGroupByDate", "on");
    service().setIsAnyRecDeleted(true);
    EXPECT_EQ(utf8(entry().grpByDate()), "2024-06-15");
    EXPECT_THAT(reported(), Contains(HasSubstr("msdCallEntry: <QVCallEntry> nil <QVCallEntry> nil")));
}

}  // namespace
}  // namespace screens
