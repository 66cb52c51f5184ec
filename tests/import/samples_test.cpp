// Files that other programs wrote, imported with the counts that the formats' own tools give.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>

#include "tests/import/reading.h"

namespace import_tests {
namespace {

using testing::HasSubstr;
using testing::IsEmpty;
namespace store = quorvel::store;

const std::filesystem::path samples = SAMPLES;

int numberOf(const std::string& command) { return std::stoi(printedBy(command)); }

template <class Predicate>
int countIf(const Reading& reading, Predicate&& holds) {
    return static_cast<int>(std::count_if(reading.calls.begin(), reading.calls.end(), holds));
}

TEST(Samples, theAndroidDatabaseGivesWhatSqliteCounts) {
    const auto file = samples / "android-contacts2-plaso/contacts2.db";
    const auto count = [&](const std::string& condition) {
        return numberOf("sqlite3 -readonly '" + file.string() + "' 'select count(*) from calls where " + condition +
                        "'");
    };
    const Reading reading = read(file);
    EXPECT_EQ(reading.format, "an Android phone's calls");
    EXPECT_THAT(reading.complaints, IsEmpty());
    ASSERT_EQ(reading.calls.size(), 3U);
    EXPECT_EQ(static_cast<int>(reading.calls.size()), count("1"));
    EXPECT_EQ(countIf(reading, [](const auto& call) { return store::isMissed(call.flags, call.duration); }),
              count("type = 3"));
    EXPECT_EQ(countIf(reading, [](const auto& call) { return store::isOutgoing(call.flags); }), count("type = 2"));
    EXPECT_EQ(countIf(reading, [](const auto& call) { return call.duration == 639; }), count("duration = 639"));
    EXPECT_EQ(reading.calls[0].address, "5404561685");
    EXPECT_EQ(reading.calls[0].date, 1383772636);
    EXPECT_EQ(reading.calls[0].name, "Barney");
    EXPECT_EQ(reading.calls[0].label, "mobile");
    EXPECT_EQ(reading.calls[0].location, "Bedrock");
    EXPECT_THAT(reading.calls[0].extra, HasSubstr(R"("normalized_number":"+15404561685")"));
    EXPECT_THAT(reading.calls[0].extra, HasSubstr(R"("date":"1383772636690")"));
}

TEST(Samples, androidBackupsGiveWhatXmllintCounts) {
    const std::pair<const char*, std::size_t> files[] = {
        {"calls-2014.xml", 13}, {"to_process-00-calls-test.xml", 12}, {"to_process-01-calls-test.xml", 12}};
    for (const auto& [name, expected] : files) {
        const auto file = samples / "android-calls-xml" / name;
        const auto count = [&](const std::string& path) {
            return numberOf("xmllint --xpath 'count(" + path + ")' '" + file.string() + "'");
        };
        const Reading reading = read(file);
        EXPECT_EQ(reading.format, "a backup of an Android phone's calls");
        EXPECT_THAT(reading.complaints, IsEmpty());
        EXPECT_EQ(reading.calls.size(), expected) << name;
        EXPECT_EQ(static_cast<int>(reading.calls.size()), count("//call"));
        EXPECT_EQ(countIf(reading, [](const auto& call) { return store::isMissed(call.flags, call.duration); }),
                  count("//call[@type=3]"));
        EXPECT_EQ(countIf(reading, [](const auto& call) { return store::isOutgoing(call.flags); }),
                  count("//call[@type=2]"));
        EXPECT_EQ(countIf(reading, [](const auto& call) { return call.name.empty(); }),
                  count("//call[@contact_name=\"(Unknown)\"]"));
        int seconds = 0;
        for (const auto& call : reading.calls) seconds += call.duration;
        EXPECT_EQ(seconds, numberOf("xmllint --xpath 'sum(//call/@duration)' '" + file.string() + "'"));
    }
}

TEST(Samples, backupsThatOverlapAddEachCallOnce) {
    const tools_tests::Directory directory;
    const std::string files = "'" + (samples / "android-calls-xml").string() + "'/*.xml";
    const int different = numberOf("grep -oh 'number=\"[^\"]*\" duration=\"[^\"]*\" date=\"[^\"]*\" type' " + files +
                                   " | sort -u | wc -l");
    ASSERT_EQ(directory.run("import " + files).status, 0);
    EXPECT_EQ(static_cast<int>(directory.run("list").lines().size()), different);
    EXPECT_THAT(directory.run("import " + files).output, HasSubstr("0 calls imported.\n37 present already.\n"));
}

TEST(Samples, pagesOfGoogleVoiceGiveWhatGrepCounts) {
    const tools_tests::Directory directory;
    const std::string pages = "'" + (samples / "google-voice-takeout").string() + "'/*.html";
    const auto pagesWith = [&](const std::string& text) {
        return numberOf("grep -l '" + text + "' " + pages + " | wc -l");
    };
    ASSERT_EQ(directory.run("import " + pages).output, "8 calls imported.\n");
    const auto callsOf = [&](const std::string& condition) {
        return numberOf("sqlite3 '" + directory.file("data/calls.db").string() +
                        "' \"select count(*) from call where " + condition + '"');
    };
    EXPECT_EQ(callsOf("1"), pagesWith("haudio"));
    EXPECT_EQ(callsOf("flags & 1"), pagesWith("voice#placed"));
    EXPECT_EQ(callsOf("not flags & 1 and duration > 0"), pagesWith("voice#received\\|voice#recorded"));
    EXPECT_EQ(callsOf("not flags & 1 and duration = 0"), pagesWith("voice#missed\\|voice#voicemail"));
    EXPECT_EQ(callsOf("address = ''"), pagesWith("href=\"tel:\""));
    EXPECT_EQ(callsOf("duration = 771"), pagesWith("PT12M51S"));
    EXPECT_EQ(callsOf("duration = 1786"), pagesWith("PT29M46S"));
    EXPECT_EQ(callsOf("extra like '%coming home.%'"), 1);
    EXPECT_EQ(callsOf("date = 1400295267"), 1);
    EXPECT_EQ(directory.run("import " + pages).output, "0 calls imported.\n8 present already.\n");
}

TEST(Samples, eachIsImportedByTheProgramWithoutAWordAmiss) {
    const tools_tests::Directory directory;
    const std::string all = "'" + samples.string() + "'/android-calls-xml/*.xml '" + samples.string() +
                            "'/android-contacts2-plaso/contacts2.db '" + samples.string() +
                            "'/google-voice-takeout/*.html";
    const auto imported = directory.run("import " + all);
    EXPECT_EQ(imported.status, 0);
    EXPECT_EQ(imported.errors, "");
    EXPECT_EQ(directory.run("import --dry-run " + all).lines().back(),
              "0 calls would be imported. Nothing was written.");
}

}  // namespace
}  // namespace import_tests
