// The Phone leaves a screen while something of it is still at work: an indicator that fades, a form, a picker.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>

#include "tests/scenarios/phone_process.h"

namespace {

using quorvel::store::NewCall;
using scenarios::Handset;
using testing::ElementsAre;
using testing::HasSubstr;

constexpr std::int64_t noon = 1718452800;  // 15 June 2024 in UTC, the zone of the Phone here
constexpr std::int64_t day = 86400;

NewCall call(const char* address, std::int64_t date) {
    NewCall made;
    made.address = address;
    made.date = date;
    made.duration = 30;
    return made;
}

class Leaving : public testing::Test {
  protected:
    Leaving() {
        handset_.fill({call("+442079460000", noon), call("+442079460001", noon - 60), call("+493099", noon - day)});
        std::ofstream(handset_.file("anna.vcf")) << "BEGIN:VCARD\nVERSION:3.0\nFN:Anna Berg\nN:Berg;Anna;;;\n"
                                                    "TEL;TYPE=CELL:+44 20 7946 0001\nEND:VCARD\n";
        EXPECT_EQ(contacts("import '" + handset_.file("anna.vcf").string() + "'"), 0);
    }
    void groupByDay() { ASSERT_EQ(handset_.run("set isGroupByDate on\n").status, 0); }
    int contacts(const std::string& command) const {
        return std::system(("'" QUORVELCTL_PROGRAM "' --data '" + handset_.file("").string() + "' contacts " + command +
                            " >'" + handset_.file("out").string() + "'")
                               .c_str());
    }
    /// How many contacts have that name.
    long countOf(const std::string& name) const {
        EXPECT_EQ(contacts("export '" + handset_.file("all.vcf").string() + "'"), 0);
        std::ifstream stream(handset_.file("all.vcf"));
        long count = 0;
        for (std::string line; std::getline(stream, line);) count += line.starts_with("FN:" + name);
        return count;
    }

    Handset handset_;
};

TEST_F(Leaving, aDayThatStillLoads) {
    groupByDay();
    const auto shown = handset_.run("now tap row 0\nnow background\nwait\nforeground\ntap row 0\nshow\n");
    EXPECT_EQ(shown.status, 0) << shown.errors;
    EXPECT_THAT(shown.linesOf("stack"), ElementsAre("stack PHRecentsViewController QVDateLogViewController"));
    EXPECT_THAT(shown.linesOf("rows"), ElementsAre("rows 2"));
}

TEST_F(Leaving, aDayWhoseCallsAreBeingDeleted) {
    groupByDay();
    const auto shown = handset_.run(
        "tap row 0\ntap right\ntap left\nnow tap \"Delete All Calls\"\nnow background\nwait\nforeground\nshow\n");
    EXPECT_EQ(shown.status, 0) << shown.errors;
    EXPECT_THAT(shown.linesOf("stack"), ElementsAre("stack PHRecentsViewController"));
    EXPECT_THAT(handset_.run("show\n").linesOf("rows"), ElementsAre("rows 1"));
}

TEST_F(Leaving, aHistoryWhoseCallsAreBeingDeleted) {
    const auto shown = handset_.run(
        "tap detail 0\ntap \"Call History\"\ntap right\ntap left\nnow tap \"Delete All Calls\"\nnow background\nwait\n"
        "foreground\nshow\n");
    EXPECT_EQ(shown.status, 0) << shown.errors;
    EXPECT_THAT(shown.linesOf("stack"), ElementsAre("stack PHRecentsViewController"));
}

TEST_F(Leaving, aDayUnderTheFormOfAnUnknownNumber) {
    groupByDay();
    const auto shown = handset_.run(
        "tap row 0\ntap detail 0\ntap \"Create New Contact\"\nbackground\nforeground\nshow\ntap \"Cancel\"\nshow\n");
    EXPECT_EQ(shown.status, 0) << shown.errors;
    EXPECT_THAT(shown.linesOf("screen"),
                ElementsAre("screen ABNewPersonViewController", "screen PHRecentsViewController"));
}

TEST_F(Leaving, recentsUnderTheFormThatIsCancelled) {
    const auto shown =
        handset_.run("tap detail 0\ntap \"Create New Contact\"\nbackground\nforeground\nshow\ntap \"Cancel\"\nshow\n");
    EXPECT_EQ(shown.status, 0) << shown.errors;
    EXPECT_THAT(shown.linesOf("screen"),
                ElementsAre("screen ABNewPersonViewController", "screen PHRecentsViewController"));
}

TEST_F(Leaving, recentsUnderTheFormThatSavesOnceAndCloses) {
    const auto shown = handset_.run(
        "tap detail 0\ntap \"Create New Contact\"\ntap \"First Name\"\ntype \"Ada\"\nbackground\nforeground\nshow\n"
        "now tap \"Done\"\nnow tap \"Done\"\nwait\nshow\n");
    EXPECT_EQ(shown.status, 0) << shown.errors;
    EXPECT_THAT(shown.linesOf("screen"),
                ElementsAre("screen ABNewPersonViewController", HasSubstr("screen PHRecents")));
    EXPECT_EQ(countOf("Ada"), 1);
}

TEST_F(Leaving, recentsUnderTheFormOfAContact) {
    const auto shown = handset_.run(
        "tap detail 1\ntap \"Edit\"\ntap \"Anna\"\ntype \"X\"\nbackground\nforeground\nshow\ntap \"Done\"\nshow\n");
    EXPECT_EQ(shown.status, 0) << shown.errors;
    EXPECT_THAT(shown.linesOf("screen"),
                ElementsAre("screen ABNewPersonViewController", "screen PHRecentsViewController"));
}

TEST_F(Leaving, recentsUnderThePickerThatIsCancelled) {
    const auto shown = handset_.run(
        "tap detail 0\ntap \"Add to Existing Contact\"\nbackground\nforeground\nshow\ntap \"Cancel\"\nshow\n");
    EXPECT_EQ(shown.status, 0) << shown.errors;
    EXPECT_THAT(shown.linesOf("screen"),
                ElementsAre("screen ABMembersViewController", "screen PHRecentsViewController"));
}

TEST_F(Leaving, recentsUnderThePickerWithItsForm) {
    const auto shown = handset_.run(
        "tap detail 0\ntap \"Add to Existing Contact\"\ntap row 0\nbackground\nforeground\nshow\ntap \"Done\"\nshow\n");
    EXPECT_EQ(shown.status, 0) << shown.errors;
    EXPECT_THAT(shown.linesOf("screen"),
                ElementsAre("screen ABNewPersonViewController", HasSubstr("screen PHRecents")));
}

}  // namespace
