// Counts, durations, search, queries, histories, sorting.
#include "fixture.h"

namespace quorvel::test {
namespace {

using CountsTest = CompanionTest;

NSArray search(std::int64_t filter, const char* text, const char* onDay = nullptr) {
    return objc::send<"getSearchedRecordsFromDB:searchString:date:", NSArray>(
        objc::Object{DataService::shared()->self}, filter, ns(text), onDay ? ns(onDay) : NSString{});
}
NSMutableArray result(const char* statement) {
    return objc::send<"getResult:", NSMutableArray>(objc::Object{DataService::shared()->self}, ns(statement));
}

TEST_F(CountsTest, countsAndDurationsAreOfTheFilterAndAreRemembered) {
    add({{"1", noon, 10, 5}, {"2", noon, 20, 4}, {"3", noon, 0, 4}, {"4", noon, 0, 5}, {"5", noon, 5, 4}});
    const std::int64_t counts[] = {5, 2, 2, 1};
    const std::int64_t durations[] = {35, 10, 25, 0};
    for (std::int64_t filter = 1; filter <= 4; ++filter) {
        EXPECT_EQ(count(filter), 0);
        EXPECT_EQ((objc::send<"getTotalCallCount:", std::int64_t>(object(), filter)), counts[filter - 1]);
        EXPECT_EQ((objc::send<"getTotalCallDuration:", std::int64_t>(object(), filter)), durations[filter - 1]);
        EXPECT_EQ(count(filter), counts[filter - 1]);
        EXPECT_EQ(duration(filter), durations[filter - 1]);
    }
}

TEST_F(CountsTest, aCountIsOfTheRowsThatTheListHas) {
    add({{"1", noon}, {"1", noon + 1}, {"2", noon + 2}, {"2", noon + day}, {"2", noon + day + 1, 5, 5}});
    const auto total = [&](std::int64_t filter) {
        return objc::send<"getTotalCallCount:", std::int64_t>(object(), filter);
    };
    EXPECT_EQ(total(all), 5);
    EXPECT_EQ(total(received), 4);
    setSetting("isGroupContacts_Call", "on");
    EXPECT_EQ(total(all), 2);
    EXPECT_EQ(total(received), 2);
    setSetting("isGroupByDate", "on");
    EXPECT_EQ(total(all), 2);
    EXPECT_EQ(total(dialled), 1);
    EXPECT_EQ((objc::send<"getTotalCallDuration:", std::int64_t>(object(), all)), 125);
}

TEST_F(CountsTest, aCountThatIsSetIsTheLogsOwnAllTheSame) {
    add({{"1", noon, 10}, {"2", noon + 1, 20}});
    objc::send<"getTotalCallCount:", std::int64_t>(object(), all);
    objc::send<"setAllCallsCount:">(object(), std::int64_t{7});
    EXPECT_EQ(count(all), 2);
    add({{"3", noon + 2, 5}});
    EXPECT_EQ(count(all), 2) << "nobody said that calls came";
    objc::send<"setAllCallsCount:">(object(), std::int64_t{7});
    EXPECT_EQ(count(all), 3);
    EXPECT_EQ(duration(all), 35);
}

TEST_F(CountsTest, aCountThatIsMadeUnknownStaysSoUntilItIsAskedOfTheLog) {
    add({{"1", noon}});
    objc::send<"getTotalCallCount:", std::int64_t>(object(), all);
    objc::send<"setAllCallsCount:">(object(), std::int64_t{0});
    EXPECT_EQ(count(all), 0);
    EXPECT_EQ((objc::send<"getTotalCallCount:", std::int64_t>(object(), all)), 1);
    EXPECT_EQ(count(all), 1);
}

TEST_F(CountsTest, aKnownCountFollowsTheGrouping) {
    add({{"1", noon}, {"1", noon + 1}, {"1", noon + day}});
    objc::send<"getTotalCallCount:", std::int64_t>(object(), all);
    EXPECT_EQ(count(all), 3);
    setSetting("isGroupByDate", "on");
    EXPECT_EQ(count(all), 2);
    setSetting("isGroupByDate", "off");
    setSetting("isGroupContacts_Call", "on");
    EXPECT_EQ(count(all), 1);
}

TEST_F(CountsTest, durationsReadAsHoursMinutesAndSeconds) {
    const std::pair<std::int64_t, const char*> cases[] = {{0, "0:00:00"},      {59, "0:00:59"},       {61, "0:01:01"},
                                                          {45184, "12:33:04"}, {360000, "100:00:00"}, {-5, "0:00:00"}};
    for (const auto& [seconds, text] : cases)
        EXPECT_EQ(uikit::utf8(objc::send<"getAllCallsDuration:", NSString>(object(), seconds)), text);
}

TEST_F(CountsTest, aSearchFindsNamesAndNumbersWhateverTheCase) {
    add({{"+4930111", noon, 5, 4, 3, "Grüße Weber"}, {"+4930222", noon + day, 5, 5}, {"weber@b.example", noon + day}});
    EXPECT_EQ(rowIds(search(all, "WEBER")), (std::vector{3, 1}));
    EXPECT_EQ(rowIds(search(all, "grüsse")), (std::vector{1}));
    EXPECT_EQ(rowIds(search(dialled, "4930")), (std::vector{2}));
    EXPECT_EQ(rowIds(search(all, "weber", "2024-06-15")), (std::vector{1}));
    EXPECT_EQ(search(all, "nobody").count(), 0U);
}

TEST_F(CountsTest, aQueryGivesAnEntryForEachRowWithTheColumnsThatItNames) {
    add({{"100", noon, 30, 4, 9, "Anna"}, {"100", noon + 60, 0, 4, 9, "Anna"}});
    const auto found = result(
        "select ROWID, date, duration, flags, face_time_data_size, location from call where id=9 and "
        "datetime='2024-06-15' order by date desc");
    ASSERT_EQ(rowIds(found), (std::vector{2, 1}));
    EXPECT_EQ(entry(found, 1).date, noon);
    EXPECT_EQ(entry(found, 1).duration, 30);
    EXPECT_EQ(entry(found, 1).flag, 4);
    EXPECT_EQ(rowIds(result("select ROWID, date, duration, flags from call where address='100' order by date desc "
                            "LIMIT 1")),
              (std::vector{2}));
}

TEST_F(CountsTest, aQueryThatFindsNothingOrIsRefusedAnswersAnEmptyListThatTakesEntries) {
    add({{"100", noon}});
    for (const char* statement :
         {"select ROWID from call where id=5", "delete from call", "select ROWID from call; delete from call",
          "select ROWID from call where address='it's'", "drop table call", "", "select * from nothing"}) {
        const auto found = result(statement);
        ASSERT_TRUE(found) << statement;
        EXPECT_EQ(found.count(), 0U) << statement;
        found.addObject(objc::make<objc::Object>(objc::classNamed<"QVCallEntry">()));
        EXPECT_EQ(found.count(), 1U) << statement;
    }
    EXPECT_EQ((objc::send<"getTotalCallCount:", std::int64_t>(object(), all)), 1);
}

TEST_F(CountsTest, aHistoryIsOfTheContactOrOfTheNumberWithoutOne) {
    add({{"100", noon, 5, 4, 9, "Anna"}, {"200", noon + 1, 5, 4, 9, "Anna"}, {"100", noon + 2}, {"300", noon + 3}});
    read(9, 0, all);
    const auto history = [&](unsigned long row) {
        return rowIds(objc::send<"getHistoryForContact:", NSArray>(object(), list(all).objectAtIndex(row)));
    };
    EXPECT_EQ(history(2), (std::vector{2, 1}));
    EXPECT_EQ(history(1), (std::vector{3}));
    EXPECT_EQ((objc::send<"getHistoryForContact:", NSArray>(object(), objc::Object{}).count()), 0U);
}

TEST_F(CountsTest, aListIsSortedByDateAndThenByRow) {
    add({{"1", noon}, {"2", noon + 5}, {"3", noon}});
    read(9, 0, all);
    const auto plain = NSMutableArray::make();
    for (const unsigned long row : {2UL, 0UL, 1UL}) plain->addObject(list(all).objectAtIndex(row));
    objc::send<"sortArray:">(object(), plain.get());
    EXPECT_EQ(rowIds(plain.get()), (std::vector{2, 3, 1}));
    const auto moved = objc::Strong<>(list(all).objectAtIndex(0));
    list(all).removeObjectAtIndex(0);
    list(all).addObject(moved);
    objc::send<"sortArray:">(object(), list(all));
    EXPECT_EQ(rowIds(list(all)), (std::vector{2, 3, 1}));
}

TEST_F(CountsTest, theServiceIsOneForTheProcess) {
    EXPECT_EQ((objc::sendClass<"QVDataController", "sharedInstance", objc::Object>().self), service().self);
}

}  // namespace
}  // namespace quorvel::test
