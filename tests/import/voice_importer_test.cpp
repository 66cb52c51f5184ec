// Pages of Google Voice.
#include "tools/import/voice_importer.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <rapidcheck.h>

#include "tests/import/reading.h"

namespace import_tests {
namespace {

using testing::HasSubstr;
using testing::IsEmpty;
using tools::Complaint;

std::string pageOf(const std::string& label, const std::string& duration,
                   const std::string& published = "2016-11-22T14:27:58.000-08:00") {
    std::string page =
        "<?xml version=\"1.0\" ?>\n<!DOCTYPE html><html><head><title>Call</title></head>\n<body><div class=\"haudio\">"
        "<span class=\"fn\">Call with\nAnna</span><div class=\"contributor vcard\">Call with\n"
        "<a class=\"tel\" href=\"tel:+17323215555\"><span class=\"fn\">Anna &amp; Søren &#128512;</span></a></div>\n"
        "<abbr class=\"published\" title=\"" +
        published + "\">Nov 22, 2016</abbr><br />\n";
    if (!duration.empty()) page += "<abbr class=\"duration\" title=\"" + duration + "\">(00:00:04)</abbr>\n";
    return page + "<div class=\"tags\">Labels:\n<a rel=\"tag\" href=\"http://www.google.com/voice#" + label +
           "\">Tag</a></div>\n<div class=\"deletedStatusContainer\">User Deleted:\nFalse</div></div></body></html>\n";
}

class VoiceImporting : public testing::Test {
  protected:
    Reading readText(const std::string& text) { return read(directory_.write("page", text)); }

    tools_tests::Directory directory_;
};

TEST_F(VoiceImporting, aPageIsACallWithNameNumberMomentAndLength) {
    const Reading reading = readText(pageOf("received", "PT1M4S"));
    EXPECT_EQ(reading.format, "a page of Google Voice");
    EXPECT_THAT(reading.complaints, IsEmpty());
    ASSERT_EQ(reading.calls.size(), 1U);
    EXPECT_EQ(reading.calls[0].address, "+17323215555");
    EXPECT_EQ(reading.calls[0].name, "Anna & Søren 😀");
    EXPECT_EQ(reading.calls[0].date, 1479853678);
    EXPECT_EQ(reading.calls[0].duration, 64);
    EXPECT_EQ(reading.calls[0].flags, 0);
    EXPECT_EQ(reading.calls[0].extra,
              R"({"source":"google-voice","labels":"received","published":"2016-11-22T14:27:58.000-08:00"})");
}

TEST_F(VoiceImporting, labelsDecideOverTheKind) {
    EXPECT_EQ(readText(pageOf("placed", "PT4S")).calls.at(0).flags, 1);
    EXPECT_EQ(readText(pageOf("placed", "")).calls.at(0).duration, 0);
    EXPECT_EQ(readText(pageOf("missed", "")).calls.at(0).duration, 0);
    EXPECT_EQ(readText(pageOf("recorded", "PT4S")).calls.at(0).duration, 4);
    EXPECT_EQ(readText(pageOf("received", "")).calls.at(0).duration, 1);
    const auto left = readText(pageOf("voicemail", "PT22S")).calls.at(0);
    EXPECT_EQ(left.duration, 0);
    EXPECT_THAT(left.extra, HasSubstr(R"("duration":"PT22S")"));
}

TEST_F(VoiceImporting, aPageThatSaysTooLittleIsWrong) {
    EXPECT_THAT(readText(pageOf("inbox", "PT4S")).complaints.at(0).what, HasSubstr("placed, received or missed"));
    EXPECT_THAT(readText(pageOf("placed", "long")).complaints.at(0).what, HasSubstr("\"long\" is no duration"));
    EXPECT_THAT(readText(pageOf("placed", "", "noon")).complaints.at(0).what, HasSubstr("\"noon\" is no date"));
}

TEST_F(VoiceImporting, messagesHoldNoCallAndAreNoMistake) {
    const Reading reading = readText("<!DOCTYPE html><html><body><div class=\"hChatLog hfeed\">Hi</div></body></html>");
    EXPECT_THAT(reading.complaints, IsEmpty());
    EXPECT_THAT(reading.calls, IsEmpty());
}

TEST_F(VoiceImporting, anotherPageHoldsNoCall) {
    const Reading reading = readText("<!DOCTYPE html><html><body>Recipes</body></html>");
    ASSERT_EQ(reading.complaints.size(), 1U);
    EXPECT_EQ(reading.complaints[0].reach, Complaint::Reach::File);
    EXPECT_THAT(reading.complaints[0].what, HasSubstr("no call of Google Voice"));
}

TEST_F(VoiceImporting, elementsNestedWithoutEndAreNoHarm) {
    std::string page = "<!DOCTYPE html><html><body><div class=\"haudio\">";
    for (int times = 0; times < 100'000; ++times) page += "<div>";
    EXPECT_EQ(readText(page).complaints.size(), 1U);
}

TEST_F(VoiceImporting, aPageThatWasCutOffIsWrongWhereverItWasCut) {
    EXPECT_TRUE(rc::check([&] {
        const std::string page = pageOf("received", "PT1M4S");
        const Reading reading = readText(page.substr(0, *rc::gen::inRange<std::size_t>(60, page.size() - 9)));
        RC_ASSERT(reading.complaints.size() == 1U);
        RC_ASSERT(reading.calls.empty());
    }));
}

}  // namespace
}  // namespace import_tests
