// A handset at its first use: made-up people and their calls.
#include "desktop/phone/samples.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "desktop/addressbook/book.h"
#include "desktop/addressbook/call_links.h"

namespace phone {
namespace {

constexpr std::int64_t noon = 1718452800;

class SamplesTest : public testing::Test {
  protected:
    SamplesTest() {
        std::string name = std::filesystem::temp_directory_path() / "samples-XXXXXX";
        if (!mkdtemp(name.data())) throw std::runtime_error("no temporary directory");
        folder_ = name;
        if (const auto trouble = book().open(folder_ / "contacts")) throw std::runtime_error(*trouble);
    }
    ~SamplesTest() override {
        book().close();
        std::error_code ignored;
        std::filesystem::remove_all(folder_, ignored);
    }
    static contacts::Book& book() { return contacts::Book::shared(); }
    quorvel::store::CallStore openLog() const {
        auto log = quorvel::store::CallStore::open(folder_ / "calls.db");
        if (!log) throw std::runtime_error(log.error().message);
        return std::move(*log);
    }
    static std::vector<quorvel::store::CallRecord> newest(quorvel::store::CallStore& log, std::int64_t count) {
        const auto page = log.page(quorvel::store::Filter::all, {}, quorvel::store::Cursor::top(), count);
        if (!page) throw std::runtime_error(page.error().message);
        return (*page).rows;
    }

    std::filesystem::path folder_;
};

TEST_F(SamplesTest, everyCallOfAPersonBelongsToTheContactOfThatName) {
    auto log = openLog();
    EXPECT_EQ(fillWithSamples(log, noon), std::nullopt);
    EXPECT_EQ(book().all()->size(), 13u);
    const auto calls = newest(log, 1000);
    EXPECT_EQ(calls.size(), 400u);
    std::size_t ofPeople = 0;
    for (const auto& call : calls) {
        if (call.contactId < 1) continue;
        ++ofPeople;
        const auto contact = book().contact(call.contactId);
        ASSERT_TRUE(contact) << call.name;
        EXPECT_EQ(contacts::compositeName(*contact), call.name);
        const auto caller = contacts::callerOf(call.address);
        ASSERT_TRUE(caller) << call.address;
        EXPECT_EQ(caller->record, call.contactId);
    }
    EXPECT_GT(ofPeople, 200u);
    EXPECT_LT(calls.front().date, noon);
}

TEST_F(SamplesTest, aBookWithContactsAndItsLogStayAsTheyAre) {
    contacts::Contact somebody;
    somebody.setText(contacts::Property::firstName, "Zoe");
    ASSERT_TRUE(book().write({somebody}));
    auto log = openLog();
    EXPECT_EQ(fillWithSamples(log, noon), std::nullopt);
    EXPECT_EQ(book().all()->size(), 1u);
    EXPECT_TRUE(newest(log, 10).empty());
}

}  // namespace
}  // namespace phone
