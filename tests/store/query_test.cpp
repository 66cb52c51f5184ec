// Texts from elsewhere: the eight of the call records run as they stand; nothing else can do harm.
#include <gtest/gtest.h>

#include <cstdio>

#include "log_model.h"

namespace quorvel::store {
namespace {

class Query : public ::testing::Test {
  protected:
    void SetUp() override {
        add("5551234", 7, 1'700'000'000, 30, 5);
        add("5551234", 7, 1'700'000'100, 0, 4);
        add("5551234", 7, 1'700'500'000, 12, 4);
        add("anna@example.com", noContact, 1'700'000'050, 9, 16);
    }

    void add(const char* address, std::int32_t contact, std::int64_t date, std::int32_t duration, std::int32_t flags) {
        NewCall call;
        call.address = address;
        call.contactId = contact;
        call.date = date;
        call.duration = duration;
        call.flags = flags;
        call.location = "Berlin";
        call.faceTimeDataSize = 42;
        valueOf(store_.append(call));
    }

    std::vector<std::int64_t> rowIds(const std::string& text) {
        std::vector<std::int64_t> found;
        for (const CallRecord& record : store_.query(text)) found.push_back(record.rowId);
        return found;
    }

    Folder folder_;
    CallStore store_ = openStore(folder_.file());
    std::string day_ = dayText(LocalDays().dayOf(1'700'000'000));
};

using Rows = std::vector<std::int64_t>;

TEST_F(Query, theFullTextsGiveTheCallsOfADayNewestFirst) {
    const std::string columns = "select ROWID, date, duration, flags, face_time_data_size, location from call where ";
    EXPECT_EQ(rowIds(columns + "id=7 and datetime='" + day_ + "' order by date desc"), (Rows{2, 1}));
    EXPECT_EQ(rowIds(columns + "address='anna@example.com' and datetime='" + day_ + "' order by date desc"), (Rows{4}));
    EXPECT_EQ(rowIds(columns + "id=7 order by date desc LIMIT 1"), (Rows{3}));
    EXPECT_EQ(rowIds(columns + "address='5551234' order by date desc LIMIT 1"), (Rows{3}));
}

TEST_F(Query, theShortTextsGiveTheCallsOfADayNewestFirst) {
    const std::string columns = "select ROWID, date, duration, flags from call where ";
    EXPECT_EQ(rowIds(columns + "id=7 and datetime='" + day_ + "' order by date desc"), (Rows{2, 1}));
    EXPECT_EQ(rowIds(columns + "address='5551234' and datetime='" + day_ + "' order by date desc"), (Rows{2, 1}));
    EXPECT_EQ(rowIds(columns + "id=-1 order by date desc LIMIT 1"), (Rows{4}));
    EXPECT_EQ(rowIds(columns + "address='nobody' order by date desc LIMIT 1"), (Rows{}));
}

TEST_F(Query, aRecordHasWhatTheColumnsNamed) {
    const auto records =
        store_.query("select rowid, date, duration, flags, face_time_data_size, location from call where ROWID = 1");
    ASSERT_EQ(records.size(), 1U);
    EXPECT_EQ(records[0].rowId, 1);
    EXPECT_EQ(records[0].logId, 1);
    EXPECT_EQ(records[0].date, 1'700'000'000);
    EXPECT_EQ(records[0].duration, 30);
    EXPECT_EQ(records[0].flags, 5);
    EXPECT_EQ(records[0].faceTimeDataSize, 42);
    EXPECT_EQ(records[0].location, "Berlin");
    EXPECT_EQ(records[0].day, day_);
    EXPECT_EQ(records[0].address, "");
    EXPECT_EQ(records[0].contactId, noContact);
}

TEST_F(Query, whateverIsNotOneReadingStatementGivesAnEmptyList) {
    for (const char* text : {"",
                             "   ",
                             "-- nothing",
                             "delete from call",
                             "select ROWID from call; delete from call",
                             "update call set date = 0",
                             "insert into call (address) values ('x')",
                             "drop table call",
                             "pragma query_only = off",
                             "attach 'x.db' as x",
                             "vacuum into 'x.db'",
                             "begin",
                             "select ROWID from call where address='O'Neill'",
                             "select nothing from call",
                             "explain select ROWID from call",
                             "select ROWID from call; select ROWID from call",
                             "create table x (y)",
                             "select load_extension('x')",
                             "select ROWID from call where (",
                             "with x as (select 1) delete from call",
                             "select ROWID from call union all select abs(-9223372036854775808)"}) {
        EXPECT_EQ(store_.query(text).size(), 0U) << text;
    }
    EXPECT_EQ(valueOf(store_.totals(Filter::all, {})).calls, 4);
    EXPECT_EQ(valueOf(store_.verify()), std::vector<std::string>());
    EXPECT_EQ(rowIds("select ROWID from call where ROWID = 2 ; -- the second"), (Rows{2}));
}

TEST_F(Query, aTextThatHasNoEndOrGrowsWithoutBoundGivesAnEmptyList) {
    const std::string counting = "with recursive n(x) as (select 1 union all select x + 1 from n) ";
    EXPECT_EQ(store_.query(counting + "select x as ROWID from n").size(), 0U);
    EXPECT_EQ(store_.query(counting + "select count(*) as ROWID from n").size(), 0U);
    EXPECT_EQ(store_.query("select hex(zeroblob(1000000000)) as location").size(), 0U);
    EXPECT_EQ(rowIds("with two as (select 2 as x) select ROWID from call, two where ROWID = x"), (Rows{2}));
}

TEST_F(Query, aQuerySeesWhatWasWrittenJustBefore) {
    valueOf(store_.deleteCalls(std::vector<std::int64_t>{1}));
    EXPECT_EQ(rowIds("select ROWID from call order by ROWID"), (Rows{2, 3, 4}));
}

}  // namespace
}  // namespace quorvel::store
