// Rows and numbers that no version of this program writes: every operation ends, with an error or a sound answer, the
// check finds them, and mending saves the calls that can be.
#include <gtest/gtest.h>

#include "desktop/quorvel/store/backup.h"
#include "desktop/quorvel/store/mend.h"
#include "log_model.h"
#include "raw_file.h"

namespace quorvel::store {
namespace {

constexpr int calls = 400;

/// Everything that reads, and then everything that writes; what is answered does not matter.
void useAll(const std::filesystem::path& path) {
    for (const Access access : {Access::readOnly, Access::readWrite}) {
        auto opened = CallStore::open(path, {.access = access});
        if (!opened) continue;
        CallStore store = *std::move(opened);
        for (const Filter filter : allFilters) {
            for (const Mode mode : allModes) {
                (void)store.page(filter, mode, Cursor::top(), noLimit);
                (void)store.pageAt(filter, mode, 100, 20);
                (void)store.totals(filter, mode);
            }
            for (const std::int64_t limit : {noLimit, std::int64_t{20}, std::int64_t{-1}}) {
                (void)store.search(filter, "5", {}, Cursor::top(), limit);
                (void)store.search(filter, "a", "2023-11-15", Cursor::top(), limit);
                (void)store.history(filter, {2, {"5551234"}}, Cursor::top(), limit);
            }
            for (int again = 0; again < 3; ++again) (void)store.eachFound(filter, "5", {}, [](const CallRecord&) {});
            (void)store.dayTotals(filter, "2023-11-15");
        }
        (void)store.addresses();
        (void)store.verify();
        (void)store.append({});
        if (auto session = store.beginImport()) {
            (void)session->beginSource();
            (void)session->claim({});
            (void)session->add({});
            (void)session->finish();
        }
        (void)store.deleteCalls(std::vector<std::int64_t>{1, 2, 3});
        (void)store.deleteDay(Filter::all, "2023-11-15");
        (void)store.undeleteAll();
        (void)store.link("5551234", 7, "Seven", "");
        (void)store.deleteAll(Filter::dialled);
    }
}

std::vector<std::string> findingsOf(const std::filesystem::path& path) {
    const auto store = CallStore::open(path, {.access = Access::readOnly});
    if (!store) return {store.error().message};
    return valueOf(store->verify());
}

std::size_t callsIn(const std::filesystem::path& path) {
    return valueOf(openStore(path).page(Filter::all, {}, Cursor::top(), noLimit)).rows.size();
}

struct Change {
    const char* name;
    const char* text;
    /// Calls that are taken out when the log is put right.
    int takenOut = 0;
    int deletedTakenOut = 0;
};

/// The index of dates is replaced by one whose entries say something else than the table.
constexpr const char* otherIndex =
    "create table other as select * from call; update other set kind = 9, party = -3 where rowid % 7 = 0; "
    "create index other_by_date on other (date, ROWID, kind, duration, flags, party, id, day, location); "
    "pragma writable_schema = on; "
    "update sqlite_schema set rootpage = (select rootpage from sqlite_schema where name = 'other_by_date') "
    "where name = 'call_by_date'; "
    "delete from sqlite_schema where tbl_name = 'other'; pragma writable_schema = reset";

const Change changes[] = {
    {"aNegativeParty",
     "update call set party = -100000000 where party = 2; update party set party = -100000000 where party = 2"},
    {"aHugeParty",
     "update call set party = 9223372036854775807 where party = 2; update party set party = 9223372036854775807 where "
     "party = 2"},
    {"aPartyOfAllTheBits",
     "update call set party = 2147483647 where party = 2; update party set party = 2147483647 where party = 2"},
    {"aCallWithoutAParty", "update call set party = 0 where ROWID % 5 = 0"},
    {"aKindThatThereIsNot", "update call set kind = 9 where ROWID = 17"},
    {"aKindBelowAll", "update call set kind = -9223372036854775808 where ROWID = 17"},
    {"aDayThatThereIsNot", "update call set day = 9223372036854775807 where ROWID = 17"},
    {"anIndexThatContradictsItsTable", otherIndex},
    {"aTotalThatIsHuge", "update total set calls = 9223372036854775807, duration = 9223372036854775807"},
    {"aTotalThatIsNegative", "update total set calls = -1, runs = -9223372036854775808"},
    {"partiesWithHugeNumbersOfCalls", "update party set calls = 9223372036854775807"},
    {"partiesWithoutCalls", "update party set calls = 0"},
    {"spansThatAreHuge", "update span set dialled = 9223372036854775807, all_runs = 9223372036854775807"},
    {"spansOutsideOfTime", "update span set span = 9223372036854775807 where span = (select min(span) from span)"},
    {"daysOutsideOfTime", "update day set day = 9223372036854775807 where day = (select max(day) from day)"},
    {"daysThatAreHuge",
     "update day set dialled = 9223372036854775807, received = 9223372036854775807, received_duration = "
     "9223372036854775807, first = -9223372036854775808, last = 9223372036854775807"},
    {"aRevisionAtItsEnd", "update state set revision = 9223372036854775807, party_revision = 'x'"},
    {"callsWhoseNumbersAreUsedUp", "update sqlite_sequence set seq = 9223372036854775807 where name = 'call'"},
    {"partiesWhoseNumbersAreUsedUp", "update sqlite_sequence set seq = 9223372036854775807 where name = 'party'"},
    {"aNumberThatIsNone", "update sqlite_sequence set seq = 'many' where name = 'call'"},
    {"aDateBeforeTheFirst", "update call set date = -5 where ROWID = 17", 1},
    {"aDateBehindTheLast", "update call set date = 9223372036854775807 where ROWID = 17", 1},
    {"aDateInWords", "update call set date = 'yesterday' where ROWID = 17", 1},
    {"aDurationBelowZero", "update call set duration = -9223372036854775808 where ROWID = 17", 1},
    {"aDurationThatIsHuge", "update call set duration = 9223372036854775807 where ROWID = 17", 1},
    {"flagsThatAreTooMany", "update call set flags = 1 << 40 where ROWID = 17", 1},
    {"aContactThatIsTooLarge", "update call set id = 1 << 40 where ROWID = 17", 1},
    {"aNumberThatIsNoText", "update call set address = x'ff00fe' where ROWID = 17", 1},
    {"aNumberThatIsNotUtf8", "update call set address = cast(x'ff41fe' as text) where ROWID = 17", 1},
    {"aPlaceThatIsNoText",
     "update call set location = 5.25 where ROWID = 17; update call set location = x'00' where "
     "ROWID = 17",
     1},
    {"aRowBelowTheFirst", "update call set ROWID = -9223372036854775808 where ROWID = 17"},
    {"aRowBehindTheLast", "update call set ROWID = 4294967297 where ROWID = 17"},
    {"aDeletedCallThatCannotBe", "update deleted set date = -1, flags = 1 << 40", 0, 5},
    {"aDeletedCallOfNoDay", "update deleted set day = 9223372036854775807, moment = 9223372036854775807"},
    {"anIndexOfAnotherProgram", "create unique index by_other on call (address, datetime, date, id, party, ROWID)"},
    {"aNameThatIsNoText", "update party set name = x'ff00'"},
};

class DamagedLog : public testing::TestWithParam<Change> {
  protected:
    void SetUp() override {
        CallStore store = openStore(folder_.file());
        ImportSession session = valueOf(store.beginImport());
        CallMaker maker(3);
        for (int at = 0; at < calls + 5; ++at) valueOf(session.add(maker.call()));
        valueOf(session.finish());
        valueOf(store.deleteCalls(std::vector<std::int64_t>{1, 2, 3, 4, 5}));
    }
    /// The change as a program makes it that knows the log well enough to leave no mark.
    void change() {
        runOn(folder_.file(), GetParam().text);
        if (testing::Test::HasFailure()) return;
        runOn(folder_.file(), "update state set touched = 0");
    }

    static std::size_t callsLeft() { return static_cast<std::size_t>(calls - GetParam().takenOut); }

    Folder folder_;
};

TEST_P(DamagedLog, endsNoOperation) {
    change();
    useAll(folder_.file());
}

TEST_P(DamagedLog, endsNoStartWhenTheChangeLeftItsMark) {
    runOn(folder_.file(), GetParam().text);
    runOn(folder_.file(), "update state set touched = 1");
    useAll(folder_.file());
}

TEST_P(DamagedLog, isFoundByTheCheckAndPutRight) {
    change();
    EXPECT_NE(findingsOf(folder_.file()), std::vector<std::string>());
    const auto mended = mend(folder_.file());
    ASSERT_TRUE(mended.ok()) << mended.error().message;
    EXPECT_EQ(findingsOf(folder_.file()), std::vector<std::string>());
    EXPECT_EQ(callsIn(folder_.file()), callsLeft());
    EXPECT_EQ(mended->unreadable, GetParam().takenOut + GetParam().deletedTakenOut);
    // All that an import does is done again.
    CallStore store = openStore(folder_.file());
    const auto appended = store.append({});
    EXPECT_TRUE(appended.ok()) << appended.error().message;
    useAll(folder_.file());
}

TEST_P(DamagedLog, isPutRightOrRefusedAsABackup) {
    change();
    Folder other;
    makeLog(other.file(), 3);
    const auto restored = restore(folder_.file(), other.file());
    EXPECT_EQ(findingsOf(other.file()), std::vector<std::string>());
    EXPECT_EQ(callsIn(other.file()), restored ? callsLeft() : 3U);
    if (!restored) {
        EXPECT_NE(restored.error().message.find("log was left as it is"), std::string::npos)
            << restored.error().message;
    }
    EXPECT_TRUE(openStore(other.file()).append({}).ok());
    useAll(other.file());
}

INSTANTIATE_TEST_SUITE_P(Of, DamagedLog, testing::ValuesIn(changes),
                         [](const auto& named) { return std::string(named.param.name); });

TEST(CallRules, aBackupWithACallThatCannotBeIsRefusedAsAnImportRefusesIt) {
    for (const char* text :
         {"update call set date = -5 where ROWID = 7", "update call set duration = -1 where ROWID = 7"}) {
        Folder folder;
        makeLog(folder.file("backup"), 50);
        makeLog(folder.file(), 3);
        runOn(folder.file("backup"), text);
        const auto restored = restore(folder.file("backup"), folder.file());
        ASSERT_FALSE(restored);
        EXPECT_EQ(restored.error().kind, ErrorKind::badInput);
        EXPECT_NE(restored.error().message.find("number 7's"), std::string::npos) << restored.error().message;
        EXPECT_NE(restored.error().message.find("import --skip-bad"), std::string::npos) << restored.error().message;
    }
}

TEST(CallRules, aLogWhoseNumbersAreUsedUpDoesNotSayThatTheDiskIsFull) {
    Folder folder;
    makeLog(folder.file(), 5);
    runOn(folder.file(), "update sqlite_sequence set seq = 9223372036854775807");
    CallStore store = openStore(folder.file());
    const auto appended = store.append({});
    ASSERT_FALSE(appended);
    EXPECT_EQ(appended.error().kind, ErrorKind::damaged);
    EXPECT_NE(appended.error().message.find("doctor --mend"), std::string::npos) << appended.error().message;
}

TEST(CallRules, aDeletedCallThatCannotBeIsNotBroughtBack) {
    Folder folder;
    makeLog(folder.file(), 20);
    CallStore store = openStore(folder.file());
    ASSERT_EQ(valueOf(store.deleteCalls(std::vector<std::int64_t>{7, 8})), 2);
    runOn(folder.file(), "update deleted set duration = -1 where ROWID = 7");
    EXPECT_FALSE(store.undelete(std::vector<std::int64_t>{7}));
    EXPECT_EQ(valueOf(store.undelete(std::vector<std::int64_t>{8})), 1);
    EXPECT_EQ(callsIn(folder.file()), 19U);
}

}  // namespace
}  // namespace quorvel::store
