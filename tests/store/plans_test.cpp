// Every statement that the store prepares is looked at: what serves the lists finds its rows by a named index, in
// order.
#include <gtest/gtest.h>
#include <sqlite3.h>

#include <mutex>
#include <set>

#include "desktop/quorvel/store/database.h"
#include "log_model.h"

namespace quorvel::store {
namespace {

/// The steps of the statement's plan.
std::vector<std::string> planOf(sqlite3* database, const std::string& text) {
    std::vector<std::string> steps;
    sqlite3_stmt* statement = nullptr;
    EXPECT_EQ(sqlite3_prepare_v2(database, ("explain query plan " + text).c_str(), -1, &statement, nullptr), SQLITE_OK)
        << text << ": " << sqlite3_errmsg(database);
    while (sqlite3_step(statement) == SQLITE_ROW) {
        steps.emplace_back(reinterpret_cast<const char*>(sqlite3_column_text(statement, 3)));
    }
    sqlite3_finalize(statement);
    return steps;
}

bool holds(const std::string& text, const char* part) { return text.find(part) != std::string::npos; }

/// What reads everything does so on purpose: making the sums anew, the check, reading the names for the search.
bool readsEverythingOnPurpose(const std::string& text) {
    static const std::set<std::string> texts = {
        "select ROWID, address, id, date, duration, flags, kind, party, day, datetime from call order by ROWID",
        "select date, ROWID, kind, duration, flags, party, id, day, location from call indexed by call_by_date order "
        "by date "
        "desc, ROWID desc",
        "select party, contact, address from party order by party",
        "select party, calls from party order by party",
        "select address, contact, name, label, party from party where calls > 0 order by party",
        "select party, address, name, label, contact from party order by party",
        "select party, contact, address, name, label from party where party not between 1 and ?1 order by party",
        "select ROWID, address, date, duration, flags, face_time_data_size, location, id, extra from call order by "
        "ROWID",
        "select ROWID, address, date, duration, flags, face_time_data_size, location, id, extra, name, label, moment "
        "from deleted order by ROWID",
        "select day, dialled, received, missed, dialled_duration, received_duration, first, last from day order by day",
        "select span, dialled, received, missed, all_runs, dialled_runs, received_runs, missed_runs from span order by "
        "span",
        "update party set calls = 0",
        "delete from party where calls = 0",
        "delete from day",
        "delete from span",
        "select count(*) from sqlite_schema",
        "select ROWID, date, day from deleted order by ROWID",
    };
    // All calls at once are kept aside in the order in which they lie.
    const bool isKeepingAll =
        text.starts_with("insert or replace into deleted ") && text.ends_with(" order by call.ROWID");
    return isKeepingAll || texts.contains(text);
}

void useHistories(CallStore& store) {
    const Correspondent person{2, {"5551234", "anna@example.com"}};
    const Page first = valueOf(store.history(Filter::all, person, Cursor::top(), 5));
    valueOf(store.history(Filter::missed, person, first.next, 5));
    EXPECT_GT(valueOf(store.deleteHistory(Filter::missed, person, 800)), 0);
}

void useEverything(CallStore& store) {
    CallMaker maker(9);
    ImportSession session = valueOf(store.beginImport());
    for (int at = 0; at < 1000; ++at) valueOf(session.add(maker.call()));
    valueOf(session.contains(maker.call()));
    valueOf(session.beginSource());
    valueOf(session.claim(maker.call()));
    valueOf(session.finish());
    valueOf(store.append(maker.call()));
    for (const Filter filter : allFilters) {
        for (const Mode mode : allModes) {
            const Page first = valueOf(store.page(filter, mode, Cursor::top(), 5));
            valueOf(store.page(filter, mode, first.next, 5));
            valueOf(store.pageAt(filter, mode, 20, 5));
            valueOf(store.totals(filter, mode));
            ASSERT_GE(first.rows.size(), 4U);
            valueOf(store.remaining(filter, mode, first.rows[0]));
            valueOf(store.deleteRow(filter, mode, first.rows[3], 900));
        }
        const std::string day = valueOf(store.page(Filter::all, {}, Cursor::top(), 1)).rows[0].day;
        valueOf(store.dayPage(filter, {}, day, 1, 5));
        valueOf(store.dayTotals(filter, day));
        valueOf(store.search(filter, "anna", {}, Cursor::top(), 5));
        valueOf(store.search(filter, "555", day, Cursor::top(), 500));
        valueOf(store.history(filter, 1, ""));
        valueOf(store.history(filter, noContact, "5551234"));
        valueOf(store.deleteDay(filter, day, 3));
        valueOf(store.deleteHistory(filter, 2, "", day));
        valueOf(store.deleteAll(filter, 5));
    }
    useHistories(store);
    valueOf(store.newestRowId());
    valueOf(store.revision());
    valueOf(store.link("5551234", 3, "Three", ""));
    EXPECT_FALSE(valueOf(store.addresses()).empty());
    valueOf(store.verify());
    valueOf(store.rebuild());
    EXPECT_GT(valueOf(store.undelete(std::vector<std::int64_t>{1, 2, 3})), 0);
    valueOf(store.undeleteAll());
    valueOf(store.deleteAll(Filter::all));
    const DeletedPage deleted = valueOf(store.deletedCalls(Cursor::top(), 5));
    EXPECT_EQ(valueOf(store.deletedCalls(deleted.next, 5)).rows.size(), 5U);
}

class Plans : public ::testing::Test {
  protected:
    void TearDown() override {
        Connection::observeTexts({});
        sqlite3_close(database_);
    }
    void openDatabase() { ASSERT_EQ(sqlite3_open(folder_.file().c_str(), &database_), SQLITE_OK); }

    Folder folder_;
    sqlite3* database_ = nullptr;
};

TEST_F(Plans, everyStatementFindsItsRowsByAnIndexAndSortsNothing) {
    std::set<std::string> texts;
    std::mutex mutex;
    Connection::observeTexts([&](std::string_view text) {
        const std::lock_guard lock(mutex);
        texts.emplace(text);
    });
    CallStore store = openStore(folder_.file());
    ASSERT_NO_FATAL_FAILURE(useEverything(store));
    openDatabase();
    int seen = 0, ofCalls = 0;
    for (const std::string& text : texts) {
        if (readsEverythingOnPurpose(text) || text == "commit" || text.starts_with("begin") ||
            text.starts_with("pragma"))
            continue;
        ++seen;
        for (const std::string& step : planOf(database_, text)) {
            EXPECT_FALSE(holds(step, "TEMP B-TREE")) << text << "\n" << step;
            // Two rows, one a table: SQLite's own list of the greatest row identifiers.
            EXPECT_TRUE(!holds(step, "SCAN") || holds(step, "SCAN sqlite_sequence")) << text << "\n" << step;
        }
        if (holds(text, "from call indexed by")) {
            ++ofCalls;
            const auto from = text.find("indexed by ") + 11;
            const std::string index = text.substr(from, text.find_first_of(" ", from) - from);
            const auto steps = planOf(database_, text);
            EXPECT_TRUE(std::any_of(steps.begin(), steps.end(), [&](const std::string& step) {
                return holds(step, "SEARCH call USING") && holds(step, index.c_str());
            })) << text;
        }
    }
    EXPECT_GE(seen, 40);
    EXPECT_GE(ofCalls, 15);
}

TEST_F(Plans, pagesAreReadFromTheCoveringIndicesAlone) {
    openStore(folder_.file());
    openDatabase();
    const std::string columns =
        "select date, ROWID, kind, duration, flags, party, id, day, location from call indexed by ";
    EXPECT_EQ(planOf(database_, columns + "call_by_date where date < ?1 and date >= ?2 order by date desc, ROWID desc"),
              std::vector<std::string>{"SEARCH call USING COVERING INDEX call_by_date (date>? AND date<?)"});
    EXPECT_EQ(planOf(database_, columns + "call_by_date where date = ?1 and ROWID < ?3 order by ROWID desc"),
              std::vector<std::string>{"SEARCH call USING COVERING INDEX call_by_date (date=? AND ROWID<?)"});
    EXPECT_EQ(
        planOf(database_,
               columns + "call_by_kind where kind = ?4 and date < ?1 and date >= ?2 order by date desc, ROWID desc"),
        std::vector<std::string>{"SEARCH call USING COVERING INDEX call_by_kind (kind=? AND date>? AND date<?)"});
}

TEST_F(Plans, theTextsOfTheCallRecordsUseTheirIndices) {
    openStore(folder_.file());
    openDatabase();
    const std::string columns = "select ROWID, date, duration, flags, face_time_data_size, location from call where ";
    EXPECT_EQ(planOf(database_, columns + "id=7 and datetime='2024-01-01' order by date desc"),
              std::vector<std::string>{"SEARCH call USING INDEX call_by_contact (id=? AND datetime=?)"});
    EXPECT_EQ(planOf(database_, columns + "address='7' and datetime='2024-01-01' order by date desc"),
              std::vector<std::string>{"SEARCH call USING INDEX call_by_address (address=? AND datetime=?)"});
    // The newest of all days sorts one contact's calls; it is asked only where the day has none left.
    EXPECT_EQ(planOf(database_, columns + "id=7 order by date desc LIMIT 1")[0],
              "SEARCH call USING INDEX call_by_contact (id=?)");
    EXPECT_EQ(planOf(database_, columns + "address='7' order by date desc LIMIT 1")[0],
              "SEARCH call USING INDEX call_by_address (address=?)");
}

}  // namespace
}  // namespace quorvel::store
