// Sums of calls against literal ones, and the pictures of them.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/tools/program.h"
#include "tools/stats/statistics.h"

namespace {

using quorvel::store::CallRecord;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;
using tools::CallSums;
using tools::NamedSums;
using tools_tests::Directory;

CallRecord call(const char* day, const char* address, std::int32_t contact, std::int32_t flags, std::int32_t seconds) {
    CallRecord record;
    record.day = day;
    record.address = address;
    record.contactId = contact;
    record.flags = flags;
    record.duration = seconds;
    return record;
}

TEST(Statistics, ofNoCallsAreEmpty) {
    const tools::Statistics statistics;
    EXPECT_EQ(statistics.all(), CallSums());
    EXPECT_THAT(statistics.months(), IsEmpty());
    EXPECT_THAT(statistics.contacts(10), IsEmpty());
    EXPECT_THAT(statistics.busiestDays(10), IsEmpty());
}

TEST(Statistics, addCallsUpByMonthContactAndDay) {
    tools::Statistics statistics;
    auto named = call("2024-02-01", "+49301", 4, 0, 30);
    named.name = "Anna";
    statistics.add(named);
    statistics.add(call("2024-02-01", "+49302", 4, 1, 20));
    statistics.add(call("2023-11-30", "+49303", -1, 0, 0));
    statistics.add(call("2023-11-29", "", -1, 1, 0));
    EXPECT_EQ(statistics.all(), (CallSums{1, 1, 1, 1, 50}));
    EXPECT_THAT(statistics.months(), ElementsAre(NamedSums{"2023-11", {0, 1, 0, 1, 0}}, NamedSums{"2023-12", {}},
                                                 NamedSums{"2024-01", {}}, NamedSums{"2024-02", {1, 0, 1, 0, 50}}));
    EXPECT_THAT(statistics.contacts(10),
                ElementsAre(NamedSums{"Anna", {1, 0, 1, 0, 50}}, NamedSums{"(withheld)", {0, 1, 0, 0, 0}},
                            NamedSums{"+49303", {0, 0, 0, 1, 0}}));
    EXPECT_THAT(statistics.busiestDays(2),
                ElementsAre(NamedSums{"2024-02-01", {1, 0, 1, 0, 50}}, NamedSums{"2023-11-29", {0, 1, 0, 0, 0}}));
}

TEST(Statistics, talkHasHoursWithoutABound) {
    EXPECT_EQ(tools::talkText(0), "0:00:00");
    EXPECT_EQ(tools::talkText(3723), "1:02:03");
    EXPECT_EQ(tools::talkText(360000), "100:00:00");
}

class StatsCommand : public testing::Test {
  protected:
    void SetUp() override {
        const auto file = directory_.write("calls.csv",
                                           "date,address,kind,duration,name\n1718452800,+4930100,received,30,Анна\n"
                                           "1718452900,+4930200,missed,0,\n1715860800,+4930200,dialled,90,\n");
        ASSERT_EQ(directory_.run("import '" + file.string() + '\'').status, 0);
    }
    Directory directory_;
};

TEST_F(StatsCommand, printsALineForEachPart) {
    EXPECT_THAT(directory_.run("stats --top 1").lines(),
                ElementsAre("total\t\t3\t1\t0\t1\t1\t120", "month\t2024-05\t1\t1\t0\t0\t0\t90",
                            "month\t2024-06\t2\t0\t0\t1\t1\t30", "contact\t+4930200\t2\t1\t0\t0\t1\t90",
                            "day\t2024-06-15\t2\t0\t0\t1\t1\t30"));
    EXPECT_THAT(directory_.run("stats --since 2024-06-01 --filter missed").lines(),
                ElementsAre("total\t\t1\t0\t0\t0\t1\t0", "month\t2024-06\t1\t0\t0\t0\t1\t0",
                            "contact\t+4930200\t1\t0\t0\t0\t1\t0", "day\t2024-06-15\t1\t0\t0\t0\t1\t0"));
    EXPECT_THAT(directory_.runOnTerminal({"stats"}).output, HasSubstr("0:02:00"));
}

TEST_F(StatsCommand, drawsAPictureOfTheKindThatItsNameSays) {
    for (const char* name : {"plot.svg", "plot.png"}) {
        const auto file = directory_.file(name);
        const std::string quoted = '\'' + file.string() + '\'';
        ASSERT_EQ(directory_.run("stats --plot " + quoted).status, 0) << name;
        const auto content = tools_tests::contentOf(file);
        EXPECT_GT(content.size(), 5000U);
        EXPECT_THAT(content, StartsWith(name == std::string("plot.svg") ? "<?xml" : "\x89PNG"));
        EXPECT_EQ(directory_.run("stats --plot " + quoted).status, 1) << "it is there already";
        EXPECT_EQ(directory_.run("stats --force --plot " + quoted).status, 0);
        EXPECT_EQ(tools_tests::contentOf(file), content) << "the same calls make the same picture";
    }
    const auto wrong = directory_.run("stats --plot '" + directory_.file("plot.gif").string() + '\'');
    EXPECT_EQ(wrong.status, 2);
    EXPECT_THAT(wrong.errors, HasSubstr("FILE.svg"));
    EXPECT_EQ(wrong.output, "");
}

TEST_F(StatsCommand, drawsAnEmptyLogToo) {
    const Directory empty;
    const auto outcome = empty.run("stats --plot '" + empty.file("plot.svg").string() + '\'');
    EXPECT_EQ(outcome.status, 0) << outcome.errors;
    EXPECT_EQ(outcome.output, "total\t\t0\t0\t0\t0\t0\t0\n");
}

}  // namespace
