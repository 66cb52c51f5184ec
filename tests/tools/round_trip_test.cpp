// What is exported and imported again is the same, to the last field, in every format of calls.
#include <gtest/gtest.h>
#include <rapidcheck.h>

#include "desktop/quorvel/store/call_store.h"
#include "desktop/quorvel/store/import_session.h"
#include "tests/tools/program.h"
#include "tools/calls/selection.h"
#include "tools/export/call_writers.h"
#include "tools/import/importer.h"

namespace {

using quorvel::store::CallRecord;
using quorvel::store::CallStore;
using quorvel::store::NewCall;
using tools_tests::Directory;

/// Texts with everything that formats make something of.
std::string text() {
    static const std::vector<std::string> pieces{
        "a",    "Z",  "7", "+49", " ",  ",", ";",    "\"",   "'", "\n",  "\r\n", "\t",           "\\", "{}",
        "null", "=1", "é", "Ж",   "愛", "😀", "\x7F", "\x01", "&", "<b>", "-",    "\xEF\xBB\xBF", "%",  "\u2028"};
    const auto chosen = *rc::gen::container<std::vector<std::size_t>>(rc::gen::inRange<std::size_t>(0, pieces.size()));
    std::string made;
    for (const auto piece : chosen) made += pieces[piece];
    return made;
}

std::string object() {
    return *rc::gen::element<std::string>("", "{}", "{\"source\":\"android\",\"type\":\"7\"}",
                                          "{ \"a\" : [1, \"\\u00e9, \\\"x\\\"\"] }");
}

NewCall call() {
    NewCall made;
    made.address = text();
    made.date = *rc::gen::oneOf(rc::gen::inRange<std::int64_t>(0, INT32_MAX),
                                rc::gen::inRange<std::int64_t>(1718452800, 1718452803));
    made.duration = *rc::gen::oneOf(rc::gen::just(0), rc::gen::inRange(0, INT32_MAX));
    made.flags = *rc::gen::oneOf(rc::gen::element(0, 1, 4, 5, 16, 17, 48, 49), rc::gen::arbitrary<std::int32_t>());
    made.contactId = *rc::gen::oneOf(rc::gen::just(-1), rc::gen::inRange(1, INT32_MAX));
    made.name = text();
    made.label = text();
    made.location = text();
    made.faceTimeDataSize = *rc::gen::oneOf(rc::gen::just(0), rc::gen::inRange(0, INT32_MAX));
    made.extra = object();
    return made;
}

template <class Value>
Value valueOf(quorvel::store::Result<Value> result) {
    if (!result) throw std::runtime_error(result.error().message);
    return *std::move(result);
}

/// Every call with every field but its row identifier, oldest first.
std::vector<CallRecord> contentsOf(const CallStore& log) {
    auto calls = valueOf(log.wholeCalls(valueOf(tools::chosenCalls(log, {}))));
    for (auto& each : calls) each.rowId = each.logId = 0;
    return calls;
}

void exportTo(const std::unique_ptr<tools::CallWriter>& writer, const CallStore& log) {
    for (const auto& each : valueOf(log.wholeCalls(valueOf(tools::chosenCalls(log, {})))))
        RC_ASSERT(writer->write(each) == std::nullopt);
    RC_ASSERT(writer->finish() == std::nullopt);
}

void importFrom(const std::filesystem::path& file, CallStore& log) {
    auto opened = tools::openImporter(file, {});
    if (const auto* trouble = std::get_if<std::string>(&opened)) throw std::runtime_error(*trouble);
    auto& importer = *std::get<std::unique_ptr<tools::Importer>>(opened);
    auto session = valueOf(log.beginImport());
    for (;;) {
        auto item = importer.next();
        if (std::holds_alternative<tools::Importer::End>(item)) break;
        if (const auto* wrong = std::get_if<tools::Complaint>(&item)) throw std::runtime_error(wrong->what);
        valueOf(session.add(std::get<NewCall>(item)));
    }
    valueOf(session.finish());
}

class RoundTrip : public testing::TestWithParam<const char*> {
  protected:
    /// Each try writes three files to the disk for good; where nobody says how many tries, these are enough.
    static void SetUpTestSuite() { setenv("RC_PARAMS", "max_success=40", 0); }
    static std::unique_ptr<tools::CallWriter> writerOf(const std::filesystem::path& file) {
        if (file.extension() == ".json") return tools::jsonWriter(file);
        return file.extension() == ".db" ? tools::logWriter(file) : tools::csvWriter(file);
    }
};

TEST_P(RoundTrip, losesAndChangesNothing) {
    const std::string format = GetParam();
    const bool isSame = rc::check("exported and imported again is the same", [&] {
        const Directory directory;
        auto log = valueOf(CallStore::open(directory.file("before.db")));
        auto session = valueOf(log.beginImport());
        const int count = *rc::gen::inRange(0, 30);
        for (int at = 0; at < count; ++at) valueOf(session.add(call()));
        valueOf(session.finish());
        const auto file = directory.file("exported." + format);
        exportTo(writerOf(file), log);
        auto again = valueOf(CallStore::open(directory.file("after.db")));
        importFrom(file, again);
        RC_ASSERT(contentsOf(again) == contentsOf(log));
    });
    EXPECT_TRUE(isSame);
}

INSTANTIATE_TEST_SUITE_P(InEachFormat, RoundTrip, testing::Values("csv", "json", "db"),
                         [](const auto& instance) { return std::string(instance.param); });

}  // namespace
