// JSON of this program's own export, whole, cut off and wrong.
#include "tools/import/json_importer.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <rapidcheck.h>

#include "tests/import/reading.h"
#include "tools/json/json_text.h"

namespace import_tests {
namespace {

using quorvel::store::NewCall;
using testing::HasSubstr;
using testing::IsEmpty;
using tools::Complaint;

const std::string head = R"({"format":"quorvel-calls","version":1,"calls":[)";

class JsonImporting : public testing::Test {
  protected:
    Reading readText(const std::string& text) { return read(directory_.write("calls", text)); }
    void expectWrong(const std::string& call, const std::string& what) {
        const Reading reading = readText(head + call + R"(,{"date":9}]})");
        ASSERT_EQ(reading.complaints.size(), 1U) << call;
        EXPECT_THAT(reading.complaints[0].what, HasSubstr(what)) << call;
        EXPECT_EQ(reading.complaints[0].place, "1:" + std::to_string(head.size() + 1));
        EXPECT_EQ(reading.calls.size(), 1U) << call;
    }

    tools_tests::Directory directory_;
};

TEST_F(JsonImporting, aCallHasItsFieldsAndUnknownOnesArePassedOver) {
    const Reading reading = readText(
        R"( {"by":{"a":[1,{},[]],"b":null},"format":"quorvel-calls","version":1,"calls":[
{"time":"2024-06-15T14:05:00+02:00","kind":"dialled","date":1718453100,"duration":63,"flags":1048577,"contact":7,
"faceTimeDataSize":12,"address":"+4930100","name":"Anna \"B\" \u00fc \ud83d\ude00","label":"mobile","location":"K\/ln",
"extra":"{\"read\":\"1\"}","later":[true,false,-1.5e3]},
{"date":5}],"more":1}
)");
    EXPECT_EQ(reading.format, "calls exported by this program");
    EXPECT_THAT(reading.complaints, IsEmpty());
    ASSERT_EQ(reading.calls.size(), 2U);
    const NewCall& call = reading.calls[0];
    EXPECT_EQ(call.date, 1718453100);
    EXPECT_EQ(call.duration, 63);
    EXPECT_EQ(call.flags, 1048577);
    EXPECT_EQ(call.contactId, 7);
    EXPECT_EQ(call.faceTimeDataSize, 12);
    EXPECT_EQ(call.address, "+4930100");
    EXPECT_EQ(call.name, "Anna \"B\" ü 😀");
    EXPECT_EQ(call.location, "K/ln");
    EXPECT_EQ(call.extra, R"({"read":"1"})");
    EXPECT_EQ(reading.calls[1].contactId, quorvel::store::noContact);
}

TEST_F(JsonImporting, aWrongFieldIsNamedAndTheNextCallIsRead) {
    expectWrong(R"({"address":"1"})", "no \"date\"");
    expectWrong(R"({"date":"noon"})", "\"date\" has to be a whole number from 0");
    expectWrong(R"({"date":1.5})", "\"date\" has to be a whole number");
    expectWrong(R"({"date":1,"duration":-1})", "\"duration\" has to be");
    expectWrong(R"({"date":1,"flags":99999999999})", "\"flags\" has to be");
    expectWrong(R"({"date":1,"name":{"first":"Anna"}})", "\"name\" has to be a text");
}

TEST_F(JsonImporting, otherJsonAndLaterVersionsAreRefused) {
    const std::pair<const char*, const char*> texts[] = {
        {R"({"calls":[]})", "has to begin with \"format\""},
        {R"({"format":"other","calls":[]})", "has to begin with \"format\""},
        {R"({"format":"quorvel-calls","version":2,"calls":[]})", "Update the program"},
        {R"({"format":"quorvel-calls","version":1})", "no \"calls\""},
        {R"({"format":"quorvel-calls","calls":{}})", "A '[' has to stand here"},
        {"{", "ends too early"}};
    for (const auto& [text, what] : texts) {
        const Reading reading = readText(text);
        ASSERT_EQ(reading.complaints.size(), 1U) << text;
        EXPECT_EQ(reading.complaints[0].reach, Complaint::Reach::File);
        EXPECT_THAT(reading.complaints[0].what, HasSubstr(what)) << text;
    }
    EXPECT_THAT(readText("[]").refusal, HasSubstr("JSON of another program"));
}

TEST_F(JsonImporting, whatIsNoJsonEndsTheFileWithItsPlace) {
    for (const char* text : {R"({"date":1}x)", R"({"date":01}])", R"({"date":1 "name":""}])", R"({"date":1,}])",
                             R"({"date":nul}])", "{\"date\":1,\"name\":\"\n\"}]", R"({"date":1,"name":"\x"}])",
                             R"({"date":1,"name":"\u12"}])", R"({"date":1}]}})", R"({"date":1}] 5)"}) {
        const Reading reading = readText(head + text + "}");
        EXPECT_EQ(reading.complaints.size(), 1U) << text;
        EXPECT_LE(reading.calls.size(), 1U) << text;
    }
}

TEST_F(JsonImporting, valuesNestedWithoutEndAreRefused) {
    const Reading reading = readText(head + R"({"date":1,"x":)" + std::string(5'000'000, '['));
    ASSERT_EQ(reading.complaints.size(), 1U);
    EXPECT_THAT(reading.complaints[0].what, HasSubstr("nested more than a thousand times"));
}

TEST_F(JsonImporting, halvesOfPairsAreReplaced) {
    const Reading reading =
        readText(head + R"({"date":1,"name":"\ud83d","label":"\ude00x\ud83d\n\ud83d\ud83d\ude00"}]})");
    ASSERT_EQ(reading.calls.size(), 1U);
    EXPECT_EQ(reading.calls[0].name, "\uFFFD");
    EXPECT_EQ(reading.calls[0].label, "\uFFFDx\uFFFD\n\uFFFD😀");
}

std::string exported(const std::vector<NewCall>& calls) {
    std::string text = head;
    for (const NewCall& call : calls) {
        text += text.back() == '[' ? "\n" : ",\n";
        text += "{\"date\":" + std::to_string(call.date) + ",\"flags\":" + std::to_string(call.flags);
        text += ",\"name\":" + tools::jsonText(call.name) + ",\"extra\":" + tools::jsonText(call.extra) + '}';
    }
    return text + "\n]}\n";
}

TEST_F(JsonImporting, whateverIsWrittenIsReadTheSameAndACutLosesWhatFollows) {
    EXPECT_TRUE(rc::check([&] {
        std::vector<NewCall> calls(*rc::gen::inRange<std::size_t>(0, 6));
        for (NewCall& call : calls) {
            call.date = *rc::gen::inRange(0, INT32_MAX);
            call.flags = *rc::gen::inRange(INT32_MIN, INT32_MAX);
            call.name = *rc::gen::arbitrary<std::string>();
            call.extra = *rc::gen::element<std::string>("", "{\"a\\n\":\"\\u0001\"}", "😀\t\"\\");
        }
        const std::string text = exported(calls);
        const Reading whole = readText(text);
        RC_ASSERT(whole.complaints.empty());
        RC_ASSERT(whole.calls.size() == calls.size());
        for (std::size_t at = 0; at < calls.size(); ++at) {
            RC_ASSERT(whole.calls[at].date == calls[at].date);
            RC_ASSERT(whole.calls[at].flags == calls[at].flags);
            RC_ASSERT(whole.calls[at].name == calls[at].name);
            RC_ASSERT(whole.calls[at].extra == calls[at].extra);
        }
        const Reading cut = readText(text.substr(0, *rc::gen::inRange<std::size_t>(1, text.size() - 2)));
        RC_ASSERT(cut.complaints.size() == 1U);
        RC_ASSERT(cut.calls.size() <= calls.size());
    }));
}

}  // namespace
}  // namespace import_tests
