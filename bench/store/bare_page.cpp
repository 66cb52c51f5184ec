// The bare statement.
#include "bench/store/bare_page.h"

#include <benchmark/benchmark.h>

namespace quorvel::store {

BarePage::BarePage(const std::filesystem::path& log) {
    sqlite3_open(log.c_str(), &database_);
    sqlite3_prepare_v2(
        database_,
        "select ROWID, address, date, duration, flags, id, datetime, location from call indexed by call_by_date "
        "order by date desc, ROWID desc limit 50",
        -1, &page_, nullptr);
}

BarePage::~BarePage() {
    sqlite3_finalize(page_);
    sqlite3_close(database_);
}

std::int64_t BarePage::fetch() {
    std::int64_t sum = 0;
    while (sqlite3_step(page_) == SQLITE_ROW) {
        for (const int column : {0, 2, 3, 4, 5}) sum += sqlite3_column_int64(page_, column);
        for (const int column : {1, 6, 7}) benchmark::DoNotOptimize(sqlite3_column_text(page_, column));
    }
    sqlite3_reset(page_);
    return sum;
}

}  // namespace quorvel::store
