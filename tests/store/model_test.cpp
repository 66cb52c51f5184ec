// Whatever is done to the store, it reads as a plain vector does to which the same was done.
#include <gtest/gtest.h>
#include <rapidcheck.h>
#include <rapidcheck/gtest.h>

#include "log_model.h"

namespace quorvel::store {
namespace {

/// A store and its model, changed together.
struct Pair {
    Folder folder;
    CallStore store = openStore(folder.file());
    LogModel model;
    CallMaker maker;

    explicit Pair(unsigned seed) : maker(seed) {}

    void append() {
        const NewCall call = maker.call();
        model.add(valueOf(store.append(call)), call);
    }

    void import(std::size_t calls) {
        ImportSession session = valueOf(store.beginImport());
        for (std::size_t at = 0; at < calls; ++at) {
            const NewCall call = maker.call();
            const std::int64_t rowId = valueOf(session.add(call));
            EXPECT_TRUE(valueOf(session.contains(call)));
            model.add(rowId, call);
        }
        EXPECT_EQ(valueOf(session.finish()), static_cast<std::int64_t>(calls));
    }

    void abandonImport() {
        ImportSession session = valueOf(store.beginImport());
        for (int at = 0; at < 3; ++at) valueOf(session.add(maker.call()));
    }

    Filter filter() { return allFilters[maker.pick(4)]; }
    Mode mode() { return allModes[maker.pick(4)]; }

    void deleteListed() {
        std::vector<CallRecord> chosen;
        std::vector<std::int64_t> rowIds{987654321};
        for (const CallRecord& call : model.calls(Filter::all)) {
            if (maker.pick(4) != 0) continue;
            chosen.push_back(call);
            rowIds.insert(rowIds.end(), {call.rowId, call.rowId});
        }
        EXPECT_EQ(valueOf(store.deleteCalls(rowIds)), model.remove(chosen));
    }

    void deleteRow() {
        const Filter list = filter();
        const Mode shown = mode();
        const auto rows = model.rows(list, shown);
        if (rows.empty()) return;
        const std::size_t at = maker.pick(rows.size());
        std::vector<CallRecord> gone{rows[at]};
        const RowKind kind = rowKindOf(list, shown);
        if (kind == RowKind::day) gone = model.ofDay(list, rows[at].day);
        if (kind == RowKind::run) gone = runOf(list, rows, at);
        EXPECT_EQ(valueOf(store.deleteRow(list, shown, rows[at])), model.remove(gone));
        if (kind != RowKind::run) {
            EXPECT_EQ(valueOf(store.remaining(list, shown, rows[at])), std::nullopt);
        }
    }

    std::vector<CallRecord> runOf(Filter list, const std::vector<CallRecord>& runs, std::size_t run) const {
        std::int64_t before = 0;
        for (std::size_t at = 0; at < run; ++at) before += runs[at].count;
        const auto calls = model.calls(list);
        return {calls.begin() + before, calls.begin() + before + runs[run].count};
    }

    void deleteHistory() {
        const auto calls = model.calls(Filter::all);
        if (calls.empty()) return;
        const CallRecord& one = calls[maker.pick(calls.size())];
        const Filter list = filter();
        const bool onOneDay = maker.pick(2) == 0;
        const auto history = model.where(list, [&](const CallRecord& call) { return LogModel::isSame(call, one); });
        EXPECT_EQ(valueOf(store.history(list, one.contactId, one.address)), history);
        const auto gone = model.where(list, [&](const CallRecord& call) {
            return LogModel::isSame(call, one) && (!onOneDay || call.day == one.day);
        });
        const auto day = onOneDay ? std::optional<std::string_view>(one.day) : std::nullopt;
        EXPECT_EQ(valueOf(store.deleteHistory(list, one.contactId, one.address, day)), model.remove(gone));
    }

    void deleteBounded() {
        const auto calls = model.calls(Filter::all);
        const std::int64_t bound = calls.empty() ? 0 : calls[maker.pick(calls.size())].rowId;
        const Filter list = filter();
        if (maker.pick(2) == 0 && !calls.empty()) {
            const std::string day = calls[0].day;
            EXPECT_EQ(valueOf(store.deleteDay(list, day, bound)), model.remove(model.ofDay(list, day), bound));
        } else {
            EXPECT_EQ(valueOf(store.deleteAll(list, bound)), model.remove(model.calls(list), bound));
        }
    }

    void link() {
        const NewCall call = maker.call();
        const auto contact = static_cast<std::int32_t>(maker.pick(4)) - 1;
        EXPECT_EQ(valueOf(store.link(call.address, contact, "New Name", "work")),
                  model.link(call.address, contact, "New Name", "work"));
    }

    void change(std::size_t kind) {
        switch (kind) {
            case 0:
                import(1 + maker.pick(30));
                break;
            case 1:
                abandonImport();
                break;
            case 2:
                deleteListed();
                break;
            case 3:
            case 4:
                deleteRow();
                break;
            case 5:
                deleteHistory();
                break;
            case 6:
                deleteBounded();
                break;
            case 7:
                link();
                break;
            default:
                append();
                break;
        }
    }
};

RC_GTEST_PROP(CallStoreModel, everyChangeLeavesTheStoreAsTheVectorIs, (unsigned seed)) {
    Pair pair(seed);
    pair.import(*rc::gen::inRange<std::size_t>(0, 40));
    const auto changes = *rc::gen::container<std::vector<std::size_t>>(rc::gen::inRange<std::size_t>(0, 12));
    for (std::size_t at = 0; at < std::min<std::size_t>(changes.size(), 8); ++at) {
        pair.change(changes[at]);
        expectSame(pair.store, pair.model);
        RC_ASSERT_FALSE(::testing::Test::HasFailure());
    }
}

TEST(CallStoreModel, anEmptyLogReadsAsEmptyInEveryWay) {
    Pair pair(1);
    expectSame(pair.store, pair.model);
    EXPECT_EQ(valueOf(pair.store.newestRowId()), 0);
    EXPECT_EQ(valueOf(pair.store.deleteAll(Filter::all)), 0);
}

TEST(CallStoreModel, manyChangesAreCountedAnewAndFewByTheirNeighboursWithTheSameSums) {
    Pair pair(2);
    pair.import(2500);
    EXPECT_EQ(valueOf(pair.store.verify()), std::vector<std::string>());
    std::vector<std::int64_t> many;
    for (std::int64_t rowId = 1; rowId < 1200; rowId += 2) many.push_back(rowId);
    EXPECT_EQ(valueOf(pair.store.deleteCalls(many)), 600);
    EXPECT_EQ(valueOf(pair.store.verify()), std::vector<std::string>());
    EXPECT_EQ(valueOf(pair.store.deleteCalls(std::vector<std::int64_t>{2, 4, 6, 8})), 4);
    pair.append();
    EXPECT_EQ(valueOf(pair.store.verify()), std::vector<std::string>());
    EXPECT_EQ(valueOf(pair.store.totals(Filter::all, {})).calls, 1897);
}

TEST(CallStoreModel, rowNumbersAreFoundAcrossManyDaysAndLongRuns) {
    Folder folder;
    CallStore store = openStore(folder.file());
    LogModel model;
    ImportSession session = valueOf(store.beginImport());
    for (int at = 0; at < 400; ++at) {
        NewCall call;
        call.address = at % 90 < 70 ? "5551234" : std::to_string(at % 7);
        call.date = 1'700'000'000 + at * 9'000;
        call.flags = at % 3 == 0 ? 5 : 4;
        model.add(valueOf(session.add(call)), call);
    }
    valueOf(session.finish());
    expectSame(store, model);
}

}  // namespace
}  // namespace quorvel::store
