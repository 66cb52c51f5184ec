// The calls that an entry stands for: which queries are asked, and what stands in where they find none.
#include "tests/messages/rows_screens.h"

namespace rowsmessages {
namespace {

class CallRecords : public RowsMessages {
  protected:
    /// The numbers of the calls that stand for the entry.
    std::vector<std::string> recordsOf(QVCallEntry entry) const {
        auto found = send<"callListForSelectedCall:", NSArray>(entry);
        std::vector<std::string> numbers;
        for (NSUInteger i = 0; i < found.count(); ++i)
            numbers.push_back(utf8(found.objectAtIndex<QVCallEntry>(i).phoneNumber()));
        return numbers;
    }
};

constexpr const char* contactDay =
    "getResult: select ROWID, date, duration, flags, face_time_data_size, location from call where id=7 and "
    "datetime='2024-06-15' order by date desc";
constexpr const char* contactLatest =
    "getResult: select ROWID, date, duration, flags, face_time_data_size, location from call where id=7 order by date "
    "desc LIMIT 1";
constexpr const char* addressDay =
    "getResult: select ROWID, date, duration, flags, face_time_data_size, location from call where address='+4930100' "
    "and datetime='2024-06-15' order by date desc";
constexpr const char* addressLatest =
    "getResult: select ROWID, date, duration, flags, face_time_data_size, location from call where address='+4930100' "
    "order by date desc LIMIT 1";

bool isOfDay(const std::string& query) { return query.find("datetime") != std::string::npos; }

TEST_F(CallRecords, ofAContactAreThoseOfItsRecordOnThatDay) {
    companion().result = [](const std::string&) { return std::vector<Call>{{.number = "a"}, {.number = "b"}}; };
    EXPECT_THAT(recordsOf(entryOf({.record = 7})), ElementsAre("a", "b"));
    EXPECT_THAT(events(), ElementsAre(contactDay));
}

TEST_F(CallRecords, ofANumberAreThoseOfTheNumberOnThatDay) {
    companion().result = [](const std::string&) { return std::vector<Call>{{.number = "a"}}; };
    EXPECT_THAT(recordsOf(entryOf({.number = "+4930100"})), ElementsAre("a"));
    EXPECT_THAT(events(), ElementsAre(addressDay));
}

TEST_F(CallRecords, ofADayWithoutAnyLeftAreTheLatestOfAnyDay) {
    companion().result = [](const std::string& query) {
        return isOfDay(query) ? std::vector<Call>{} : std::vector<Call>{{.number = "latest"}};
    };
    EXPECT_THAT(recordsOf(entryOf({.record = 7})), ElementsAre("latest"));
    EXPECT_THAT(events(), ElementsAre(contactDay, contactLatest));
}

TEST_F(CallRecords, ofAnEntryWithoutAnyCallsAreTheEntryItself) {
    auto entry = entryOf({.number = "+4930100"});
    auto found = send<"callListForSelectedCall:", NSArray>(entry.get());
    ASSERT_EQ(found.count(), 1U);
    EXPECT_EQ(found.objectAtIndex(0), entry.get());
    EXPECT_THAT(events(), ElementsAre(addressDay, addressLatest));
}

TEST_F(CallRecords, ofRecord0AreAskedByContact) {
    recordsOf(entryOf({.record = 0}));
    EXPECT_THAT(events().front(), testing::HasSubstr("where id=0 and datetime='2024-06-15'"));
}

TEST_F(CallRecords, ofARecordBelowThatOfNobodyAreAskedByContactOnPurpose) {
    recordsOf(entryOf({.record = -2147483647 - 1}));
    EXPECT_THAT(events().front(), testing::HasSubstr("where id=-2147483648 and"));
}

TEST_F(CallRecords, areAskedWithTheNumberAsItIsStoredOnPurpose) {
    recordsOf(entryOf({.number = "O'Neill%d%@; -- x"}));
    EXPECT_THAT(events().front(), testing::HasSubstr("where address='O'Neill%d%@; -- x' and datetime='2024-06-15'"));
    EXPECT_EQ(events().size(), 2U);
}

TEST_F(CallRecords, ofAWithheldNumberAreTheEntryItself) {
    auto entry = entryOf({.number = nullptr});
    auto found = send<"callListForSelectedCall:", NSArray>(entry.get());
    ASSERT_EQ(found.count(), 1U);
    EXPECT_EQ(found.objectAtIndex(0), entry.get());
}

TEST_F(CallRecords, areMissingAltogetherWhereTheCompanionAnswersNoList) {
    companion().answersNoList = true;
    EXPECT_FALSE((send<"callListForSelectedCall:", objc::Object>(entryOf({.record = 7}).get())));
}

TEST_F(CallRecords, leaveTheSharedFormatterWithTheFormatOfADayOnPurpose) {
    auto formatter = objc::sendClass<"QuorvelUtils", "dateFormatter", NSDateFormatter>();
    formatter.setDateFormat(text<"HH:mm">());
    recordsOf(entryOf({.record = 7}));
    EXPECT_EQ(sharedDateFormat(), "yyyy-MM-dd");
}

TEST_F(CallRecords, beforeTheYear1970AreOfTheirOwnDayToo) {
    recordsOf(entryOf({.record = 7, .date = -1}));
    EXPECT_THAT(events().front(), testing::HasSubstr("datetime='1969-12-31'"));
}

}  // namespace
}  // namespace rowsmessages
