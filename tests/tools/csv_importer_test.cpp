// Calls from comma-separated values: the columns, and what is said of a wrong field.
#include "tools/import/csv_importer.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/tools/program.h"

namespace {

using quorvel::store::NewCall;
using testing::HasSubstr;
using tools::Complaint;
using tools::Importer;

class Importing : public testing::Test {
  protected:
    std::vector<NewCall> calls;
    std::vector<Complaint> complaints;

    void read(const std::string& text) {
        tools::CsvImporter importer(tools::InputFile(directory_.write("calls.csv", text)));
        for (;;) {
            auto item = importer.next();
            if (std::holds_alternative<Importer::End>(item)) return;
            if (auto* call = std::get_if<NewCall>(&item)) calls.push_back(*call);
            if (auto* complaint = std::get_if<Complaint>(&item)) complaints.push_back(*complaint);
        }
    }
    void expectComplaint(const std::string& text, const std::string& place, const std::string& what) {
        complaints.clear();
        read(text);
        ASSERT_EQ(complaints.size(), 1U) << text;
        EXPECT_EQ(complaints[0].place, place) << text;
        EXPECT_THAT(complaints[0].what, HasSubstr(what)) << text;
    }

  private:
    tools_tests::Directory directory_;
};

TEST_F(Importing, takesColumnsInAnyOrderAndKeepsUnknownOnesBesideTheCall) {
    read(
        "Name,duration,note,KIND,facetime,contact,location,address,date\n"
        "\"Berg, Anna\",30,x,dialled,video,7,Berlin,+4930100,1718452800\n"
        ",0,,missed,audio,,,,1718452801\n");
    ASSERT_EQ(calls.size(), 2U);
    EXPECT_EQ(calls[0].name, "Berg, Anna");
    EXPECT_EQ(calls[0].address, "+4930100");
    EXPECT_EQ(calls[0].location, "Berlin");
    EXPECT_EQ(calls[0].date, 1718452800);
    EXPECT_EQ(calls[0].duration, 30);
    EXPECT_EQ(calls[0].contactId, 7);
    EXPECT_EQ(calls[0].flags, 1 | 16);
    EXPECT_EQ(calls[0].extra, R"({"source":"csv","note":"x"})");
    EXPECT_EQ(calls[1].extra, "");
    EXPECT_EQ(calls[1].flags, 16 | 32);
    EXPECT_EQ(calls[1].contactId, quorvel::store::noContact);
    EXPECT_EQ(calls[1].address, "");
}

TEST_F(Importing, namesTheFieldThatIsWrong) {
    const std::string header = "date,address,kind,duration,facetime,contact\n";
    expectComplaint(header + "noon,1,missed,0,,\n", "2:1", "\"noon\" is no date");
    expectComplaint(header + "-1,1,missed,0,,\n", "2:1", "outside the years");
    expectComplaint(header + "99999999999,1,missed,0,,\n", "2:1", "outside the years");
    expectComplaint(header + "1,1,lost,0,,\n", "2:5", "\"lost\" is no kind of call");
    expectComplaint(header + "1,1,missed,a while,,\n", "2:12", "\"a while\" is no duration");
    expectComplaint(header + "1,1,received,-3,,\n", "2:14", "\"-3\" is no duration");
    expectComplaint(header + "1,1,missed,0,radio,\n", "2:14", "neither audio nor video");
    expectComplaint(header + "1,1,missed,0,,Anna\n", "2:15", "\"Anna\" is no contact");
    expectComplaint(header + "1,1,missed\n", "2:11", "3 fields, and the header line 6");
    EXPECT_TRUE(calls.empty());
}

TEST_F(Importing, refusesAKindThatContradictsTheDuration) {
    const std::string header = "date,address,kind,duration\n";
    expectComplaint(header + "1,1,missed,5\n", "2:12", "no duration");
    expectComplaint(header + "1,1,cancelled,5\n", "2:15", "no duration");
    expectComplaint(header + "1,1,received,0\n", "2:14", "at least a second");
    expectComplaint(header + "1,1,dialled,0\n", "2:13", "at least a second");
}

TEST_F(Importing, needsAHeaderLine) {
    expectComplaint("", "1:1", "empty");
    expectComplaint("date,address,kind\n1,1,missed\n", "1:1", "no column \"duration\"");
    expectComplaint("date,address,date,kind,duration\n", "1:14", "twice");
    EXPECT_TRUE(calls.empty());
}

TEST_F(Importing, goesOnBehindAWrongLine) {
    read("date,address,kind,duration\n1,a,missed,0\nx,b,missed,0\n2,c,missed,0\n");
    ASSERT_EQ(calls.size(), 2U);
    EXPECT_EQ(calls[1].address, "c");
    EXPECT_EQ(complaints.size(), 1U);
}

}  // namespace
