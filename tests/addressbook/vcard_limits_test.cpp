// Cards that are made to cost more than they are worth: reading them takes work and memory in step with their size.
#include <gmock/gmock.h>

#include "desktop/addressbook/contact_vcard.h"
#include "tests/processor_time.h"
#include "vcard_support.h"

namespace vcard::test {
namespace {

using testing::IsEmpty;
using testing::SizeIs;

std::string many(int count, const std::function<std::string(int)>& each) {
    std::string text;
    for (int at = 0; at < count; ++at) text += each(at);
    return text;
}

class VCardLimits : public testing::Test {
  protected:
    void TearDown() override { EXPECT_LT(time_.seconds(), generousSeconds); }

    ProcessorTime time_;
};

TEST_F(VCardLimits, aHeaderMayFoldOverAnyNumberOfLines) {
    const auto outcome = readLines("X-A" + many(1'000'000, [](int) { return "\n a"; }) + ":1\nTEL:2\n");
    ASSERT_THAT(outcome.cards, SizeIs(1));
    EXPECT_THAT(outcome.cards[0].properties, SizeIs(2));
    EXPECT_EQ(text(outcome, "TEL"), "2");
}

TEST_F(VCardLimits, quotationMarksInAFoldedHeaderAreLookedAtOnce) {
    const auto outcome = readLines("X-A;B=\"c:" + many(1'000'000, [](int) { return "\n \"\""; }) + "\nTEL:2\n");
    EXPECT_EQ(text(outcome, "TEL"), "2");
}

TEST_F(VCardLimits, softLineEndsBehindAnEndlessBlankAreEachLookedAtOnce) {
    const auto outcome = readLines(std::string(1'000'000, ' ') + "\nTEL:2\nNOTE;ENCODING=QUOTED-PRINTABLE:a" +
                                   many(300'000, [](int) { return "=\nb"; }) + "\n");
    EXPECT_EQ(text(outcome, "NOTE").size(), 300'001U);
}

TEST_F(VCardLimits, ofAnEndlessLineNoMoreIsRememberedThanIsKept) {
    ReadOptions options;
    options.longestProperty = 1000;
    const auto outcome =
        readText("BEGIN:VCARD\nNOTE:a" + many(100'000, [](int) { return "\n b"; }) + "\nTEL:2\nEND:VCARD\n", options);
    EXPECT_EQ(text(outcome, "TEL"), "2");
    EXPECT_EQ(text(outcome, "NOTE"), "(none)");
    ASSERT_THAT(outcome.problems, SizeIs(1));
}

TEST_F(VCardLimits, aPropertyHasAHundredParametersAtMost) {
    const auto outcome = readLines(
        "TEL;TYPE=home" + many(200'000, [](int at) { return ";p" + std::to_string(at) + "=1"; }) + ";TYPE=cell:1\n");
    ASSERT_THAT(outcome.cards, SizeIs(1));
    EXPECT_THAT(outcome.cards[0].properties[0].parameters, SizeIs(100));
    EXPECT_TRUE(outcome.cards[0].properties[0].hasType("cell"));
}

TEST_F(VCardLimits, aCardMayHaveAnyNumberOfNotes) {
    const auto outcome = readLines(many(110'000, [](int) { return std::string("NOTE:remember\n"); }));
    ASSERT_THAT(outcome.problems, IsEmpty());
    EXPECT_EQ(contacts::contactOf(outcome.cards[0]).text(contacts::Property::note).size(), 110'000 * 9U - 1);
}

TEST_F(VCardLimits, aCardMayHaveAnyNumberOfOwnLabels) {
    const auto outcome = readLines(many(55'000, [](int at) {
        const std::string group = "g" + std::to_string(at);
        return group + ".X-THING:1\n" + group + ".X-ABLABEL:l" + std::to_string(at) + "\n";
    }));
    ASSERT_THAT(outcome.problems, IsEmpty());
    EXPECT_THAT(contacts::contactOf(outcome.cards[0]).others, SizeIs(110'000));
}

}  // namespace
}  // namespace vcard::test
