// Calls held in memory are those of the log, for as long as it stays as it is.
#include <sqlite3.h>

#include "desktop/quorvel/store/packed_log.h"
#include "log_model.h"

namespace quorvel::store {
namespace {

class PackedLogTest : public testing::Test {
  protected:
    PackedLogTest() {
        CallMaker maker(3);
        ImportSession session = valueOf(store_.beginImport());
        for (int at = 0; at < 200; ++at) valueOf(session.add(maker.call()));
        valueOf(session.finish());
    }

    Connection connection() {
        return Connection(folder_.file(), Connection::Use::read, std::chrono::milliseconds(100), {});
    }
    static std::vector<std::int64_t> rowIds(const PackedLog& log, Filter filter) {
        std::vector<std::int64_t> found;
        log.walk(
            filter, [](std::int64_t) { return true; },
            [&](const CallRow& row, std::string_view) {
                found.push_back(row.rowId);
                return true;
            });
        return found;
    }
    /// Three times: from the file, from the log that is taken into memory, and from memory.
    static std::vector<CallRecord> found(const CallStore& store, std::string_view term) {
        std::vector<CallRecord> calls[3];
        for (auto& each : calls)
            valueOf(store.eachFound(Filter::all, term, {}, [&](const CallRecord& call) { each.push_back(call); }));
        EXPECT_EQ(calls[1], calls[0]);
        EXPECT_EQ(calls[2], calls[0]);
        return calls[0];
    }
    void change(const char* text) {
        sqlite3* database = nullptr;
        sqlite3_open(folder_.file().c_str(), &database);
        EXPECT_EQ(sqlite3_exec(database, text, nullptr, nullptr, nullptr), SQLITE_OK) << sqlite3_errmsg(database);
        sqlite3_close(database);
    }

    Folder folder_;
    CallStore store_ = openStore(folder_.file());
};

TEST_F(PackedLogTest, holdsEachFiltersCallsNewestFirstWithTheirFields) {
    auto reading = connection();
    PackedLog log;
    log.logIs(1);
    ASSERT_TRUE(log.hold(reading, 200));
    for (const Filter filter : allFilters) {
        std::vector<std::int64_t> expected;
        for (const CallRecord& call : valueOf(store_.page(filter, {}, Cursor::top(), noLimit)).rows)
            expected.push_back(call.rowId);
        EXPECT_EQ(rowIds(log, filter), expected);
    }
    const auto newest = valueOf(store_.page(Filter::all, {}, Cursor::top(), 200)).rows;
    std::size_t at = 0;
    log.walk(
        Filter::all, [](std::int64_t) { return true; },
        [&](const CallRow& row, std::string_view location) {
            const CallRecord& call = newest[at++];
            EXPECT_EQ(row.date, call.date);
            EXPECT_EQ(row.duration, call.duration);
            EXPECT_EQ(row.flags, call.flags);
            EXPECT_EQ(row.contact, call.contactId);
            EXPECT_EQ(dayText(row.day), call.day);
            EXPECT_EQ(location, call.location);
            return at < 100;
        });
    EXPECT_EQ(at, 100U) << "the walk ends when it is told to";
}

TEST_F(PackedLogTest, isForgottenWhenTheLogHasAnotherVersion) {
    auto reading = connection();
    PackedLog log;
    EXPECT_FALSE(log.hold(reading, 200)) << "a log whose version nobody knows";
    log.logIs(1);
    EXPECT_FALSE(log.isWantedAgain());
    EXPECT_TRUE(log.isWantedAgain());
    ASSERT_TRUE(log.hold(reading, 200));
    log.logIs(1);
    EXPECT_TRUE(log.isHeld());
    log.logIs(2);
    EXPECT_FALSE(log.isWantedAgain());
    EXPECT_FALSE(log.isHeld());
    EXPECT_TRUE(rowIds(log, Filter::all).empty());
}

TEST_F(PackedLogTest, aLogWithANumberThatDoesNotFitIsReadFromTheFile) {
    change("update call set date = 5000000000 where ROWID = 7");
    auto reading = connection();
    PackedLog log;
    log.logIs(1);
    EXPECT_FALSE(log.hold(reading, 200));
    EXPECT_FALSE(log.hold(reading, 200)) << "and is not tried again";
    EXPECT_TRUE(rowIds(log, Filter::all).empty());
    const auto all = found(store_, "5");
    EXPECT_EQ(all, valueOf(store_.search(Filter::all, "5", {}, Cursor::top(), noLimit)).rows);
}

TEST_F(PackedLogTest, whatAnotherStoreAndAStrangerChangeIsFoundAtOnce) {
    const auto before = found(store_, "5");
    ASSERT_GT(before.size(), 100U);
    CallStore other = openStore(folder_.file());
    NewCall call;
    call.address = "5555";
    call.date = 1'800'000'000;
    const std::int64_t rowId = valueOf(other.append(call));
    auto after = found(store_, "5");
    ASSERT_EQ(after.size(), before.size() + 1);
    EXPECT_EQ(after.front().rowId, rowId);
    valueOf(store_.deleteCalls(std::vector{rowId}));
    EXPECT_EQ(found(store_, "5"), before);
    change(("delete from call where ROWID = " + std::to_string(before.front().rowId)).c_str());
    EXPECT_EQ(found(store_, "5"), std::vector<CallRecord>(before.begin() + 1, before.end()));
}

}  // namespace
}  // namespace quorvel::store
