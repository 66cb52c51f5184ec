// What was deleted is kept for thirty days and comes back as it was.
#include <gtest/gtest.h>
#include <rapidcheck.h>
#include <rapidcheck/gtest.h>
#include <sqlite3.h>

#include "log_model.h"

namespace quorvel::store {
namespace {

constexpr std::int64_t today = 1'800'000'000;
constexpr std::int64_t aDay = 86400;

class DeletedCalls : public ::testing::Test {
  protected:
    std::int64_t addCall(const char* address = "5551234", std::int64_t date = 1'700'000'000) {
        NewCall call;
        call.address = address;
        call.date = date;
        return valueOf(store_.append(call));
    }
    std::int64_t remove(std::int64_t rowId) { return valueOf(store_.deleteCalls({&rowId, 1})); }
    std::int64_t bringBack(std::int64_t rowId) { return valueOf(store_.undelete({&rowId, 1})); }
    std::vector<std::int64_t> kept(std::int64_t pageSize = noLimit) const {
        std::vector<std::int64_t> rowIds;
        Cursor cursor = Cursor::top();
        for (bool atEnd = false; !atEnd;) {
            const DeletedPage page = valueOf(store_.deletedCalls(cursor, pageSize));
            for (const DeletedCall& deleted : page.rows) rowIds.push_back(deleted.call.rowId);
            cursor = page.next;
            atEnd = page.atEnd;
        }
        return rowIds;
    }
    std::int64_t callsIn(Filter filter) const { return valueOf(store_.totals(filter, {})).calls; }
    /// Rows of the table of what is kept, whether they can still be had or not.
    std::int64_t rowsOfTheTable() const {
        sqlite3* database = nullptr;
        sqlite3_stmt* count = nullptr;
        EXPECT_EQ(sqlite3_open(folder_.file().c_str(), &database), SQLITE_OK);
        EXPECT_EQ(sqlite3_prepare_v2(database, "select count(*) from deleted", -1, &count, nullptr), SQLITE_OK);
        EXPECT_EQ(sqlite3_step(count), SQLITE_ROW);
        const std::int64_t rows = sqlite3_column_int64(count, 0);
        sqlite3_finalize(count);
        sqlite3_close(database);
        return rows;
    }
    static OpenOptions atItsTime(std::int64_t& now) {
        OpenOptions options;
        options.clock = [&now] { return now; };
        return options;
    }

    std::int64_t now_ = today;
    Folder folder_;
    CallStore store_ = openStore(folder_.file(), atItsTime(now_));
};

TEST_F(DeletedCalls, aCallComesBackWithEveryFieldAsItWas) {
    NewCall call;
    call.address = "+4930123";
    call.date = 1'700'000'000;
    call.duration = 61;
    call.flags = 0x40000015;
    call.contactId = 7;
    call.name = "Anna Größe";
    call.label = "home";
    call.location = "Berlin";
    call.faceTimeDataSize = 4711;
    const std::int64_t rowId = valueOf(store_.append(call));
    const std::string whole =
        "select ROWID, address, date, duration, flags, face_time_data_size, location, id, datetime from call";
    const auto before = store_.query(whole);
    const CallRecord record = *valueOf(store_.call(rowId));
    EXPECT_EQ(remove(rowId), 1);
    EXPECT_EQ(callsIn(Filter::all), 0);
    const DeletedPage kept = valueOf(store_.deletedCalls(Cursor::top(), 5));
    ASSERT_EQ(kept.rows.size(), 1U);
    EXPECT_EQ(kept.rows[0].deletedAt, today);
    EXPECT_EQ(kept.rows[0].call.name, "Anna Größe");
    EXPECT_EQ(kept.rows[0].call.faceTimeDataSize, 4711);
    EXPECT_EQ(bringBack(rowId), 1);
    EXPECT_EQ(store_.query(whole), before);
    EXPECT_EQ(valueOf(store_.call(rowId)), record);
    EXPECT_TRUE(this->kept().empty());
    EXPECT_EQ(valueOf(store_.verify()), std::vector<std::string>());
}

TEST_F(DeletedCalls, theyAreListedTheLastDeletedFirstAndPagedWithinASecond) {
    for (int at = 0; at < 7; ++at) addCall();
    remove(2);
    valueOf(store_.deleteCalls(std::vector<std::int64_t>{1, 4, 6}));
    now_ += 5;
    remove(3);
    for (const std::int64_t pageSize : {std::int64_t{1}, std::int64_t{2}, std::int64_t{4}, noLimit})
        EXPECT_EQ(kept(pageSize), (std::vector<std::int64_t>{3, 6, 4, 2, 1})) << pageSize;
}

TEST_F(DeletedCalls, afterThirtyDaysTheyAreGoneAndTheNextWriteClearsThem) {
    addCall();
    addCall();
    remove(1);
    now_ += 30 * aDay - 1;
    EXPECT_EQ(kept(), std::vector<std::int64_t>{1});
    now_ += 1;
    EXPECT_TRUE(kept().empty());
    EXPECT_EQ(bringBack(1), 0);
    EXPECT_EQ(valueOf(store_.undeleteAll()), 0);
    EXPECT_EQ(rowsOfTheTable(), 1);
    addCall();
    EXPECT_EQ(rowsOfTheTable(), 0);
}

TEST_F(DeletedCalls, theyComeBackUntilTheLastSecond) {
    addCall();
    remove(1);
    now_ += 30 * aDay - 1;
    EXPECT_EQ(bringBack(1), 1);
    EXPECT_EQ(callsIn(Filter::all), 1);
}

TEST_F(DeletedCalls, aSingleWriteClearsAThousandAndTheWritesAfterItTheRest) {
    ImportSession session = valueOf(store_.beginImport());
    for (int at = 0; at < 1500; ++at) valueOf(session.add({}));
    valueOf(session.finish());
    EXPECT_EQ(valueOf(store_.deleteAll(Filter::all)), 1500);
    now_ += 31 * aDay;
    EXPECT_TRUE(kept().empty());
    addCall();
    EXPECT_EQ(rowsOfTheTable(), 500);
    addCall();
    EXPECT_EQ(rowsOfTheTable(), 0);
}

TEST_F(DeletedCalls, identifiersThatAreNotKeptArePassedOverAndOnesTwiceCountOnce) {
    addCall();
    addCall();
    remove(1);
    EXPECT_EQ(valueOf(store_.undelete(std::vector<std::int64_t>{99, 1, 2, 1, -4})), 1);
    EXPECT_EQ(callsIn(Filter::all), 2);
}

TEST_F(DeletedCalls, aNewCallIsNeverGivenTheIdentifierOfADeletedOne) {
    addCall();
    remove(addCall());
    EXPECT_EQ(addCall(), 3);
    valueOf(store_.deleteAll(Filter::all));
    EXPECT_EQ(addCall(), 4);
    EXPECT_EQ(valueOf(store_.undeleteAll()), 3);
    EXPECT_EQ(callsIn(Filter::all), 4);
}

TEST_F(DeletedCalls, aNameGivenSinceStaysAndOneThatWasForgottenComesBack) {
    addCall("1");
    addCall("1");
    valueOf(store_.link("1", 5, "Old", "home"));
    remove(1);
    valueOf(store_.link("1", 5, "New", "work"));
    EXPECT_EQ(bringBack(1), 1);
    EXPECT_EQ(valueOf(store_.call(1))->name, "New");
    valueOf(store_.deleteAll(Filter::all));
    valueOf(store_.undeleteAll());
    EXPECT_EQ(valueOf(store_.call(1))->name, "New");
    EXPECT_EQ(valueOf(store_.call(2))->label, "work");
    EXPECT_EQ(valueOf(store_.search(Filter::all, "new", {}, Cursor::top(), 9)).rows.size(), 2U);
}

TEST_F(DeletedCalls, aCallThatArrivesDuringTheQuestionSurvivesEveryDeletion) {
    addCall("1", 1'700'000'000);
    addCall("1", 1'700'000'100);
    const std::int64_t asked = valueOf(store_.newestRowId());
    const CallRecord run = valueOf(store_.page(Filter::all, {false, true}, Cursor::top(), 1)).rows[0];
    // Between the two, and so within the run that the user saw.
    const std::int64_t arrived = addCall("1", 1'700'000'050);
    EXPECT_EQ(valueOf(store_.deleteRow(Filter::all, {false, true}, run, asked)), 2);
    valueOf(store_.undeleteAll());
    EXPECT_EQ(valueOf(store_.deleteDay(Filter::all, run.day, asked)), 2);
    valueOf(store_.undeleteAll());
    EXPECT_EQ(valueOf(store_.deleteHistory(Filter::all, noContact, "1", {}, asked)), 2);
    valueOf(store_.undeleteAll());
    EXPECT_EQ(valueOf(store_.deleteHistory(Filter::missed, Correspondent{noContact, {"1"}}, asked)), 2);
    valueOf(store_.undeleteAll());
    EXPECT_EQ(valueOf(store_.deleteAll(Filter::missed, asked)), 2);
    valueOf(store_.undeleteAll());
    EXPECT_EQ(valueOf(store_.deleteAll(Filter::all, asked)), 2);
    EXPECT_TRUE(valueOf(store_.call(arrived)).has_value());
    EXPECT_EQ(callsIn(Filter::all), 1);
}

TEST_F(DeletedCalls, aStoreThatOnlyReadsListsThemAndBringsNoneBack) {
    addCall();
    remove(1);
    OpenOptions options = atItsTime(now_);
    options.access = Access::readOnly;
    CallStore reader = openStore(folder_.file(), options);
    EXPECT_EQ(valueOf(reader.deletedCalls(Cursor::top(), 5)).rows.size(), 1U);
    EXPECT_EQ(reader.undeleteAll().error().kind, ErrorKind::readOnly);
}

RC_GTEST_PROP(DeletedCallsModel, whateverIsDeletedAndBroughtBackTheLogIsTheVectorOfTheRest, (unsigned seed)) {
    Folder folder;
    CallStore store = openStore(folder.file());
    CallMaker maker(seed);
    std::map<std::int64_t, NewCall> calls;
    ImportSession session = valueOf(store.beginImport());
    for (int at = 0; at < 30; ++at) {
        NewCall call = maker.call();
        // One name a party, so that no order of naming shows.
        call.name = "Name of " + call.address;
        call.label = "home";
        calls.emplace(valueOf(session.add(call)), call);
    }
    valueOf(session.finish());
    std::map<std::int64_t, NewCall> gone;
    const auto some = [&](const std::map<std::int64_t, NewCall>& of) {
        std::vector<std::int64_t> rowIds;
        for (const auto& [rowId, call] : of) {
            if (maker.pick(3) == 0) rowIds.push_back(rowId);
        }
        return rowIds;
    };
    for (int step = 0; step < 6; ++step) {
        const bool back = step % 2 == 1;
        auto& from = back ? gone : calls;
        auto& to = back ? calls : gone;
        const auto rowIds = some(from);
        const auto moved = back ? store.undelete(rowIds) : store.deleteCalls(rowIds);
        RC_ASSERT(valueOf(moved) == static_cast<std::int64_t>(rowIds.size()));
        for (const std::int64_t rowId : rowIds) to.insert(from.extract(rowId));
        LogModel model;
        for (const auto& [rowId, call] : calls) model.add(rowId, call);
        expectSame(store, model);
        RC_ASSERT_FALSE(::testing::Test::HasFailure());
    }
    RC_ASSERT(valueOf(store.undeleteAll()) == static_cast<std::int64_t>(gone.size()));
}

}  // namespace
}  // namespace quorvel::store
