// Reads the store in every way there is and compares.
#include "log_model.h"

namespace quorvel::store {

namespace {

std::vector<CallRecord> slice(const std::vector<CallRecord>& rows, std::size_t from, std::size_t count) {
    from = std::min(from, rows.size());
    return {rows.begin() + static_cast<std::ptrdiff_t>(from),
            rows.begin() + static_cast<std::ptrdiff_t>(std::min(rows.size(), from + count))};
}

void expectPages(const CallStore& store, Filter filter, Mode mode, const std::vector<CallRecord>& rows) {
    const auto sizes = {std::size_t{1}, std::size_t{2}, std::size_t{3}, rows.size(), rows.size() + 1};
    for (const std::size_t size : sizes) {
        if (size == 0) continue;
        Cursor cursor = Cursor::top();
        for (std::size_t from = 0; from <= rows.size(); from += size) {
            const auto limit = static_cast<std::int64_t>(size);
            const Page page = valueOf(store.page(filter, mode, cursor, limit));
            ASSERT_EQ(page.rows, slice(rows, from, size)) << "rows from " << from << ", " << size << " at a time";
            ASSERT_EQ(page.atEnd, from + size >= rows.size());
            cursor = page.next;
        }
    }
    for (std::size_t offset = 0; offset <= rows.size() + 1; ++offset) {
        ASSERT_EQ(valueOf(store.pageAt(filter, mode, static_cast<std::int64_t>(offset), 3)).rows,
                  slice(rows, offset, 3))
            << "at row " << offset;
    }
}

/// What is found one by one: at first read from the file, and then from memory, where the term is in many calls.
void expectFoundOneByOne(const CallStore& store, const LogModel& model, Filter filter) {
    const auto expected = model.where(
        filter, [](const CallRecord& call) { return (call.address + call.name).find('5') != std::string::npos; });
    for (const char* turn : {"at first", "the second time", "the third"}) {
        std::vector<CallRecord> found;
        ASSERT_TRUE(store.eachFound(filter, "5", {}, [&](const CallRecord& call) { found.push_back(call); })) << turn;
        ASSERT_EQ(found, expected) << turn;
    }
    if (expected.empty()) return;
    const CallRecord& one = expected.front();
    const Correspondent with =
        one.contactId == noContact ? Correspondent{noContact, {one.address}} : Correspondent{one.contactId, {}};
    std::vector<CallRecord> history;
    ASSERT_TRUE(store.eachOfHistory(filter, with, [&](const CallRecord& call) { history.push_back(call); }));
    ASSERT_EQ(history, model.where(filter, [&](const CallRecord& call) { return LogModel::isSame(call, one); }));
}

}  // namespace

void expectSame(const CallStore& store, const LogModel& model) {
    ASSERT_EQ(valueOf(store.verify()), std::vector<std::string>());
    for (const Filter filter : allFilters) {
        for (const Mode mode : allModes) {
            const std::vector<CallRecord> rows = model.rows(filter, mode);
            const Totals totals{static_cast<std::int64_t>(rows.size()),
                                static_cast<std::int64_t>(model.calls(filter).size()), model.seconds(filter)};
            ASSERT_EQ(valueOf(store.totals(filter, mode)), totals);
            ASSERT_NO_FATAL_FAILURE(expectPages(store, filter, mode, rows));
        }
        ASSERT_NO_FATAL_FAILURE(expectFoundOneByOne(store, model, filter));
        for (const CallRecord& day : model.days()) {
            const auto calls = model.ofDay(filter, day.day);
            for (std::size_t offset = 0; offset <= calls.size(); offset += 2) {
                const auto from = static_cast<std::int64_t>(offset);
                ASSERT_EQ(valueOf(store.dayPage(filter, {}, day.day, from, noLimit)).rows,
                          slice(calls, offset, calls.size()));
            }
            ASSERT_EQ(valueOf(store.dayPage(filter, {true, true}, day.day, 1, 2)).rows,
                      slice(LogModel::fold(calls), 1, 2));
            ASSERT_EQ(valueOf(store.dayTotals(filter, day.day)).calls, static_cast<std::int64_t>(calls.size()));
        }
    }
}

}  // namespace quorvel::store
