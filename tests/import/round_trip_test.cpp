// What the program exports and imports again is the same, to the last field.
#include <gtest/gtest.h>
#include <rapidcheck.h>

#include <algorithm>
#include <tuple>

#include "desktop/quorvel/store/call_store.h"
#include "desktop/quorvel/store/import_session.h"
#include "tests/import/reading.h"
#include "tests/store/time_zone.h"
#include "tools/export/call_writers.h"

namespace import_tests {
namespace {

using quorvel::store::CallRecord;
using quorvel::store::CallStore;
using quorvel::store::NewCall;

NewCall anyCall() {
    const auto text =
        rc::gen::oneOf(rc::gen::just(std::string()),
                       rc::gen::element<std::string>("+4930100", "anna@example.com", "a,b;c\t\"d\"\r\ne", "'x", "李 😀",
                                                     "=1+1", " spaced ", "null", "-1", "(Unknown)"));
    NewCall call;
    call.address = *text;
    call.date = *rc::gen::inRange(0, INT32_MAX);
    call.duration = *rc::gen::oneOf(rc::gen::just(0), rc::gen::inRange(0, 5000));
    call.flags = *rc::gen::arbitrary<std::int32_t>();
    call.contactId = *rc::gen::inRange(-1, 5);
    call.name = *text;
    call.label = *text;
    call.location = *text;
    call.faceTimeDataSize = *rc::gen::inRange(0, INT32_MAX);
    call.extra = *rc::gen::element<std::string>("", R"({"source":"android","a":"b,\"c\"\n"})", "{}");
    return call;
}

/// Every call with every field, but for row identifiers.
std::vector<CallRecord> contentOf(const CallStore& store) {
    std::vector<std::int64_t> rowIds;
    const auto page = *store.page(quorvel::store::Filter::all, {}, {}, quorvel::store::noLimit);
    for (const auto& row : page.rows) rowIds.push_back(row.rowId);
    auto calls = *store.wholeCalls(rowIds);
    for (CallRecord& call : calls) call.rowId = call.logId = 0;
    const auto order = [](const CallRecord& one, const CallRecord& other) {
        const auto key = [](const CallRecord& call) {
            return std::tie(call.date, call.address, call.duration, call.flags, call.contactId, call.name, call.label,
                            call.location, call.faceTimeDataSize, call.extra);
        };
        return key(one) < key(other);
    };
    std::sort(calls.begin(), calls.end(), order);
    return calls;
}

/// Adds the file's calls to the log as the command does; how many.
std::int64_t importInto(CallStore& store, const std::filesystem::path& file) {
    const Reading reading = read(file);
    RC_ASSERT(reading.refusal.empty());
    RC_ASSERT(reading.complaints.empty());
    auto session = *store.beginImport();
    RC_ASSERT(session.beginSource().ok());
    for (const NewCall& call : reading.calls)
        if (!*session.claim(call)) RC_ASSERT(session.add(call).ok());
    return *session.finish();
}

using MakeWriter = std::unique_ptr<tools::CallWriter> (*)(const std::filesystem::path&);

void expectRoundTrip(MakeWriter makeWriter) {
    rc::check([makeWriter] {
        const quorvel::store::TimeZone zone(
            (*rc::gen::element<std::string>("UTC", "Europe/Berlin", "Asia/Kathmandu")).c_str());
        const tools_tests::Directory directory;
        auto log = *CallStore::open(directory.file("log.db"));
        {
            auto session = *log.beginImport();
            const int count = *rc::gen::inRange(0, 12);
            for (int at = 0; at < count; ++at) {
                const NewCall call = anyCall();
                RC_ASSERT(session.add(call).ok());
                // Two calls that are the same stay two.
                if (*rc::gen::inRange(0, 4) == 0) RC_ASSERT(session.add(call).ok());
            }
            RC_ASSERT(session.finish().ok());
        }
        const auto before = contentOf(log);
        const auto writer = makeWriter(directory.file("exported"));
        for (const CallRecord& call : before) RC_ASSERT(!writer->write(call));
        RC_ASSERT(!writer->finish());

        auto other = *CallStore::open(directory.file("other.db"));
        RC_ASSERT(importInto(other, directory.file("exported")) == static_cast<std::int64_t>(before.size()));
        RC_ASSERT(contentOf(other) == before);
        RC_ASSERT(importInto(other, directory.file("exported")) == 0);
        RC_ASSERT(importInto(log, directory.file("exported")) == 0);
    });
}

TEST(RoundTrip, throughJsonEveryCallIsTheSame) { expectRoundTrip(tools::jsonWriter); }
TEST(RoundTrip, throughALogEveryCallIsTheSame) { expectRoundTrip(tools::logWriter); }
TEST(RoundTrip, throughCommaSeparatedValuesEveryCallIsTheSame) { expectRoundTrip(tools::csvWriter); }

}  // namespace
}  // namespace import_tests
