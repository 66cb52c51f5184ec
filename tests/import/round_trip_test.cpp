// What the program exports and imports again is the same, to the last field, in every format of calls.
#include <gtest/gtest.h>
#include <rapidcheck.h>

#include "desktop/quorvel/store/call_store.h"
#include "desktop/quorvel/store/import_session.h"
#include "tests/import/reading.h"
#include "tests/store/time_zone.h"
#include "tools/calls/selection.h"
#include "tools/export/call_writers.h"

namespace import_tests {
namespace {

using quorvel::store::CallRecord;
using quorvel::store::CallStore;
using quorvel::store::NewCall;
using tools_tests::Directory;

/// Texts with everything that formats make something of.
std::string madeOfPieces() {
    static const std::vector<std::string> pieces{
        "a",    "Z",  "7", "+49", " ",  ",", ";",    "\"",   "'", "\n",  "\r\n", "\t",           "\\", "{}",
        "null", "=1", "é", "Ж",   "愛", "😀", "\x7F", "\x01", "&", "<b>", "-",    "\xEF\xBB\xBF", "%",  "\u2028"};
    const auto chosen = *rc::gen::container<std::vector<std::size_t>>(rc::gen::inRange<std::size_t>(0, pieces.size()));
    std::string made;
    for (const auto piece : chosen) made += pieces[piece];
    return made;
}

/// One of those, or a whole text of which readers make something.
std::string anyText() {
    if (*rc::gen::arbitrary<bool>()) return madeOfPieces();
    return *rc::gen::element<std::string>("", "+4930100", "anna@example.com", "a,b;c\t\"d\"\r\ne", "'x", "李 😀", "=1+1",
                                          " spaced ", "null", "-1", "(Unknown)");
}

NewCall anyCall() {
    NewCall call;
    call.address = anyText();
    call.date = *rc::gen::oneOf(rc::gen::inRange<std::int64_t>(0, INT32_MAX),
                                rc::gen::inRange<std::int64_t>(1718452800, 1718452803));
    call.duration = *rc::gen::oneOf(rc::gen::just(0), rc::gen::inRange(0, 5000), rc::gen::inRange(0, INT32_MAX));
    call.flags = *rc::gen::oneOf(rc::gen::element(0, 1, 4, 5, 16, 17, 48, 49), rc::gen::arbitrary<std::int32_t>());
    call.contactId = *rc::gen::oneOf(rc::gen::inRange(-1, 5), rc::gen::inRange(1, INT32_MAX));
    call.name = anyText();
    call.label = anyText();
    call.location = anyText();
    call.faceTimeDataSize = *rc::gen::oneOf(rc::gen::just(0), rc::gen::inRange(0, INT32_MAX));
    call.extra =
        *rc::gen::element<std::string>("", "{}", R"({"source":"android","type":"7"})",
                                       R"({"source":"android","a":"b,\"c\"\n"})", R"({ "a" : [1, "\u00e9, \"x\""] })");
    return call;
}

/// Every call with every field but its row identifier, the oldest first.
std::vector<CallRecord> contentOf(const CallStore& log) {
    auto calls = *log.wholeCalls(*tools::chosenCalls(log, {}));
    for (CallRecord& call : calls) call.rowId = call.logId = 0;
    return calls;
}

void fill(CallStore& log) {
    auto session = *log.beginImport();
    const int count = *rc::gen::inRange(0, 20);
    for (int at = 0; at < count; ++at) {
        const NewCall call = anyCall();
        RC_ASSERT(session.add(call).ok());
        // Two calls that are the same stay two.
        if (*rc::gen::inRange(0, 4) == 0) RC_ASSERT(session.add(call).ok());
    }
    RC_ASSERT(session.finish().ok());
}

/// Adds the file's calls to the log as the command does; how many.
std::int64_t importInto(CallStore& log, const std::filesystem::path& file) {
    const Reading reading = read(file);
    RC_ASSERT(reading.refusal.empty());
    RC_ASSERT(reading.complaints.empty());
    auto session = *log.beginImport();
    RC_ASSERT(session.beginSource().ok());
    for (const NewCall& call : reading.calls)
        if (!*session.claim(call)) RC_ASSERT(session.add(call).ok());
    return *session.finish();
}

struct Format {
    const char* name;
    std::unique_ptr<tools::CallWriter> (*makeWriter)(const std::filesystem::path&, files::Existing);
};

class RoundTrip : public testing::TestWithParam<Format> {
  protected:
    /// Each try writes three files to the disk for good; where nobody says how many tries, these are enough.
    static void SetUpTestSuite() { setenv("RC_PARAMS", "max_success=50", 0); }
};

TEST_P(RoundTrip, losesAndChangesNothingAndAddsNothingASecondTime) {
    const bool isSame = rc::check("exported and imported again is the same", [] {
        const quorvel::store::TimeZone zone(
            (*rc::gen::element<std::string>("UTC", "Europe/Berlin", "Asia/Kathmandu")).c_str());
        const Directory directory;
        auto log = *CallStore::open(directory.file("log.db"));
        fill(log);
        const auto before = contentOf(log);
        const auto exported = directory.file("exported");
        const auto writer = GetParam().makeWriter(exported, files::Existing::refused);
        for (const CallRecord& call : before) RC_ASSERT(writer->write(call) == std::nullopt);
        RC_ASSERT(writer->finish() == std::nullopt);

        auto other = *CallStore::open(directory.file("other.db"));
        RC_ASSERT(importInto(other, exported) == static_cast<std::int64_t>(before.size()));
        RC_ASSERT(contentOf(other) == before);
        RC_ASSERT(importInto(other, exported) == 0);
        RC_ASSERT(importInto(log, exported) == 0);
    });
    EXPECT_TRUE(isSame);
}

INSTANTIATE_TEST_SUITE_P(InEachFormat, RoundTrip,
                         testing::Values(Format{"commaSeparated", tools::csvWriter}, Format{"json", tools::jsonWriter},
                                         Format{"log", tools::logWriter}),
                         [](const auto& instance) { return std::string(instance.param.name); });

}  // namespace
}  // namespace import_tests
