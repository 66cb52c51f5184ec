// Files that are made to cost more than they are worth: reading them takes work and memory in step with their size, and
// what is too large in them is passed over alone.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/import/reading.h"
#include "tests/processor_time.h"

namespace import_tests {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::SizeIs;
using tools::Complaint;

constexpr std::size_t mebibyte = std::size_t{1} << 20;
const std::string beginOfJson = R"({"format":"quorvel-calls","version":1,"calls":[)";

std::string many(int count, const std::function<std::string(int)>& each) {
    std::string text;
    for (int at = 0; at < count; ++at) text += each(at);
    return text;
}

std::string xmlCall(const std::string& number, const std::string& more = "") {
    return "<call number=\"" + number + "\" duration=\"43\" date=\"1411053850787\" type=\"1\" " + more + "/>\n";
}

std::string jsonCall(const std::string& address) {
    return R"({"date":1700000000,"duration":0,"address":")" + address + "\"}";
}

std::string page(const std::string& more) {
    return R"(<html><body><div class="haudio"><a class="tel" href="tel:+4930">A</a>)" + more +
           R"(<abbr class="published" title="2014-09-21T10:00:00.000-07:00">x</abbr>)"
           R"(<a rel="tag" href="http://x#placed">p</a></div></body></html>)";
}

class HostileFiles : public testing::Test {
  protected:
    Reading readText(const std::string& text) { return read(directory_.write("calls", text)); }
    void TearDown() override { EXPECT_LT(time_.seconds(), generousSeconds); }

    /// The addresses of the calls.
    static std::vector<std::string> addresses(const Reading& reading) {
        std::vector<std::string> all;
        for (const auto& call : reading.calls) all.push_back(call.address);
        return all;
    }
    static std::vector<std::string> complaints(const Reading& reading) {
        std::vector<std::string> all;
        for (const Complaint& each : reading.complaints) {
            EXPECT_EQ(each.reach, Complaint::Reach::Call);
            all.push_back(each.place + ": " + each.what);
        }
        return all;
    }

    tools_tests::Directory directory_;
    ProcessorTime time_;
};

TEST_F(HostileFiles, anElementMayHaveAnyNumberOfAttributes) {
    const auto attributes = many(200'000, [](int at) { return "a" + std::to_string(at) + "=\"1\" "; });
    const Reading reading = readText("<calls>\n" + xmlCall("1") + xmlCall("2", attributes) + xmlCall("3") + "</calls>");
    EXPECT_THAT(addresses(reading), ElementsAre("1", "2", "3"));
    EXPECT_THAT(reading.calls[1].extra, HasSubstr("\"a199999\":\"1\""));
}

TEST_F(HostileFiles, aTableMayHaveAnyNumberOfColumns) {
    std::string text = "date,address,kind,duration" + many(100'000, [](int at) { return ",c" + std::to_string(at); });
    for (int line = 0; line < 3; ++line)
        text += "\n1700000000,1,missed,0" + many(100'000, [](int) { return std::string(",v"); });
    const Reading reading = readText(text);
    ASSERT_THAT(reading.calls, SizeIs(3));
    EXPECT_THAT(reading.calls[2].extra, HasSubstr("\"c99999\":\"v\""));
}

TEST_F(HostileFiles, aSentenceNamesNoMoreColumnsThanCanBeRead) {
    const Reading reading = readText("date" + many(100'000, [](int at) { return ",c" + std::to_string(at); }) + '\n');
    ASSERT_THAT(reading.complaints, SizeIs(1));
    EXPECT_THAT(reading.complaints[0].what, HasSubstr("and 99971 more."));
    EXPECT_LT(reading.complaints[0].what.size(), 1000U);
}

TEST_F(HostileFiles, aDateOrDurationWithoutEndIsNone) {
    const Reading reading = readText(
        "date,address,kind,duration\n" + many(250'000, [](int) { return "\u00A0\u202F"; }) +
        ",1,missed,0\n1700000000,2,received," + many(200'000, [](int) { return "1s "; }) + "\n1700000000,3,missed,0\n");
    EXPECT_THAT(addresses(reading), ElementsAre("3"));
    EXPECT_THAT(complaints(reading), SizeIs(2));
    for (const auto& each : reading.complaints) EXPECT_LT(each.what.size(), 500U);
}

TEST_F(HostileFiles, anElementOfManyMegabytesIsPassedOverAlone) {
    const Reading reading = readText("<?xml version='1.0' encoding='ISO-8859-1'?><calls>\n" + xmlCall("1") +
                                     xmlCall("2", "contact_name=\"" + std::string(9 * mebibyte, 'x') + "\n\" ") +
                                     xmlCall("3") + xmlCall("4", "contact_name=\"\xE4\" type=\"no\"") + "</calls>");
    // The last one has an attribute twice.
    EXPECT_THAT(addresses(reading), ElementsAre("1", "3"));
    EXPECT_THAT(complaints(reading), ElementsAre(HasSubstr("2: Behind this place"), HasSubstr("6: From here on")));
}

TEST_F(HostileFiles, whatIsPassedOverUpToTheEndLeavesTheCallsBeforeIt) {
    const Reading reading =
        readText("<calls>\n" + xmlCall("1") + "<!--" + std::string(9 * mebibyte, 'x') + "--></calls>");
    EXPECT_THAT(addresses(reading), ElementsAre("1"));
    EXPECT_THAT(complaints(reading), SizeIs(1));
}

TEST_F(HostileFiles, elementsWithinElementsTakeNoMemoryWithoutBound) {
    const Reading reading = readText("<calls>\n" + xmlCall("1") + many(200'000, [](int) { return "<a>"; }));
    EXPECT_THAT(addresses(reading), ElementsAre("1"));
    EXPECT_THAT(complaints(reading), ElementsAre(HasSubstr("nested more than a thousand times")));
}

TEST_F(HostileFiles, aTextOrNumberOfManyMegabytesSpoilsItsOwnCallAlone) {
    const Reading reading =
        readText(beginOfJson + jsonCall("1") + ',' + jsonCall(std::string(3 * mebibyte, '2')) + ',' + jsonCall("3") +
                 R"(,{"date":)" + std::string(3 * mebibyte, '4') + "}," + R"({"date":1700000000,"address":"5",")" +
                 std::string(3 * mebibyte, 'n') + R"(":1},)" + jsonCall("6") + "]}");
    EXPECT_THAT(addresses(reading), ElementsAre("1", "3", "5", "6"));
    EXPECT_THAT(complaints(reading), ElementsAre(HasSubstr("\"address\" is longer than a mebibyte."),
                                                 HasSubstr("\"date\" has to be a whole number")));
}

TEST_F(HostileFiles, aRowOfManyMegabytesIsPassedOverAlone) {
    const auto file = directory_.file("calls.db");
    runOn(file,
          "create table call (ROWID integer primary key, address text, date integer, duration integer, flags integer);"
          "insert into call values (-5, hex(zeroblob(1000000)), 1400000000, 0, 0), (1, '1', 1400000000, 0, 0),"
          "(3, hex(zeroblob(2000000)), 1400000000, 0, 0), (4, zeroblob(2000000), 1400000000, 0, 0),"
          "(9223372036854775807, '2', 1400000000, 0, 0)");
    const Reading reading = read(file);
    EXPECT_THAT(addresses(reading), ElementsAre("1", "2"));
    EXPECT_THAT(complaints(reading), ElementsAre("row 1: A value of this row is longer than a mebibyte.",
                                                 "row 3: A value of this row is longer than a mebibyte.",
                                                 "row 4: A value of this row is longer than a mebibyte."));
}

TEST_F(HostileFiles, participantsWithoutAnIndexAreGivenUpAndTheCallsAreNot) {
    const auto file = directory_.file("calls.db");
    runOn(file,
          "create table ZCALLRECORD (Z_PK integer primary key, ZADDRESS text, ZDATE real, ZDURATION real);"
          "create table ZHANDLE (Z_PK integer primary key, ZVALUE text);"
          "create table Z_2REMOTEPARTICIPANTHANDLES (Z_2REMOTEPARTICIPANTCALLS integer, Z_4REMOTEPARTICIPANTHANDLES "
          "integer);"
          "with recursive n (i) as (select 1 union all select i + 1 from n where i < 40000)"
          "insert into ZCALLRECORD select i, 'a' || i, 400000000 + i, 1 from n;"
          "insert into ZHANDLE select Z_PK, 'h' || Z_PK from ZCALLRECORD;"
          "insert into Z_2REMOTEPARTICIPANTHANDLES select Z_PK, Z_PK from ZCALLRECORD");
    const Reading reading = read(file);
    EXPECT_THAT(reading.calls, SizeIs(40'000));
    EXPECT_THAT(reading.calls[0].extra, HasSubstr("\"participants\":\"h1\""));
    EXPECT_THAT(complaints(reading), ElementsAre(HasSubstr("the database lacks the index")));
}

TEST_F(HostileFiles, aDatabaseThatComputesItsColumnsIsNotRead) {
    const auto file = directory_.file("calls.db");
    runOn(file,
          "create table calls (number text, date integer, duration integer, type integer,"
          " evil as (number like '%a%a%a%a%a%a%a%a%b'));"
          "insert into calls values (printf('%.1000c', 'a'), 1400000000000, 0, 2)");
    EXPECT_THAT(read(file).refusal, HasSubstr("without a table of calls"));
}

TEST_F(HostileFiles, aPageWithAnElementOfEndlessAttributesIsNotRead) {
    const auto attributes = many(200'000, [](int at) { return "a" + std::to_string(at) + "=1 "; });
    const Reading reading = readText(page("<div " + attributes + ">x</div>"));
    EXPECT_THAT(complaints(reading), ElementsAre(HasSubstr("far larger than Google Voice makes them")));
    EXPECT_THAT(addresses(readText(page("<style>" + std::string(40'000, 'x') + "</style>"))), ElementsAre("+4930"));
    // A page of many elements is one of any size.
    EXPECT_THAT(addresses(readText(page(many(100'000, [](int) { return "<b>word</b> words "; })))),
                ElementsAre("+4930"));
}

}  // namespace
}  // namespace import_tests
