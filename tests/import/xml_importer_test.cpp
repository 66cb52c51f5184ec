// Calls of Android phones' XML backups, with what is not quite XML in them.
#include "tools/import/xml_importer.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <rapidcheck.h>

#include "tests/import/reading.h"

namespace import_tests {
namespace {

using testing::HasSubstr;
using testing::IsEmpty;
using tools::Complaint;

const std::string head = "<?xml version='1.0' encoding='UTF-8' standalone='yes' ?>\n";

std::string callNamed(const std::string& name) {
    return "<call number=\"5550000\" duration=\"43\" date=\"1411053850787\" type=\"1\" contact_name=\"" + name +
           "\" />\n";
}

class XmlImporting : public testing::Test {
  protected:
    Reading readText(const std::string& text) { return read(directory_.write("calls", text)); }

    tools_tests::Directory directory_;
};

TEST_F(XmlImporting, aCallHasItsFieldsAndKeepsTheRest) {
    const Reading reading =
        readText(head +
                 "<calls count=\"9\">\n"
                 "<call number=\"+4930100\" duration=\"130\" date=\"1411331568000\" type=\"2\" presentation=\"1\" "
                 "subscription_id=\"null\" post_dial_digits=\"\" readable_date=\"Sep 21, 2014\" contact_name=\"Oscar "
                 "Wilde\" />\n"
                 "<call number=\"null\" duration=\"0\" date=\"1411331569500\" type=\"5\" presentation=\"2\" "
                 "contact_name=\"(Unknown)\" />\n</calls>");
    EXPECT_EQ(reading.format, "a backup of an Android phone's calls");
    EXPECT_THAT(reading.complaints, IsEmpty());
    ASSERT_EQ(reading.calls.size(), 2U);
    EXPECT_EQ(reading.calls[0].address, "+4930100");
    EXPECT_EQ(reading.calls[0].date, 1411331568);
    EXPECT_EQ(reading.calls[0].duration, 130);
    EXPECT_EQ(reading.calls[0].flags, 1);
    EXPECT_EQ(reading.calls[0].name, "Oscar Wilde");
    EXPECT_EQ(reading.calls[0].extra, R"({"source":"android","presentation":"1"})");
    EXPECT_EQ(reading.calls[1].address, "");
    EXPECT_EQ(reading.calls[1].name, "");
    EXPECT_EQ(reading.calls[1].extra, R"({"source":"android","date":"1411331569500","type":"5","presentation":"2"})");
}

TEST_F(XmlImporting, aCharacterWrittenAsTwoHalvesIsWhole) {
    const Reading reading = readText(head + "<calls count=\"1\">" + callNamed("Anna &#55357;&#56846;!") + "</calls>");
    EXPECT_THAT(reading.complaints, IsEmpty());
    ASSERT_EQ(reading.calls.size(), 1U);
    EXPECT_EQ(reading.calls[0].name, "Anna \xF0\x9F\x98\x8E!");
}

TEST_F(XmlImporting, halvesAloneAndControlCharactersAreReplaced) {
    const Reading reading =
        readText(head + "<calls count=\"1\">" + callNamed("a&#55357;b&#xDE0E;c&#0;&#x1F;d&#55357;") + "</calls>");
    ASSERT_EQ(reading.calls.size(), 1U);
    EXPECT_EQ(reading.calls[0].name, "a\uFFFDb\uFFFDc\uFFFD\uFFFDd\uFFFD");
}

TEST_F(XmlImporting, aBackupThatWasCutOffGivesItsCallsAndTheLineWhereItEnds) {
    const Reading reading =
        readText(head + "<calls count=\"56\">\n" + callNamed("a") + callNamed("b") + "<call number=\"5");
    EXPECT_EQ(reading.calls.size(), 2U);
    ASSERT_EQ(reading.complaints.size(), 1U);
    EXPECT_EQ(reading.complaints[0].place, "5");
    EXPECT_THAT(reading.complaints[0].what, HasSubstr("make the backup again"));
}

TEST_F(XmlImporting, aWrongCallIsNamedByItsLineAndTheNextOneIsRead) {
    const Reading reading = readText(head +
                                     "<calls count=\"3\">\n"
                                     "<call number=\"1\" duration=\"1\" date=\"noon\" type=\"1\" />\n"
                                     "<call number=\"1\" duration=\"1\" date=\"1411331568000\" type=\"in\" />\n"
                                     "<call number=\"1\" duration=\"-\" date=\"1411331568000\" type=\"1\" />\n" +
                                     callNamed("good") + "</calls>");
    ASSERT_EQ(reading.complaints.size(), 3U);
    EXPECT_EQ(reading.complaints[0].place, "3");
    EXPECT_EQ(reading.complaints[0].what, "\"noon\" is no date.");
    EXPECT_EQ(reading.complaints[1].what, "\"in\" is no type of call.");
    EXPECT_EQ(reading.complaints[2].place, "5");
    EXPECT_EQ(reading.calls.size(), 1U);
}

TEST_F(XmlImporting, messagesAndOtherXmlHoldNoCalls) {
    const Reading messages = readText(head + "<smses count=\"1\"><sms address=\"1\" /></smses>");
    ASSERT_EQ(messages.complaints.size(), 1U);
    EXPECT_EQ(messages.complaints[0].reach, Complaint::Reach::File);
    EXPECT_THAT(messages.complaints[0].what, HasSubstr("messages, and no calls"));
    EXPECT_THAT(readText("<svg/>").complaints.at(0).what, HasSubstr("begins with <svg>"));
}

TEST_F(XmlImporting, entitiesThatGrowWithoutEndAreRefused) {
    std::string bomb = "<?xml version=\"1.0\"?><!DOCTYPE calls [<!ENTITY a0 \"0123456789\">";
    for (int at = 1; at < 12; ++at) {
        bomb += "<!ENTITY a" + std::to_string(at) + " \"";
        for (int times = 0; times < 10; ++times) bomb += "&a" + std::to_string(at - 1) + ';';
        bomb += "\">";
    }
    const Reading reading = readText(bomb + "]><calls><call number=\"&a11;\" date=\"1\" type=\"1\"/></calls>");
    EXPECT_THAT(reading.calls, IsEmpty());
    EXPECT_EQ(reading.complaints.size(), 1U);
}

TEST_F(XmlImporting, megabytesWithoutACallArePassedOverAndSaid) {
    std::string text = head + "<calls>";
    text.append(std::size_t{20} << 20, ' ');
    const Reading reading = readText(text + callNamed("late") + "</calls>");
    ASSERT_EQ(reading.complaints.size(), 1U);
    EXPECT_THAT(reading.complaints[0].what, HasSubstr("without a call"));
    EXPECT_EQ(reading.calls.size(), 1U);
}

TEST_F(XmlImporting, whereverItIsCutTheCallsBeforeAreThere) {
    EXPECT_TRUE(rc::check([&] {
        std::string text = head + "<calls>\n";
        std::vector<std::size_t> ends;
        for (int at = 0; at < 5; ++at) {
            text += callNamed("&#55357;&#56846; " + std::to_string(at));
            ends.push_back(text.size() - 1);
        }
        const auto size = *rc::gen::inRange<std::size_t>(head.size(), text.size());
        const Reading reading = readText(text.substr(0, size));
        const auto whole = static_cast<std::size_t>(
            std::count_if(ends.begin(), ends.end(), [&](std::size_t end) { return end <= size; }));
        RC_ASSERT(reading.calls.size() == whole);
        RC_ASSERT(reading.complaints.size() == 1U);
    }));
}

TEST(ReferenceMender, mendsTheSameHoweverTheTextIsCut) {
    EXPECT_TRUE(rc::check([] {
        const auto parts = *rc::gen::container<std::vector<std::string>>(rc::gen::element<std::string>(
            "&#55357;", "&#56846;", "&#xD83D;", "&#65;", "&#", "&", ";", "a", "&amp;", "&#0;", "&#99999999999;", "5"));
        std::string whole;
        for (const auto& part : parts) whole += part;
        tools::ReferenceMender atOnce, byPieces;
        std::string expected = atOnce.mend(whole);
        expected += atOnce.end();
        std::string found;
        for (std::size_t at = 0; at < whole.size();) {
            const auto count = *rc::gen::inRange<std::size_t>(1, 9);
            found += byPieces.mend(std::string_view(whole).substr(at, count));
            at += count;
        }
        found += byPieces.end();
        RC_ASSERT(found == expected);
    }));
}

}  // namespace
}  // namespace import_tests
