// Callers and contacts on the real Phone: calling back, and an unknown number that becomes somebody.
#include <gmock/gmock.h>
#include <sys/stat.h>

#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <thread>

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

TEST(Contacts, aFaceTimeCallIsCalledBackAsItCame) {
    const Handset handset;
    quorvel::store::NewCall call;
    call.address = "anna@example.org";
    call.date = std::time(nullptr) - 600;
    call.flags = quorvel::store::flag::faceTime;
    auto audio = call;
    audio.date -= 60;
    audio.flags |= quorvel::store::flag::faceTimeAudio;
    handset.fill({call, audio});
    const auto shown = handset.run(
        "set isCallOnTap_Call on\nset isFaceTimeEnabled on\nnotify QuorvelReloadSettingsReplaceRecents\nwait\n"
        "tap row 0\nshow\ntap \"End\"\ntap row 1\nshow\ntap \"End\"\n"
        "set isFaceTimeEnabled off\nnotify QuorvelReloadSettingsReplaceRecents\nwait\ntap row 0\nshow\n");
    EXPECT_EQ(shown.status, 0) << shown.errors;
    EXPECT_THAT(shown.linesOf("url"),
                ElementsAre("url facetime://anna@example.org", "url facetime-audio://anna@example.org",
                            "url tel://anna@example.org"));
}

TEST(Contacts, theDesktopsOpenerGetsTheCallWhereItIsAskedFor) {
    const Handset handset;
    handset.fill(twoCallsFromLondon());
    const auto opener = handset.file("bin");
    std::filesystem::create_directories(opener);
    ASSERT_EQ(::mkfifo(handset.file("heard").c_str(), 0600), 0);
    std::ofstream(opener / "xdg-open") << "#!/bin/sh\nprintf '%s' \"$1\" > '" << handset.file("heard").string()
                                       << "'\n";
    std::filesystem::permissions(opener / "xdg-open", std::filesystem::perms::owner_all);
    std::string heard;
    std::thread listener([&] {
        std::ifstream stream(handset.file("heard"));
        heard.assign(std::istreambuf_iterator<char>(stream), {});
    });
    const auto shown =
        handset.runIn("PATH='" + opener.string() + ":'\"$PATH\"",
                      "set isCallOnTap_Call on\nnotify QuorvelReloadSettingsReplaceRecents\nwait\ntap row 0\nshow\n",
                      "--open-urls --data '" + handset.file("").string() + "'");
    // Ends the wait where no opener was started.
    if (shown.linesOf("url").empty()) std::ofstream(handset.file("heard")) << "nothing";
    listener.join();
    EXPECT_EQ(shown.status, 0) << shown.errors;
    EXPECT_EQ(heard, "tel://+442079460000");
    EXPECT_THAT(shown.linesOf("call "), IsEmpty());
}

TEST(Contacts, aKnownCallerOpensTheirCardAndAnUnknownOneTheNumber) {
    const Handset handset;
    handset.fill(twoCallsFromLondon());
    std::ofstream(handset.file("anna.vcf")) << "BEGIN:VCARD\nVERSION:3.0\nFN:Anna Berg\nN:Berg;Anna;;;\n"
                                               "TEL;TYPE=CELL:+49 30 12345601\nTEL;TYPE=WORK:020 7946 0999\n"
                                               "END:VCARD\n";
    quorvel::store::NewCall call;
    call.address = "+4930 123456-01";
    call.date = std::time(nullptr) - 60;
    handset.fill({call});
    ASSERT_EQ(std::system(("'" QUORVELCTL_PROGRAM "' --data '" + handset.file("").string() + "' contacts import '" +
                           handset.file("anna.vcf").string() + "' >/dev/null")
                              .c_str()),
              0);
    const auto shown = handset.run("tap detail 0\nshow\ntap back\ntap detail 1\nshow\n");
    EXPECT_EQ(shown.status, 0) << shown.errors;
    EXPECT_THAT(shown.linesOf("screen"),
                ElementsAre("screen ABPersonViewController_Modern", "screen ABUnknownPersonViewController_Modern"));
    EXPECT_THAT(shown.linesOf("card"), ElementsAre("card \"Anna Berg\"", "card \"+44 20 7946 0000\" \"London\""));
    // The call was missed, and its number is the card's first.
    EXPECT_THAT(shown.linesOf("row 0"),
                ElementsAre(HasSubstr(" important"), HasSubstr("row 0 \"mobile\" \"+44 20 7946 0000\"")));
}

TEST(Contacts, whileTheyAreClosedEveryCallerOpensAsANumber) {
    const Handset handset;
    quorvel::store::NewCall call;
    call.address = "+493012345601";
    call.contactId = 1;
    call.name = "Anna Berg";
    call.date = std::time(nullptr) - 60;
    handset.fill({call});
    ASSERT_EQ(
        std::system(("'" QUORVELCTL_PROGRAM "' --data '" + handset.file("").string() + "' contacts deny").c_str()), 0);
    const auto shown = handset.run("tap detail 0\nshow\ntap \"Create New Contact\"\nshow\ntap \"OK\"\nshow\n");
    EXPECT_EQ(shown.status, 0) << shown.errors;
    EXPECT_THAT(shown.linesOf("screen"), testing::Each("screen ABUnknownPersonViewController_Modern"));
    EXPECT_THAT(shown.linesOf("alert"), ElementsAre(HasSubstr("quorvelctl contacts allow")));
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
