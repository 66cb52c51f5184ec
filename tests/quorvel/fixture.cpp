// The fixture.
#include "fixture.h"

#include <cstdlib>

namespace quorvel::test {

CompanionTest::CompanionTest() {
    setenv("TZ", "UTC", 1);
    tzset();
    setenv("LC_ALL", "en_US.UTF-8", 1);
    std::string name = (std::filesystem::temp_directory_path() / "companion-XXXXXX").string();
    if (!mkdtemp(name.data())) throw std::runtime_error("no folder for the test");
    folder_ = name;
    if (const auto trouble = openCompanion(directory(), TEXTS_FOLDER)) throw std::runtime_error(*trouble);
    SettingsService::shared()->setIsNeedToLoadData(false);
    SettingsService::shared()->setIsCallSettingsChanged(false);
}

CompanionTest::~CompanionTest() {
    closeCompanion();
    std::error_code ignored;
    std::filesystem::remove_all(folder_, ignored);
}

DataDirectory CompanionTest::directory() const {
    auto opened = DataDirectory::open(folder_);
    if (auto* trouble = std::get_if<std::string>(&opened)) throw std::runtime_error(*trouble);
    return std::get<DataDirectory>(std::move(opened));
}

void CompanionTest::setSetting(const char* key, const char* value) {
    SettingsStore stored(directory().settings());
    EXPECT_EQ(stored.load(), std::nullopt);
    EXPECT_EQ(stored.set(key, value), std::nullopt);
    SettingsService::shared()->reloadSettings();
}

std::vector<int> CompanionTest::add(const std::vector<Call>& calls) {
    std::vector<int> rowIds;
    for (const auto& call : calls) {
        store::NewCall written;
        written.address = call.address;
        written.date = call.date;
        written.duration = call.duration;
        written.flags = call.flags;
        written.contactId = call.contact;
        written.name = call.name;
        const auto stored = callStore()->append(written);
        if (!stored) throw std::runtime_error(stored.error().message);
        rowIds.push_back(static_cast<int>(*stored));
    }
    return rowIds;
}

NSMutableArray CompanionTest::list(std::int64_t filter) {
    switch (filter) {
        case dialled:
            return get<"dldCallList", NSMutableArray>();
        case received:
            return get<"rcdCallList", NSMutableArray>();
        case missed:
            return get<"msdCallList", NSMutableArray>();
        default:
            return get<"callList", NSMutableArray>();
    }
}

std::int64_t CompanionTest::count(std::int64_t filter) {
    switch (filter) {
        case dialled:
            return get<"dldCallsCount", std::int64_t>();
        case received:
            return get<"rcdCallsCount", std::int64_t>();
        case missed:
            return get<"msdCallsCount", std::int64_t>();
        default:
            return get<"allCallsCount", std::int64_t>();
    }
}

std::int64_t CompanionTest::duration(std::int64_t filter) {
    switch (filter) {
        case dialled:
            return get<"dldCallsDuration", std::int64_t>();
        case received:
            return get<"rcdCallsDuration", std::int64_t>();
        case missed:
            return get<"msdCallsDuration", std::int64_t>();
        default:
            return get<"allCallsDuration", std::int64_t>();
    }
}

std::vector<int> CompanionTest::rowIds(NSArray list) {
    std::vector<int> found;
    for (unsigned long i = 0; i < list.count(); ++i) found.push_back(entry(list, i).rowId);
    return found;
}

}  // namespace quorvel::test
