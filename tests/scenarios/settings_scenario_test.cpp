// Settings that another process changes at any moment, on any screen, announced or not: the Phone goes on living, and
// each screen goes on answering.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/scenarios/phone_process.h"

namespace {

using quorvel::store::NewCall;
using scenarios::Handset;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

constexpr std::int64_t noon = 1718452800;  // 15 June 2024 in UTC, the zone of the Phone here
constexpr std::int64_t day = 86400;

/// Calls of all kinds with five numbers, some of them contacts', on four days.
std::vector<NewCall> calls() {
    std::vector<NewCall> made;
    for (int i = 0; i < 24; ++i) {
        NewCall call;
        call.address = "+49301234560" + std::to_string(i % 5);
        if (i % 5 < 2) call.name = i % 5 == 0 ? "Anna Berg" : "Bert Adler";
        call.date = noon - (i / 6) * day + i * 60;
        call.duration = i % 3 == 0 ? 0 : 30;
        call.flags = i % 4 == 1 ? quorvel::store::flag::outgoing : 0;
        made.push_back(call);
    }
    return made;
}

/// A setting, and what it is changed to and back.
struct Change {
    const char* key;
    const char* to;
    const char* back;
};
constexpr Change changes[] = {
    {"isReplaceRecentsOn", "off", "on"},   {"minRec_Call", "5", "7"},          {"isEnableCallSearch", "off", "on"},
    {"isShowHeader_Call", "off", "on"},    {"isShowFooter_Call", "off", "on"}, {"isShowContactImage", "off", "on"},
    {"isCallOnTap_Call", "on", "off"},     {"isFaceTimeEnabled", "off", "on"}, {"isGroupByDate", "on", "off"},
    {"isGroupContacts_Call", "on", "off"}, {"language", "ar", "en"},           {"region", "US", "DE"},
};

/// How a screen is reached, with which settings beforehand.
struct Screen {
    const char* name;
    const char* settings;
    const char* way;
};

class Settings : public testing::TestWithParam<Screen> {
  protected:
    void SetUp() override {
        handset_.fill(calls());
        const std::string usual = "set region DE\nset minRec_Call 7\nset language en\n";
        ASSERT_EQ(handset_.run(usual + GetParam().settings).status, 0);
    }
    /// What a person does with a screen whatever it is: looks, scrolls, leaves and comes back.
    static std::string use() {
        return "show\nscroll 60\nscroll end\nscroll 0\nshow\nleave\nshow\nreturn\nscroll end\nscroll 0\nshow\n";
    }
    static std::string announce() { return "notify QuorvelReloadSettingsReplaceRecents\nwait\n"; }
    static std::string set(const char* key, const char* value) {
        return std::string("set ") + key + ' ' + value + '\n';
    }
    Handset handset_;
};

TEST_P(Settings, changedBothWaysAndAnnouncedNeverEndThePhone) {
    std::string script = GetParam().way;
    for (const auto& [key, to, back] : changes)
        for (const char* value : {to, back, to, back}) script += set(key, value) + announce() + use();
    const auto shown = handset_.run(script);
    EXPECT_EQ(shown.status, 0) << shown.errors;
    EXPECT_THAT(shown.errors, IsEmpty());
}

/// The change is read with the announcement, which comes while the screen is away, and before it is there again.
TEST_P(Settings, changedBothWaysWhileTheScreenIsAwayNeverEndThePhone) {
    std::string script = GetParam().way;
    for (const auto& [key, to, back] : changes)
        for (const char* value : {to, back})
            script += "leave\n" + set(key, value) + "now notify QuorvelReloadSettingsReplaceRecents\nnow return\n" +
                      "now scroll end\n" + use() + "background\nforeground\n" + use();
    const auto shown = handset_.run(script);
    EXPECT_EQ(shown.status, 0) << shown.errors;
    EXPECT_THAT(shown.errors, IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(
    On, Settings,
    testing::Values(
        Screen{"theHostsList", "set isReplaceRecentsOn off\n", ""},
        Screen{"theHostsMissedCalls", "set isReplaceRecentsOn off\n", "tap segment 1\n"},
        Screen{"theHostsOpenSwipe", "set isReplaceRecentsOn off\n", "swipe 1 open\n"}, Screen{"recents", "", ""},
        Screen{"dialledCalls", "", "tap segment 1\n"}, Screen{"receivedCalls", "", "tap segment 2\n"},
        Screen{"missedCalls", "", "tap segment 3\n"}, Screen{"aPagedList", "", "scroll end\nscroll end\nscroll end\n"},
        Screen{"recentsWithoutSearch", "set isEnableCallSearch off\n", ""},
        Screen{"days", "set isGroupByDate on\n", ""}, Screen{"runs", "set isGroupContacts_Call on\n", ""},
        Screen{"aDay", "set isGroupByDate on\n", "tap row 1\n"},
        Screen{"aDaysMissedCalls", "set isGroupByDate on\n", "tap row 1\ntap segment 3\n"},
        Screen{"aDayInEditMode", "set isGroupByDate on\n", "tap row 1\ntap right\n"},
        Screen{"aSearchOfADay", "set isGroupByDate on\n", "tap row 1\nsearch \"49\"\n"},
        Screen{"aHistory", "", "tap detail 0\ntap \"Call History\"\n"},
        Screen{"aHistoryOfADay", "set isGroupByDate on\n", "tap row 1\ntap detail 0\ntap \"Call History\"\n"},
        Screen{"aHistoryInEditMode", "", "tap detail 0\ntap \"Call History\"\ntap right\n"},
        Screen{"aHistorysSheet", "", "tap detail 0\ntap \"Call History\"\ntap right\ntap left\n"},
        Screen{"aCard", "", "tap detail 0\n"},
        Screen{"aCardOfADay", "set isGroupByDate on\n", "tap row 0\ntap detail 1\n"},
        Screen{"aSearch", "", "search \"anna\"\n"}, Screen{"aSearchOfMissedCalls", "", "search \"49\"\ntap scope 3\n"},
        Screen{"anEmptySearch", "", "search \"nobody\"\n"},
        Screen{"aSearchInEditMode", "", "search \"49\"\ntap tag 2\n"},
        Screen{"aSearchsSheet", "", "search \"49\"\ntap tag 2\ntap tag 1\n"}, Screen{"editMode", "", "tap right\n"},
        Screen{"theSheet", "", "tap right\ntap left\n"}, Screen{"anOpenSwipe", "", "swipe 1 open\n"}),
    [](const auto& each) { return std::string(each.param.name); });

/// The set-up of a view is made while it loads: one that loaded without it goes on without it, with everything else.
TEST(SettingsWhileTheHostsListIsShown, bringThePluginsRowsThatOpenAndGoBackToTheHosts) {
    const Handset handset;
    handset.fill(calls());
    ASSERT_EQ(handset.run("set region DE\nset minRec_Call 20\nset isReplaceRecentsOn off\n").status, 0);
    const std::string announced = "notify QuorvelReloadSettingsReplaceRecents\nwait\n";
    const auto shown =
        handset.run("show\nset isReplaceRecentsOn on\n" + announced + "leave\nreturn\nshow\n" +
                    "tap detail 0\nshow\ntap back\nset isReplaceRecentsOn off\n" + announced + "leave\nreturn\nshow\n");
    EXPECT_EQ(shown.status, 0) << shown.errors;
    EXPECT_THAT(shown.linesOf("rows"), ElementsAre("rows 24", "rows 21", "rows 6", "rows 24"));
    EXPECT_THAT(shown.linesOf("header"), ElementsAre("header \"Showing 20 calls\""));
    EXPECT_THAT(shown.linesOf("stack").at(2), HasSubstr("PersonViewController"));
}

}  // namespace
