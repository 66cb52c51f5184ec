// Calls with a withheld number: one person whom nobody can call back.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/scenarios/phone_process.h"

namespace {

using quorvel::store::NewCall;
using scenarios::Handset;
using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

constexpr std::int64_t noon = 1718452800;  // 15 June 2024 in UTC, the zone of the Phone here

NewCall call(const char* address, std::int64_t date, int duration, const char* name = "", int flags = 0) {
    NewCall made;
    made.address = address;
    made.date = date;
    made.duration = duration;
    made.name = name;
    made.flags = flags;
    return made;
}

/// Two withheld ones and one of a number that no place is known of.
std::vector<NewCall> calls() {
    return {call("", noon - 60, 30), call("+88213000", noon, 30, "Otto"),
            call("", noon + 60, 0, "", quorvel::store::flag::faceTime)};
}

TEST(AWithheldNumber, hasACardOfNobodyAndAHistory) {
    const Handset handset;
    handset.fill(calls());
    const auto shown = handset.run("tap detail 0\nshow\ntap \"Call History\"\nshow\ntap right\ntap left\nshow\n");
    EXPECT_EQ(shown.status, 0) << shown.errors;
    EXPECT_THAT(shown.linesOf("card"), ElementsAre("card \"Unknown\""));
    EXPECT_THAT(shown.linesOf("rows"), ElementsAre("rows 0", "rows 2", "rows 2"));
    EXPECT_THAT(shown.linesOf("sheet"), ElementsAre(HasSubstr("\"Delete all calls for Unknown?\"")));
}

TEST(AWithheldNumber, isCalledBackByNothing) {
    const Handset handset;
    handset.fill(calls());
    ASSERT_EQ(handset.run("set isCallOnTap_Call on\n").status, 0);
    const auto shown = handset.run(
        "tap row 0\ntap row 2\nshow\ntap detail 0\ntap \"Call History\"\ntap row 0\ntap row 1\nshow\n"
        "tap back\ntap back\ntap row 1\nshow\n");
    EXPECT_EQ(shown.status, 0) << shown.errors;
    EXPECT_THAT(shown.linesOf("url"), ElementsAre("url tel://+88213000"));
    EXPECT_THAT(shown.linesOf("call "), testing::SizeIs(1));
}

TEST(AWithheldNumber, isDeletedLikeAnyOther) {
    const Handset handset;
    handset.fill(calls());
    const auto shown = handset.run("swipe 0\nshow\ntap detail 1\ntap \"Call History\"\nswipe 0\nshow\n");
    EXPECT_EQ(shown.status, 0) << shown.errors;
    EXPECT_THAT(shown.linesOf("rows"), ElementsAre("rows 2", "rows 1"));
    EXPECT_THAT(shown.linesOf("row 0"), Contains(HasSubstr("\"Otto\"")));
}

TEST(ANamedCallerWithoutAPlace, isNotCalledUnknownToo) {
    const Handset handset;
    handset.fill(calls());
    const auto shown = handset.run("tap detail 1\nshow\n");
    EXPECT_THAT(shown.linesOf("card"), ElementsAre("card \"Otto\""));
    EXPECT_THAT(shown.linesOf("row 0"), ElementsAre(HasSubstr("+88213000")));
}

TEST(AWithheldNumber, hasAWordInTheHostsOwnListAndIsNotCalled) {
    const Handset handset;
    handset.fill(calls());
    const auto shown = handset.run("show\ntap row 0\nshow\ntap detail 0\nshow\n", "--no-plugin");
    EXPECT_EQ(shown.status, 0) << shown.errors;
    EXPECT_THAT(shown.linesOf("row 0"), Contains(HasSubstr("row 0 \"Unknown\"")));
    EXPECT_THAT(shown.linesOf("url"), IsEmpty());
    EXPECT_THAT(shown.linesOf("card"), ElementsAre("card \"Unknown\""));
}

}  // namespace
