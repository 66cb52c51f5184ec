// A handset at its first use: made-up people and their calls.
#include "desktop/phone/samples.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "desktop/addressbook/book.h"
#include "desktop/addressbook/call_links.h"
#include "desktop/phone/first_start.h"
#include "desktop/quorvel/generate/sample_contacts.h"

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

TEST_F(SamplesTest, aLogThatEverHadACallStaysAsItIs) {
    auto log = openLog();
    quorvel::store::NewCall call;
    call.date = noon;
    ASSERT_TRUE(log.append(call).ok());
    ASSERT_TRUE(log.deleteAll(quorvel::store::Filter::all).ok());
    EXPECT_EQ(fillWithSamples(log, noon), std::nullopt);
    EXPECT_TRUE(book().all()->empty());
    EXPECT_TRUE(newest(log, 10).empty());
}

/// The first start, interrupted in each of its steps and then gone on with.
class FirstStartTest : public SamplesTest {
  protected:
    quorvel::DataDirectory directory() const {
        return std::get<quorvel::DataDirectory>(quorvel::DataDirectory::open(folder_));
    }
    void finish() {
        auto log = openLog();
        EXPECT_EQ(finishFirstStart(directory(), log, noon), std::nullopt);
    }
    void expectState(std::size_t people, std::size_t calls) {
        auto log = openLog();
        EXPECT_EQ(book().all()->size(), people);
        EXPECT_EQ(newest(log, 1000).size(), calls);
        EXPECT_FALSE(std::filesystem::exists(folder_ / "first-start"));
        EXPECT_FALSE(std::filesystem::exists(folder_ / "first-start-filling"));
    }
};

TEST_F(FirstStartTest, fillsBothOnce) {
    EXPECT_EQ(noteFirstStart(directory()), std::nullopt);
    finish();
    expectState(13, 400);
    EXPECT_EQ(noteFirstStart(directory()), std::nullopt);
    finish();
    expectState(13, 400);
}

TEST_F(FirstStartTest, killedWhenTheLogWasMadeIsGoneOnWith) {
    EXPECT_EQ(noteFirstStart(directory()), std::nullopt);
    openLog();
    EXPECT_EQ(noteFirstStart(directory()), std::nullopt);
    finish();
    expectState(13, 400);
}

TEST_F(FirstStartTest, killedWhenTheContactsWereWrittenIsGoneOnWith) {
    EXPECT_EQ(noteFirstStart(directory()), std::nullopt);
    openLog();
    std::filesystem::rename(folder_ / "first-start", folder_ / "first-start-filling");
    ASSERT_TRUE(quorvel::SampleContacts::addTo(book()));
    EXPECT_EQ(noteFirstStart(directory()), std::nullopt);
    finish();
    expectState(13, 400);
}

TEST_F(FirstStartTest, killedWhenTheCallsWereWrittenAddsNothingTwice) {
    EXPECT_EQ(noteFirstStart(directory()), std::nullopt);
    finish();
    std::ofstream(folder_ / "first-start-filling");
    finish();
    expectState(13, 400);
}

TEST_F(FirstStartTest, aBookWithContactsAndItsLogStayAsTheyAre) {
    contacts::Contact somebody;
    somebody.setText(contacts::Property::firstName, "Zoe");
    ASSERT_TRUE(book().write({somebody}));
    EXPECT_EQ(noteFirstStart(directory()), std::nullopt);
    finish();
    expectState(1, 0);
}

TEST_F(FirstStartTest, aHandsetThatWasUsedBeforeIsNotFilled) {
    openLog();
    EXPECT_EQ(noteFirstStart(directory()), std::nullopt);
    finish();
    expectState(0, 0);
}

}  // namespace
}  // namespace phone
