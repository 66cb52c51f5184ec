// When the Recents screen goes to the database, by the statements that SQLite is given.
#include <sqlite3.h>

#include <atomic>

#include "desktop/phone/screen_probe.h"
#include "tests/screens/fixture.h"

namespace screens {
namespace {

std::atomic<int> statements{0};

int countStatement(unsigned, void*, void*, void*) {
    ++statements;
    return 0;
}

int watch(sqlite3* database, const char**, const sqlite3_api_routines*) {
    return sqlite3_trace_v2(database, SQLITE_TRACE_STMT, countStatement, nullptr);
}

/// Every connection that is opened while it lives is watched.
class WatchedConnections {
  private:
    /// In the type that SQLite wants of it.
    static auto entry() { return reinterpret_cast<void (*)()>(&watch); }

  protected:
    WatchedConnections() { sqlite3_auto_extension(entry()); }
    ~WatchedConnections() { sqlite3_cancel_auto_extension(entry()); }
    WatchedConnections(const WatchedConnections&) = delete;
    WatchedConnections& operator=(const WatchedConnections&) = delete;
};

class RecentsDatabase : private WatchedConnections, public ScreenTest {
  protected:
    /// Two missed calls, a received, a dialled and a cancelled one.
    void fillEveryKind() {
        fill({{"1", noon, incoming, 0},
              {"2", noon + 60, incoming, 40},
              {"3", noon + 120, outgoing, 50},
              {"4", noon + 180, outgoing, 0},
              {"5", noon + 240, incoming, 0}});
    }
    /// Taps the segment and answers how many statements that took.
    int statementsOfSwitchTo(int segment) {
        statements = 0;
        auto* segments = phone::titleSegments();
        segments->setSelectedSegmentIndex(segment);
        objc::send<"segmentAction:">(phone::frontScreen()->object(), segments->object());
        settle();
        return statements;
    }
    static long rowsShown() { return phone::rowCount(phone::frontTable()); }
};

TEST_F(RecentsDatabase, isNotTouchedByASwitchToAFilterThatIsLoaded) {
    fillEveryKind();
    start();
    for (int segment = 1; segment < 4; ++segment) EXPECT_GT(statementsOfSwitchTo(segment), 0) << segment;
    const long rows[] = {5, 2, 1, 2};
    for (const int segment : {0, 1, 2, 3, 1, 0, 3, 2}) {
        EXPECT_EQ(statementsOfSwitchTo(segment), 0) << segment;
        EXPECT_EQ(rowsShown(), rows[segment]) << segment;
    }
}

}  // namespace
}  // namespace screens
