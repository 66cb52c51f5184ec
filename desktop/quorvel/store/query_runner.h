// Runs statements that others have put together, on a connection that cannot write.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "desktop/quorvel/store/call.h"
#include "desktop/quorvel/store/database.h"
#include "desktop/quorvel/store/local_days.h"

namespace quorvel::store {

class QueryRunner {
  public:
    /// The file must exist; the use is one that cannot write. Throws as opening does.
    QueryRunner(const std::filesystem::path& path, Connection::Use use, std::chrono::milliseconds busyBound,
                const std::string& fileSystem);

    /// A record a row; nothing where the text is not exactly one reading statement, fails, or runs for too long.
    std::vector<CallRecord> run(std::string_view text);

  private:
    enum class Column { other, rowId, date, duration, flags, faceTimeDataSize, contact, location, address, day, extra };
    static std::vector<Column> columnsOf(sqlite3_stmt* statement);
    CallRecord recordOf(sqlite3_stmt* row, const std::vector<Column>& columns);
    const std::string& dayOf(std::int64_t date);

    Connection connection_;
    LocalDays days_;
    std::int64_t latestDay_ = 0;
    std::string latestDayText_;
};

}  // namespace quorvel::store
