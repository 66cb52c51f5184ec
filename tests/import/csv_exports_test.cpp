// Comma-separated values as other programs export them: their headers, separators, encodings and words.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <rapidcheck.h>

#include "tests/import/reading.h"
#include "tests/store/time_zone.h"

namespace import_tests {
namespace {

using quorvel::store::NewCall;
using testing::HasSubstr;
using testing::IsEmpty;
using tools::ImportOptions;
using tools_tests::Directory;

class CsvExports : public testing::Test {
  protected:
    Reading readText(const std::string& text, const ImportOptions& options = {}) {
        return read(directory_.write("calls", text), options);
    }

    const quorvel::store::TimeZone zone_{"UTC"};
    Directory directory_;
};

TEST_F(CsvExports, anEnglishExportIsUnderstood) {
    const Reading reading = readText(
        "Name,Phone Number,Call Type,Call Date,Duration (sec),SIM\n"
        "Anna,+4930100,Outgoing,\"Jun 15, 2024 2:05:00 PM\",1m 3s,1\n"
        ",+4930200,Missed,\"Jun 15, 2024 2:06:00 PM\",0,1\n"
        ",+4930300,Rejected,\"Jun 15, 2024 2:07:00 PM\",4,\n");
    EXPECT_THAT(reading.complaints, IsEmpty());
    ASSERT_EQ(reading.calls.size(), 3U);
    EXPECT_EQ(reading.calls[0].name, "Anna");
    EXPECT_EQ(reading.calls[0].address, "+4930100");
    EXPECT_EQ(reading.calls[0].flags, 1);
    EXPECT_EQ(reading.calls[0].date, 1718460300);
    EXPECT_EQ(reading.calls[0].duration, 63);
    EXPECT_EQ(reading.calls[0].extra, R"({"source":"csv","SIM":"1"})");
    EXPECT_EQ(reading.calls[2].duration, 0);
    EXPECT_EQ(reading.calls[2].extra, R"({"source":"csv","duration":"4","kind":"Rejected"})");
}

TEST_F(CsvExports, aGermanSpreadsheetWithSemicolonsAndAColumnForTheTimeIsUnderstood) {
    const Reading reading = readText(
        "\xEF\xBB\xBF"
        "Datum;Uhrzeit;Rufnummer;Kontaktname;Anrufart;Dauer\r\n"
        "15.06.2024;14:05;030100;\"Groß; Anna\";Eingehend;0:01:03\r\n"
        "15.06.2024;14:06;030200;;Ausgehend;0\r\n");
    EXPECT_THAT(reading.complaints, IsEmpty());
    ASSERT_EQ(reading.calls.size(), 2U);
    EXPECT_EQ(reading.calls[0].name, "Groß; Anna");
    EXPECT_EQ(reading.calls[0].date, 1718460300);
    EXPECT_EQ(reading.calls[0].duration, 63);
    EXPECT_EQ(reading.calls[1].flags, 1);
    EXPECT_EQ(reading.calls[1].duration, 0);
    EXPECT_THAT(reading.calls[1].extra, HasSubstr("Ausgehend"));
}

TEST_F(CsvExports, tabsInUtf16AreUnderstood) {
    const std::u16string text =
        u"number\tdate\ttype\tduration\tname\n5550000\t1718460300000\t2\t9\tJürgen \U0001F600\n";
    for (const bool isBigEnd : {false, true}) {
        std::string bytes = isBigEnd ? "\xFE\xFF" : "\xFF\xFE";
        for (const char16_t unit : text) {
            const char low = static_cast<char>(unit & 0xFF), high = static_cast<char>(unit >> 8);
            bytes += isBigEnd ? high : low;
            bytes += isBigEnd ? low : high;
        }
        const Reading reading = readText(bytes);
        EXPECT_THAT(reading.complaints, IsEmpty());
        ASSERT_EQ(reading.calls.size(), 1U);
        EXPECT_EQ(reading.calls[0].name, "Jürgen 😀");
        EXPECT_EQ(reading.calls[0].date, 1718460300);
        EXPECT_EQ(reading.calls[0].flags, 1);
    }
}

TEST_F(CsvExports, theUserSaysWhatAColumnHolds) {
    const std::string text = "Gegenstelle,Wie,Wann,Sekunden\n5550000,in,2024-06-15 14:05,5\n";
    const Reading refused = readText(text);
    ASSERT_EQ(refused.complaints.size(), 1U);
    EXPECT_THAT(refused.complaints[0].what,
                HasSubstr("The first line names \"Gegenstelle\", \"Wie\", \"Wann\", \"Sekunden\""));
    EXPECT_THAT(refused.complaints[0].what, HasSubstr("--map \"COLUMN=date\""));
    ImportOptions options;
    options.columns = {{"gegenstelle", "address"}, {"Wie", "kind"}, {"Wann", "date"}, {"Sekunden", "duration"}};
    const Reading reading = readText(text, options);
    EXPECT_THAT(reading.complaints, IsEmpty());
    ASSERT_EQ(reading.calls.size(), 1U);
    EXPECT_EQ(reading.calls[0].address, "5550000");
}

TEST_F(CsvExports, whatTheUserSaysGoesBeforeAColumnsName) {
    ImportOptions options;
    options.columns = {{"other", "address"}};
    const Reading reading = readText("date,address,kind,duration,other\n1,mine,missed,0,555\n", options);
    ASSERT_EQ(reading.calls.size(), 1U);
    EXPECT_EQ(reading.calls[0].address, "555");
    EXPECT_THAT(reading.calls[0].extra, HasSubstr(R"("address":"mine")"));
}

TEST_F(CsvExports, aColumnToMapThatIsNotThereIsNamed) {
    ImportOptions options;
    options.columns = {{"Nummer", "address"}};
    const Reading reading = readText("date,address,kind,duration\n1,1,missed,0\n", options);
    ASSERT_EQ(reading.complaints.size(), 1U);
    EXPECT_THAT(reading.complaints[0].what,
                HasSubstr("There is no column \"Nummer\" to map. The columns are \"date\""));
}

TEST_F(CsvExports, daysComeBeforeMonthsUnlessTheUserSaysOtherwise) {
    const std::string text = "date,address,kind,duration\n06/07/2024 12:00,1,missed,0\n";
    EXPECT_EQ(readText(text).calls.at(0).date, 1720267200);
    ImportOptions options;
    options.monthFirst = true;
    EXPECT_EQ(readText(text, options).calls.at(0).date, 1717761600);
}

TEST_F(CsvExports, flagsThatContradictTheKindAreWrong) {
    const std::string header = "date,address,kind,duration,facetime,flags\n";
    EXPECT_EQ(readText(header + "1,1,missed,0,,1048580\n").calls.at(0).flags, 1048580);
    EXPECT_EQ(readText(header + "1,1,missed,0,video,16\n").calls.at(0).flags, 16);
    for (const char* line :
         {"1,1,missed,0,,5\n", "1,1,dialled,5,,4\n", "1,1,missed,0,,16\n", "1,1,missed,0,audio,16\n"}) {
        const Reading reading = readText(header + line);
        ASSERT_EQ(reading.complaints.size(), 1U) << line;
        EXPECT_THAT(reading.complaints[0].what, HasSubstr("contradict"));
    }
}

TEST_F(CsvExports, statisticsAreNoCalls) {
    const Reading reading = readText("Hour,Calls,Messages,Presences\n04,0.19,0.31,0.99\n");
    ASSERT_EQ(reading.complaints.size(), 1U);
    EXPECT_EQ(reading.complaints[0].reach, tools::Complaint::Reach::File);
    EXPECT_THAT(reading.complaints[0].what, HasSubstr("There is no column \"date\""));
}

TEST_F(CsvExports, anyBytesAreReadToTheirEnd) {
    EXPECT_TRUE(rc::check([&] {
        auto bytes = *rc::gen::element<std::string>("date,address,kind,duration\n", "\xFF\xFE", "\xFE\xFF");
        bytes += *rc::gen::arbitrary<std::string>();
        const Reading reading = readText(bytes);
        for (const NewCall& call : reading.calls) {
            RC_ASSERT(call.date >= 0);
            RC_ASSERT(call.duration >= 0);
        }
    }));
}

TEST(ImportCommand, mapsColumnsAndRefusesUnknownFields) {
    const Directory directory;
    const auto file = directory.write("calls.csv", "Wer,kind,date,duration\n555,missed,1,0\n");
    const std::string quotedFile = " '" + file.string() + "'";
    EXPECT_EQ(directory.run("import --map Wer=address" + quotedFile).output, "1 calls imported.\n");
    const auto refused = directory.run("import --map Wer=whom" + quotedFile);
    EXPECT_EQ(refused.status, 2);
    EXPECT_THAT(refused.errors, HasSubstr("\"whom\" is no field. It is one of date, time, address"));
    EXPECT_EQ(directory.run("import --map Wer" + quotedFile).status, 2);
}

}  // namespace
}  // namespace import_tests
