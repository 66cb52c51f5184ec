// A companion opened on a data directory of its own, and the messages of the plug-in as functions.
#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

#include "desktop/quorvel/services/companion.h"
#include "desktop/quorvel/services/data_service.h"
#include "desktop/quorvel/services/settings_service.h"
#include "desktop/quorvel/settings/settings_store.h"
#include "desktop/uikit/text.h"
#include "platform/foundation.h"

namespace quorvel::test {

constexpr std::int64_t all = 1;
constexpr std::int64_t dialled = 2;
constexpr std::int64_t received = 3;
constexpr std::int64_t missed = 4;

/// Noon of 15 June 2024 in UTC; days of the tests are a whole day apart.
constexpr std::int64_t noon = 1718452800;
constexpr std::int64_t day = 86400;

struct Call {
    const char* address;
    std::int64_t date;
    int duration = 30;
    int flags = 4;
    int contact = store::noContact;
    const char* name = "";
};

class CompanionTest : public testing::Test {
  protected:
    CompanionTest();
    ~CompanionTest() override;

    const std::filesystem::path& folder() const { return folder_; }
    DataDirectory directory() const;
    void setSetting(const char* key, const char* value);
    /// Writes the calls in this order and answers their row identifiers.
    static std::vector<int> add(const std::vector<Call>& calls);

    static DataService& service() { return *DataService::shared(); }
    static objc::Object object() { return objc::Object{service().self}; }
    /// The getter of that name.
    template <objc::Name name, class R>
    static R get() {
        return objc::send<name, R>(object());
    }
    static NSMutableArray list(std::int64_t filter);
    static std::int64_t count(std::int64_t filter);
    static std::int64_t duration(std::int64_t filter);
    static void read(std::int64_t count, std::int64_t offset, std::int64_t filter) {
        objc::send<"readCallsFromDB:offset:flag:">(object(), count, offset, filter);
    }
    static CallEntry& entry(NSArray list, unsigned long index) {
        auto* found = objc::peerOf<CallEntry>(list.objectAtIndex(index));
        if (!found) throw std::out_of_range("the list has no entry " + std::to_string(index));
        return *found;
    }
    static std::vector<int> rowIds(NSArray list);

  private:
    objc::AutoreleasePool pool_;
    std::filesystem::path folder_;
};

inline NSString ns(const char* literal) { return objc::as<NSString>(uikit::nsString(literal)); }

}  // namespace quorvel::test
