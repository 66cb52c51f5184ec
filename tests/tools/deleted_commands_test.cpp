// deleted and undelete, as a person meets them.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "desktop/quorvel/store/call_store.h"
#include "tests/tools/program.h"

namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;
using testing::StartsWith;
using tools_tests::Directory;

/// Three calls, of which the first two are deleted.
class DeletedCommands : public testing::Test {
  protected:
    void SetUp() override {
        const auto file = directory_.write("calls.csv",
                                           "date,address,kind,duration,name\n1718452800,+4930100,received,30,Anna\n"
                                           "1718452900,+4930200,missed,0,\n1718453000,+4930300,missed,0,\n");
        ASSERT_EQ(directory_.run("import '" + file.string() + '\'').status, 0);
        before_ = directory_.run("list").output;
        std::filesystem::path log;
        for (const auto& entry : std::filesystem::directory_iterator(directory_.data())) {
            if (entry.path().extension() == ".db") log = entry.path();
        }
        auto calls = quorvel::store::CallStore::open(log);
        ASSERT_TRUE(calls.ok()) << log;
        ASSERT_EQ(calls->deleteCalls(std::vector<std::int64_t>{1, 2}).valueOr(0), 2);
    }

    Directory directory_;
    std::string before_;
};

TEST_F(DeletedCommands, deletedCallsAreListedWithTheirNumbersAndWhenTheyWereDeleted) {
    const auto lines = directory_.run("deleted").lines();
    ASSERT_THAT(lines, SizeIs(2));
    EXPECT_THAT(lines[0], StartsWith("2\t20"));
    EXPECT_THAT(lines[0], HasSubstr("\t2024-06-15 12:01:40\t0\t+4930200\t"));
    EXPECT_THAT(lines[1], HasSubstr("\t2024-06-15 12:00:00\t30\t+4930100\tAnna"));
}

TEST_F(DeletedCommands, namedCallsComeBackAndTheOthersStayDeleted) {
    const auto outcome = directory_.run("undelete 1");
    EXPECT_EQ(outcome.status, 0) << outcome.errors;
    EXPECT_EQ(outcome.output, "1 call is back.\n");
    EXPECT_THAT(directory_.run("deleted").lines(), SizeIs(1));
    EXPECT_THAT(directory_.run("list").lines(), SizeIs(2));
}

TEST_F(DeletedCommands, allComeBackAsTheyWere) {
    EXPECT_EQ(directory_.run("undelete --all").output, "2 calls are back.\n");
    EXPECT_EQ(directory_.run("list").output, before_);
    EXPECT_THAT(directory_.run("deleted").lines(), IsEmpty());
    EXPECT_EQ(directory_.run("undelete --all").output, "0 calls are back.\n");
}

TEST_F(DeletedCommands, aCallThatIsNotThereIsNamedAndTheOthersComeBack) {
    const auto outcome = directory_.run("undelete 1 77");
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(outcome.lines(), ElementsAre("1 call is back."));
    EXPECT_THAT(outcome.errors, HasSubstr("no deleted call 77"));
}

TEST_F(DeletedCommands, withoutANumberNothingIsBroughtBack) {
    for (const char* arguments : {"undelete", "undelete --all 1"}) {
        const auto outcome = directory_.run(arguments);
        EXPECT_EQ(outcome.status, 2) << arguments;
        EXPECT_THAT(outcome.errors, HasSubstr("--all"));
    }
    EXPECT_THAT(directory_.run("deleted").lines(), SizeIs(2));
}

}  // namespace
