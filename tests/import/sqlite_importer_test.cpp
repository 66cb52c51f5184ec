// What rows of handsets' databases mean.
#include "tools/import/sqlite_importer.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <rapidcheck.h>

#include "desktop/quorvel/store/call_store.h"
#include "desktop/quorvel/store/import_session.h"
#include "tests/import/reading.h"

namespace import_tests {
namespace {

using quorvel::store::NewCall;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

const std::string callTable =
    "create table call (ROWID integer primary key autoincrement, address text, date integer, duration integer, "
    "flags integer, id integer, name text, country_code text, network_code text, read integer, assisted integer, "
    "face_time_data blob, originalAddress text, answered integer default 1);";

const std::string laterTable =
    "create table ZCALLRECORD (Z_PK integer primary key, Z_ENT integer, Z_OPT integer, ZANSWERED integer, "
    "ZCALLTYPE integer, ZORIGINATED integer, ZREAD integer, ZDATE timestamp, ZDURATION float, ZFACE_TIME_DATA integer, "
    "ZLOCATION varchar, ZNAME varchar, ZISO_COUNTRY_CODE varchar, ZSERVICE_PROVIDER varchar, ZUNIQUE_ID varchar, "
    "ZADDRESS blob);";

class SqliteImporting : public testing::Test {
  protected:
    Reading readDatabase(const std::string& statements) {
        runOn(file(), statements);
        Reading reading = read(file());
        EXPECT_EQ(reading.refusal, "");
        return reading;
    }
    std::filesystem::path file() const { return directory_.file("some database"); }

    tools_tests::Directory directory_;
};

TEST_F(SqliteImporting, theHandsetsTableGivesItsCalls) {
    const Reading reading = readDatabase(
        callTable +
        "insert into call values (7, '+15713083236', 1339531490, 31, 4, 12, 'Anna', '310', '410', 1, 0, null, null, 1);"
        "insert into call values (8, 'anna@example.com', 1339531500, 0, 17, -1, null, null, null, 0, 0, 4096, null, 1);"
        "insert into call values (9, '', 1339531600, 0, 1048580, -1, null, null, null, 0, 0, null, null, 0);");
    EXPECT_EQ(reading.format, "a handset's call_history.db");
    EXPECT_THAT(reading.complaints, IsEmpty());
    ASSERT_EQ(reading.calls.size(), 3U);
    const NewCall& first = reading.calls[0];
    EXPECT_EQ(first.address, "+15713083236");
    EXPECT_EQ(first.date, 1339531490);
    EXPECT_EQ(first.duration, 31);
    EXPECT_EQ(first.flags, 4);
    EXPECT_EQ(first.contactId, quorvel::store::noContact);
    EXPECT_EQ(first.name, "Anna");
    EXPECT_EQ(first.extra,
              R"({"source":"call_history.db","id":"12","country_code":"310","network_code":"410","read":"1",)"
              R"("assisted":"0","answered":"1"})");
    EXPECT_EQ(reading.calls[1].faceTimeDataSize, 4096);
    EXPECT_EQ(reading.calls[1].flags, 17);
    EXPECT_EQ(reading.calls[2].flags, 1048580);
}

TEST_F(SqliteImporting, theFirstHandsetsTableIsEnough) {
    const Reading reading = readDatabase(
        "create table call (ROWID integer primary key autoincrement, address text, date integer, duration integer, "
        "flags integer, id integer);"
        "insert into call values (1, '5550000', 1200000000, 5, 5, -1);");
    ASSERT_EQ(reading.calls.size(), 1U);
    EXPECT_EQ(reading.calls[0].flags, 5);
    EXPECT_EQ(reading.calls[0].date, 1200000000);
}

TEST_F(SqliteImporting, datesBelowTheHandsetsYearsCountFrom2001) {
    const Reading reading =
        readDatabase(callTable +
                     "insert into call (address, date, duration, flags) values ('1', 361224290, 1, 4);"
                     "insert into call (address, date, duration, flags) values ('1', 1167000000, 1, 4);");
    ASSERT_EQ(reading.calls.size(), 2U);
    EXPECT_EQ(reading.calls[0].date, 361224290 + 978307200);
    EXPECT_EQ(reading.calls[1].date, 1167000000);
}

TEST_F(SqliteImporting, theLaterTablesDatesCountFrom2001) {
    const Reading reading = readDatabase(
        laterTable +
        "insert into ZCALLRECORD values (1, 2, 1, 1, 1, 0, 1, 400000000.0, 63.0, null, 'Berlin', 'Anna', 'de', "
        "'com.apple.Telephony', 'A-1', cast('+4930100' as blob));"
        "insert into ZCALLRECORD values (2, 2, 1, 0, 8, 1, 0, 400000100.75, 0.0, 12, null, null, null, "
        "'com.apple.FaceTime', 'A-2', 'anna@example.com');"
        "insert into ZCALLRECORD values (3, 2, 1, 1, 16, 0, 0, 400000200, 0.4, null, null, null, null, null, 'A-3', "
        "null);"
        "insert into ZCALLRECORD values (4, 2, 1, 1, 0, 0, 0, 400000300, 9.5, null, null, null, null, "
        "'net.example.Talk', 'A-4', '77');");
    EXPECT_EQ(reading.format, "a handset's CallHistory.storedata");
    ASSERT_EQ(reading.calls.size(), 4U);
    const auto& calls = reading.calls;
    EXPECT_EQ(calls[0].date, 1378307200);
    EXPECT_EQ(calls[0].address, "+4930100");
    EXPECT_EQ(calls[0].duration, 63);
    EXPECT_EQ(calls[0].flags, 0);
    EXPECT_EQ(calls[0].location, "Berlin");
    EXPECT_EQ(calls[0].name, "Anna");
    EXPECT_THAT(calls[0].extra, HasSubstr(R"("ZUNIQUE_ID":"A-1")"));
    EXPECT_THAT(calls[0].extra, Not(HasSubstr("ZDATE")));
    EXPECT_EQ(calls[1].date, 1378307300);
    EXPECT_THAT(calls[1].extra, HasSubstr(R"("ZDATE":"400000100.75")"));
    EXPECT_EQ(calls[1].flags, 1 | 16);
    EXPECT_EQ(calls[1].faceTimeDataSize, 12);
    EXPECT_EQ(calls[2].flags, 16 | 32);
    EXPECT_EQ(calls[2].address, "");
    EXPECT_EQ(calls[2].duration, 1);
    EXPECT_EQ(calls[3].duration, 9);
    EXPECT_THAT(calls[3].extra, HasSubstr(R"("ZCALLTYPE":"0")"));
    EXPECT_THAT(calls[3].extra, HasSubstr(R"("ZDURATION":"9.5")"));
}

TEST_F(SqliteImporting, thoseWhoTookPartInACallOfSeveralStandBesideIt) {
    const Reading reading = readDatabase(
        laterTable +
        "create table ZHANDLE (Z_PK integer primary key, ZVALUE varchar);"
        "create table Z_3REMOTEPARTICIPANTHANDLES (Z_3REMOTEPARTICIPANTCALLS integer, Z_5REMOTEPARTICIPANTHANDLES "
        "integer);"
        "insert into ZHANDLE values (1, '+4930100'), (2, '+4930200'), (3, '+4930300');"
        "insert into Z_3REMOTEPARTICIPANTHANDLES values (1, 1), (1, 2), (2, 3), (3, 1);"
        "insert into ZCALLRECORD (Z_PK, ZDATE, ZDURATION, ZORIGINATED, ZADDRESS) values (1, 4e8, 5, 0, '+4930100');"
        "insert into ZCALLRECORD (Z_PK, ZDATE, ZDURATION, ZORIGINATED, ZADDRESS) values (2, 4e8, 5, 0, null);"
        "insert into ZCALLRECORD (Z_PK, ZDATE, ZDURATION, ZORIGINATED, ZADDRESS) values (3, 4e8, 5, 0, '+4930100');");
    ASSERT_EQ(reading.calls.size(), 3U);
    EXPECT_THAT(reading.calls[0].extra, HasSubstr(R"("participants":"+4930100, +4930200")"));
    EXPECT_EQ(reading.calls[1].address, "+4930300");
    EXPECT_THAT(reading.calls[2].extra, Not(HasSubstr("participants")));
}

TEST_F(SqliteImporting, androidsTypesBecomeKindsAndKeepTheirNumber) {
    std::string statements =
        "create table calls (_id integer primary key, number text, date integer, duration integer, type integer, "
        "name text, numbertype integer, numberlabel text);";
    for (int type = 1; type <= 7; ++type)
        statements += "insert into calls values (null, '-2', 1500000000000, 8, " + std::to_string(type) +
                      ", '(Unknown)', 0, 'boat');";
    const Reading reading = readDatabase(statements);
    ASSERT_EQ(reading.calls.size(), 7U);
    const int durations[] = {8, 8, 0, 0, 0, 0, 8};
    for (std::size_t at = 0; at < 7; ++at) {
        const NewCall& call = reading.calls[at];
        EXPECT_EQ(call.duration, durations[at]) << at;
        EXPECT_EQ(call.flags, at == 1 ? 1 : at == 5 ? 8 : 0) << at;
        EXPECT_EQ(call.address, "");
        EXPECT_EQ(call.name, "");
        EXPECT_EQ(call.label, "boat");
        EXPECT_THAT(call.extra, HasSubstr(R"("number":"-2")"));
        const std::string type = R"("type":")" + std::to_string(at + 1) + '"';
        EXPECT_EQ(call.extra.find(type) != std::string::npos, at > 2) << at;
        EXPECT_EQ(call.extra.find(R"("duration":"8")") != std::string::npos, durations[at] == 0) << at;
    }
}

TEST_F(SqliteImporting, aRowWithoutADateIsWrongAndTheNextOneIsRead) {
    const Reading reading = readDatabase(laterTable +
                                         "insert into ZCALLRECORD (ZDATE, ZDURATION, ZADDRESS) values (null, 1, '1');"
                                         "insert into ZCALLRECORD (ZDATE, ZDURATION, ZADDRESS) values (4e8, -1, '2');"
                                         "insert into ZCALLRECORD (ZDATE, ZDURATION, ZADDRESS) values (4e9, 1, '3');"
                                         "insert into ZCALLRECORD (ZDATE, ZDURATION, ZADDRESS) values (4e8, 1, '4');");
    ASSERT_EQ(reading.complaints.size(), 3U);
    EXPECT_EQ(reading.complaints[0].place, "row 1");
    EXPECT_THAT(reading.complaints[0].what, HasSubstr("no date"));
    EXPECT_THAT(reading.complaints[1].what, HasSubstr("no duration"));
    EXPECT_EQ(reading.complaints[2].place, "row 3");
    EXPECT_THAT(reading.complaints[2].what, HasSubstr("outside the years"));
    ASSERT_EQ(reading.calls.size(), 1U);
    EXPECT_EQ(reading.calls[0].address, "4");
}

TEST(OwnLog, comesOverWithEveryField) {
    EXPECT_TRUE(rc::check([] {
        const tools_tests::Directory directory;
        const auto path = directory.file("own.db");
        std::vector<NewCall> calls;
        {
            auto log = quorvel::store::CallStore::open(path);
            auto session = *log->beginImport();
            const int count = *rc::gen::inRange(1, 20);
            for (int at = 0; at < count; ++at) {
                NewCall call;
                call.address = std::to_string(*rc::gen::inRange(0, 1000000));
                call.date = *rc::gen::inRange(0, INT32_MAX);
                call.duration = *rc::gen::inRange(0, 5000);
                call.flags = *rc::gen::inRange(0, 1 << 20);
                call.contactId = at;
                call.name = *rc::gen::element<std::string>("", "Anna", "李 \"x\"\n");
                call.label = *rc::gen::element<std::string>("", "mobile");
                call.location = *rc::gen::element<std::string>("", "Zürich");
                call.faceTimeDataSize = *rc::gen::inRange(0, 1 << 30);
                call.extra = *rc::gen::element<std::string>("", R"({"source":"android","type":"5"})");
                RC_ASSERT(session.add(call).ok());
                calls.push_back(std::move(call));
            }
            RC_ASSERT(session.finish().ok());
        }
        const Reading reading = read(path);
        RC_ASSERT(reading.format == "a call log of this program");
        RC_ASSERT(reading.calls.size() == calls.size());
        for (std::size_t at = 0; at < calls.size(); ++at) {
            const NewCall &found = reading.calls[at], &was = calls[at];
            RC_ASSERT(std::tie(found.address, found.name, found.label, found.location, found.extra) ==
                      std::tie(was.address, was.name, was.label, was.location, was.extra));
            RC_ASSERT(std::tie(found.date, found.duration, found.flags, found.contactId, found.faceTimeDataSize) ==
                      std::tie(was.date, was.duration, was.flags, was.contactId, was.faceTimeDataSize));
        }
    }));
}

}  // namespace
}  // namespace import_tests
