// What is exported is what was chosen, and is the same when it is read again.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "desktop/quorvel/store/call_store.h"
#include "tests/tools/program.h"
#include "tools/calls/selection.h"

namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;
using testing::StartsWith;
using tools_tests::Directory;

class Export : public testing::Test {
  protected:
    void SetUp() override {
        const auto file = directory_.write("calls.csv",
                                           "date,address,kind,duration,facetime,name,contact,location\n"
                                           "1718452800,+4930100,received,30,,\"Smith, \"\"Anna\"\"\",4,Berlin\n"
                                           "1718452800,+4930100,missed,0,,,4,\n"
                                           "1718539199,anna@example.org,dialled,61,video,,,\n"
                                           "1718539200,,cancelled,0,audio,,,\n");
        ASSERT_EQ(directory_.run("import '" + file.string() + '\'').status, 0);
    }
    std::vector<std::string> csv(const std::string& arguments) const {
        const auto outcome = directory_.run("export " + arguments);
        EXPECT_EQ(outcome.status, 0) << outcome.errors;
        auto lines = outcome.lines();
        if (!lines.empty()) lines.erase(lines.begin());
        return lines;
    }

    Directory directory_;
};

constexpr const char* head =
    "date,address,kind,duration,facetime,name,label,contact,location,flags,face_time_data_size,extra\r";

TEST_F(Export, writesTheOldestCallFirstWithEveryField) {
    EXPECT_THAT(
        directory_.run("export").lines(),
        ElementsAre(head, "2024-06-15T12:00:00+00:00,+4930100,received,30,,\"Smith, \"\"Anna\"\"\",,4,Berlin,0,0,\r",
                    "2024-06-15T12:00:00+00:00,+4930100,missed,0,,\"Smith, \"\"Anna\"\"\",,4,,0,0,\r",
                    "2024-06-16T11:59:59+00:00,anna@example.org,dialled,61,video,,,,,17,0,\r",
                    "2024-06-16T12:00:00+00:00,,cancelled,0,audio,,,,,49,0,\r"));
}

TEST_F(Export, writesJsonOfTheSameCalls) {
    EXPECT_EQ(directory_.run("export --format json --filter received").output,
              "{\"format\":\"quorvel-calls\",\"version\":1,\n\"calls\":[\n"
              "{\"time\":\"2024-06-15T12:00:00+00:00\",\"kind\":\"received\",\"date\":1718452800,\"duration\":30,"
              "\"flags\":0,\"contact\":4,\"address\":\"+4930100\",\"name\":\"Smith, \\\"Anna\\\"\","
              "\"location\":\"Berlin\"}\n]}\n");
    EXPECT_EQ(directory_.run("export --format json --text nobody").output,
              "{\"format\":\"quorvel-calls\",\"version\":1,\n\"calls\":[\n]}\n");
}

TEST_F(Export, choosesByKindContactTextAndDays) {
    EXPECT_THAT(csv("--filter missed"), SizeIs(1));
    EXPECT_THAT(csv("--filter dialled"), SizeIs(2));
    EXPECT_THAT(csv("--contact 4"), SizeIs(2));
    EXPECT_THAT(csv("--contact anna@example.org"), SizeIs(1));
    EXPECT_THAT(csv("--contact anna"), IsEmpty());
    EXPECT_THAT(csv("--text ANNA"), SizeIs(3));
    EXPECT_THAT(csv("--text anna --filter missed"), SizeIs(1));
    EXPECT_THAT(csv("--since 2024-06-16"), SizeIs(2));
    EXPECT_THAT(csv("--until 2024-06-15"), SizeIs(2));
    EXPECT_THAT(csv("--since 2024-06-15 --until 2024-06-16"), SizeIs(4));
    EXPECT_THAT(csv("--since '2024-06-16 12:00' --until 2024-06-16T12:00:00Z"), SizeIs(1));
    EXPECT_THAT(csv("--since 2024-06-17"), IsEmpty());
    const auto wrong = directory_.run("export --since yesterday");
    EXPECT_EQ(wrong.status, 2);
    EXPECT_THAT(wrong.errors, HasSubstr("2024-06-15"));
}

TEST_F(Export, writesALogThatIsReadAsItIs) {
    const auto file = directory_.file("chosen.db");
    ASSERT_EQ(directory_.run("export --contact 4 --output '" + file.string() + '\'').status, 0);
    auto log = quorvel::store::CallStore::open(file);
    ASSERT_TRUE(log.ok());
    const auto page = log->page(quorvel::store::Filter::all, {}, quorvel::store::Cursor::top(), 10);
    ASSERT_TRUE(page.ok());
    ASSERT_THAT((*page).rows, SizeIs(2));
    EXPECT_EQ((*page).rows[1].name, "Smith, \"Anna\"");
    EXPECT_EQ((*page).rows[1].location, "Berlin");
    EXPECT_THAT(log->verify().valueOr({"unread"}), IsEmpty());
    EXPECT_EQ(directory_.run("export --format db").status, 2);
}

TEST_F(Export, choosesTheFormatByTheNameAndReplacesNothingUnasked) {
    const std::string file = '\'' + directory_.file("calls.json").string() + '\'';
    ASSERT_EQ(directory_.run("export --output " + file).status, 0);
    EXPECT_THAT(tools_tests::contentOf(directory_.file("calls.json")), StartsWith("{\"format\""));
    const auto again = directory_.run("export --filter missed --output " + file);
    EXPECT_EQ(again.status, 1);
    EXPECT_THAT(again.errors, HasSubstr("--force"));
    EXPECT_EQ(directory_.run("export --force --output " + file).status, 0);
    EXPECT_EQ(directory_.run("export --output '" + directory_.file("nowhere/calls.csv").string() + '\'').status, 1);
    for (const auto& entry : std::filesystem::directory_iterator(directory_.file("")))
        EXPECT_FALSE(entry.path().filename().string().starts_with('.')) << entry.path();
}

TEST_F(Export, writesLabelsInTheSameWordsWhateverTheLanguageTheyWereStoredIn) {
    {
        auto log = quorvel::store::CallStore::open(directory_.data() / "calls.db");
        ASSERT_TRUE(log.ok());
        for (const char* label : {"сотовый", "Fax (Arbeit)", "Ferienhaus"}) {
            quorvel::store::NewCall call;
            call.address = std::string("+49") + label;
            call.date = 1718000000;
            call.label = label;
            ASSERT_TRUE(log->append(call).ok());
        }
    }
    const auto lines = csv("--until 2024-06-14");
    ASSERT_THAT(lines, SizeIs(3));
    EXPECT_THAT(lines[0], HasSubstr(",mobile,"));
    EXPECT_THAT(lines[1], HasSubstr(",work fax,"));
    EXPECT_THAT(lines[2], HasSubstr(",Ferienhaus,"));
    EXPECT_THAT(directory_.run("export --format json").output, HasSubstr("\"label\":\"mobile\""));
}

TEST_F(Export, ofAFormerVersionWithTranslatedLabelsIsImportedUnderTheirMeaning) {
    const auto file = directory_.write("former.csv",
                                       "date,address,kind,duration,label\n"
                                       "1718000000,+4930200,received,30,сотовый\n"
                                       "1718000001,+4930201,received,30,Ferienhaus\n");
    ASSERT_EQ(directory_.run("import '" + file.string() + '\'').status, 0);
    auto log = quorvel::store::CallStore::open(directory_.data() / "calls.db");
    ASSERT_TRUE(log.ok());
    const auto found = log->page(quorvel::store::Filter::all, {}, quorvel::store::Cursor::top(), 10);
    ASSERT_TRUE(found.ok());
    EXPECT_EQ((*found).rows[5].label, "mobile");
    EXPECT_EQ((*found).rows[4].label, "Ferienhaus");
}

TEST_F(Export, writesContactsAllOrThoseOfTheChosenCalls) {
    const auto cards = directory_.write("cards.vcf",
                                        "BEGIN:VCARD\nVERSION:3.0\nFN:Bea\nTEL:+4930777\nEND:VCARD\n"
                                        "BEGIN:VCARD\nVERSION:3.0\nFN:Cem\nEMAIL:anna@example.org\nEND:VCARD\n");
    ASSERT_EQ(directory_.run("contacts import '" + cards.string() + '\'').status, 0);
    const auto all = directory_.run("export --format vcf").output;
    EXPECT_THAT(all, HasSubstr("Bea"));
    EXPECT_THAT(all, HasSubstr("Cem"));
    EXPECT_EQ(all, directory_.run("contacts export").output);
    const auto some = directory_.run("export --format vcf --filter dialled").output;
    EXPECT_THAT(some, HasSubstr("Cem"));
    EXPECT_EQ(some.find("Bea"), std::string::npos);
}

}  // namespace
