// Callers and contacts on the real Phone: calling back, and an unknown number that becomes somebody.
#include <gmock/gmock.h>

#include <algorithm>
#include <ctime>

#include "tests/scenarios/phone_process.h"

namespace {

using scenarios::Handset;
using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

std::vector<quorvel::store::NewCall> twoCallsFromLondon() {
    quorvel::store::NewCall call;
    call.address = "+442079460000";
    call.location = "London";
    call.date = std::time(nullptr) - 600;
    auto earlier = call;
    earlier.date -= 60;
    return {call, earlier};
}

TEST(Contacts, aTapCallsBackAndTheCallCanBeEnded) {
    const Handset handset;
    handset.fill(twoCallsFromLondon());
    const auto shown = handset.run(
        "set isCallOnTap_Call on\nnotify QuorvelReloadSettingsReplaceRecents\nwait\ntap row 0\nshow\ntap \"End\"\n"
        "show\n");
    EXPECT_EQ(shown.status, 0) << shown.errors;
    EXPECT_THAT(shown.linesOf("url"), ElementsAre("url tel://+442079460000"));
    EXPECT_THAT(shown.linesOf("call "), ElementsAre("call \"+44 20 7946 0000\" \"Telephone\" \"0:00\""));
}

TEST(Contacts, anUnknownNumberBecomesAContact) {
    const Handset handset;
    handset.fill(twoCallsFromLondon());
    const auto shown = handset.run(
        "tap detail 0\nshow\ntap \"Create New Contact\"\ntap \"First Name\"\ntype \"Ada\"\nkey return\n"
        "type \"Lovelace\"\nshow\ntap \"Done\"\nshow\ntap back\nshow\n");
    EXPECT_EQ(shown.status, 0) << shown.errors;
    EXPECT_THAT(
        shown.linesOf("stack"),
        ElementsAre("stack PHRecentsViewController ABUnknownPersonViewController_Modern",
                    "stack ABNewPersonViewController", "stack PHRecentsViewController ABPersonViewController_Modern",
                    "stack PHRecentsViewController"));
    EXPECT_THAT(shown.linesOf("editing"), ElementsAre("editing \"Lovelace\""));
    EXPECT_THAT(shown.linesOf("card"), ElementsAre("card \"+44 20 7946 0000\" \"London\"", "card \"Ada Lovelace\""));
    EXPECT_THAT(shown.linesOf("row 1"), Contains(HasSubstr("row 1 \"Ada Lovelace\" \"mobile\"")));
}

TEST(Contacts, cancellingTheFormLeavesTheNumberUnknown) {
    const Handset handset;
    handset.fill(twoCallsFromLondon());
    const auto shown = handset.run(
        "tap detail 0\ntap \"Create New Contact\"\ntap \"First Name\"\ntype \"Ada\"\n"
        "tap \"Cancel\"\nshow\ntap back\nshow\n");
    EXPECT_EQ(shown.status, 0) << shown.errors;
    EXPECT_THAT(shown.linesOf("screen"),
                ElementsAre("screen ABUnknownPersonViewController_Modern", "screen PHRecentsViewController"));
    EXPECT_THAT(shown.linesOf("row 0 \"Ada"), IsEmpty());
}

TEST(Contacts, theFirstStartShowsPeopleWhoHaveCards) {
    const Handset handset;
    const auto shown = handset.runIn("XDG_DATA_HOME='" + handset.file("home").string() + '\'', "tap detail 0\nshow\n");
    EXPECT_EQ(shown.status, 0) << shown.errors;
    EXPECT_THAT(shown.linesOf("stack"), ElementsAre("stack PHRecentsViewController ABPersonViewController_Modern"));
    EXPECT_THAT(shown.linesOf("card"), ElementsAre(HasSubstr("card \"")));
}

}  // namespace
