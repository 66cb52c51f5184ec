// A log that is changed past the store and used through it: no operation crashes or hangs, what the check calls good is
// good for every other operation, and mending ends with a good log.
#include <gtest/gtest.h>
#include <sqlite3.h>

#include <cstdlib>
#include <cstring>
#include <fstream>
#include <iterator>
#include <optional>

#include "desktop/quorvel/store/backup.h"
#include "desktop/quorvel/store/mend.h"
#include "plain_memory.h"
#include "raw_log.h"
#include "tests/store/log_model.h"

namespace quorvel::store {
namespace {

using fuzz::Kind;
using fuzz::Step;

constexpr std::int64_t now = 1'800'000'000;

void require(bool holds, const char* what, const std::string& detail) {
    if (holds) return;
    std::fprintf(stderr, "%s: %s\n", what, detail.c_str());
    std::abort();
}

OpenOptions options(Access access = Access::readWrite) {
    OpenOptions made;
    made.access = access;
    made.busyBound = std::chrono::milliseconds(0);
    made.clock = [] { return now; };
    return made;
}

/// The folder of the process, in memory, with a log that every run begins from.
class Scratch {
  public:
    Scratch() {
        setenv("TZ", "UTC", 1);
        std::string name = "/dev/shm/log_fuzzer-XXXXXX";
        require(mkdtemp(name.data()) != nullptr, "no folder", name);
        folder_ = name;
        {
            // Small pages: few calls are enough for trees of several levels.
            fuzz::makeEmpty(file("whole"));
            CallStore store = valueOf(CallStore::open(file("whole"), options()));
            ImportSession session = valueOf(store.beginImport());
            CallMaker maker(3);
            for (int at = 0; at < 18; ++at) valueOf(session.add(maker.call()));
            valueOf(session.finish());
            valueOf(store.deleteCalls(std::vector<std::int64_t>{2, 3, 11}));
        }
        std::ifstream stream(file("whole"), std::ios::binary);
        whole_.assign(std::istreambuf_iterator<char>(stream), {});
    }
    ~Scratch() { std::filesystem::remove_all(folder_); }
    Scratch(const Scratch&) = delete;
    Scratch& operator=(const Scratch&) = delete;

    std::filesystem::path file(const char* name) const { return folder_ / name; }
    std::filesystem::path log() const { return file("calls.db"); }
    void begin() const {
        std::error_code ignored;
        for (const auto& entry : std::filesystem::directory_iterator(folder_))
            if (entry.path() != file("whole")) std::filesystem::remove(entry.path(), ignored);
        std::ofstream(log(), std::ios::binary) << whole_;
    }

  private:
    std::filesystem::path folder_;
    std::string whole_;
};

/// The calls of a log that the check calls good, as SQLite alone reads them.
LogModel modelOf(const std::filesystem::path& log) {
    LogModel model;
    sqlite3* opened = nullptr;
    sqlite3_open_v2(log.c_str(), &opened, SQLITE_OPEN_READWRITE, nullptr);
    const std::unique_ptr<sqlite3, decltype(&sqlite3_close)> database(opened, &sqlite3_close);
    sqlite3_stmt* rows = nullptr;
    sqlite3_prepare_v2(opened,
                       "select call.ROWID, call.address, date, duration, flags, location, id, name, label from call "
                       "not indexed left join party on party.party = call.party",
                       -1, &rows, nullptr);
    const std::unique_ptr<sqlite3_stmt, decltype(&sqlite3_finalize)> statement(rows, &sqlite3_finalize);
    const auto text = [rows](int column) {
        const auto* bytes = reinterpret_cast<const char*>(sqlite3_column_text(rows, column));
        return bytes ? std::string(bytes, static_cast<std::size_t>(sqlite3_column_bytes(rows, column))) : std::string();
    };
    while (rows && sqlite3_step(rows) == SQLITE_ROW) {
        NewCall call;
        call.address = text(1);
        call.date = sqlite3_column_int64(rows, 2);
        call.duration = sqlite3_column_int(rows, 3);
        call.flags = sqlite3_column_int(rows, 4);
        call.location = text(5);
        call.contactId = sqlite3_column_int(rows, 6);
        call.name = text(7);
        call.label = text(8);
        model.add(sqlite3_column_int64(rows, 0), call);
    }
    return model;
}

bool isGood(const std::filesystem::path& log) {
    const auto store = CallStore::open(log, options(Access::readOnly));
    if (!store) return false;
    const auto findings = store->verify();
    return findings && findings->empty();
}

template <class Value>
void requireValue(const Result<Value>& result, const char* what) {
    require(result.ok(), what, result ? std::string() : result.error().message);
}

/// All that is written, on a log that the check calls good: each succeeds, and leaves it good.
void requireWrites(const Scratch& scratch) {
    {
        CallStore store = valueOf(CallStore::open(scratch.log(), options()));
        CallMaker maker(7);
        requireValue(store.append(maker.call()), "append");
        requireValue(store.undeleteAll(), "undeleteAll");
        auto session = store.beginImport();
        requireValue(session, "beginImport");
        requireValue(session->beginSource(), "beginSource");
        for (int at = 0; at < 3; ++at) {
            const NewCall call = maker.call();
            requireValue(session->claim(call), "claim");
            requireValue(session->add(call), "add");
        }
        requireValue(session->finish(), "finish");
        requireValue(store.link("5551234", 9, "Nine", "work"), "link");
        const auto rows = store.page(Filter::all, {false, true}, Cursor::top(), 2);
        requireValue(rows, "page");
        for (const CallRecord& row : rows->rows)
            requireValue(store.deleteRow(Filter::all, {false, true}, row), "deleteRow");
        requireValue(store.deleteAll(Filter::missed), "deleteAll of a filter");
        const auto findings = store.verify();
        require(findings && findings->empty(), "after writing",
                !findings           ? findings.error().message
                : findings->empty() ? ""
                                    : findings->front());
        BackupOptions backup;
        backup.log = options();
        requireValue(backUp(scratch.log(), scratch.file("copy"), backup), "backUp");
        requireValue(store.deleteAll(Filter::all), "deleteAll");
        requireValue(restore(scratch.file("copy"), scratch.log(), backup), "restore");
    }
    require(isGood(scratch.log()), "after restoring", "the log is not good");
}

/// Carries out the steps of a run on one log.
class Run {
  public:
    explicit Run(const Scratch& scratch) : scratch_(scratch), log_(scratch.log()) { scratch.begin(); }

    void take(const Step& step) {
        const auto kind = static_cast<Kind>(step.kind % static_cast<unsigned>(Kind::kinds));
        Step known = step;
        known.kind = static_cast<std::uint8_t>(kind);
        if (kind < Kind::changeByte) {
            // Others change rows while a store has the file open, and when none has.
            if (step.extra % 4 != 0) store_.reset();
            fuzz::changeRows(log_, known);
        } else if (kind < Kind::open) {
            store_.reset();
            fuzz::changeBytes(log_, known);
        } else if (kind < Kind::check) {
            use(kind, step);
        } else {
            care(kind);
        }
    }

    /// Some of what takes longest is done by one in four runs, which is chosen by their steps.
    void end(unsigned turn) {
        store_.reset();
        if (isGood(log_)) {
            if (turn % 2 == 0) expectSame(valueOf(CallStore::open(log_, options())), modelOf(log_));
            requireWrites(scratch_);
            return;
        }
        for (const Kind kind :
             {Kind::openForReading, Kind::page, Kind::search, Kind::history, Kind::open, Kind::page, Kind::search,
              Kind::history, Kind::query, Kind::append, Kind::import, Kind::link, Kind::undelete, Kind::remove})
            use(kind, {});
        store_.reset();
        if (turn == 1) care(Kind::restore);
        care(Kind::mend);
        if (isMended_ && turn == 0) expectSame(valueOf(CallStore::open(log_, options())), modelOf(log_));
    }

  private:
    void use(Kind kind, const Step& step);
    void read(Kind kind, const Step& step);
    void write(Kind kind, const Step& step);
    void care(Kind kind);

    const Scratch& scratch_;
    std::filesystem::path log_;
    std::optional<CallStore> store_;
    bool isMended_ = false;
};

void Run::use(Kind kind, const Step& step) {
    if (kind == Kind::close) {
        store_.reset();
        return;
    }
    if (!store_ || kind == Kind::open || kind == Kind::openForReading) {
        store_.reset();
        auto opened =
            CallStore::open(log_, options(kind == Kind::openForReading ? Access::readOnly : Access::readWrite));
        if (opened) store_.emplace(*std::move(opened));
    }
    if (!store_) return;
    kind < Kind::remove || kind == Kind::query ? read(kind, step) : write(kind, step);
}

void Run::read(Kind kind, const Step& step) {
    const std::int64_t limit = step.value;
    for (const Filter filter : allFilters) {
        if (kind == Kind::page) {
            for (const Mode mode : allModes) {
                Cursor cursor = Cursor::top();
                // As an export reads: page after page until the end.
                for (int pages = 0; pages < 1000; ++pages) {
                    const auto page = store_->page(filter, mode, cursor, 3);
                    if (!page || page->atEnd || page->rows.empty()) break;
                    require(pages < 999, "paging", "has no end");
                    cursor = page->next;
                    std::vector<std::int64_t> rowIds;
                    for (const CallRecord& row : page->rows) rowIds.push_back(row.rowId);
                    (void)store_->wholeCalls(rowIds);
                    (void)store_->remaining(filter, mode, page->rows.front());
                }
                (void)store_->pageAt(filter, mode, step.row, limit);
                (void)store_->totals(filter, mode);
            }
            (void)store_->dayPage(filter, {}, "2023-11-15", step.row, limit);
            (void)store_->dayTotals(filter, "2023-11-15");
        } else if (kind == Kind::search) {
            (void)store_->search(filter, step.which % 2 == 0 ? "5" : "", {}, Cursor::top(), limit);
            (void)store_->search(filter, "a", "2023-11-15", Cursor::top(), limit);
            for (int again = 0; again < 2; ++again) (void)store_->eachFound(filter, "5", {}, [](const CallRecord&) {});
        } else if (kind == Kind::history) {
            (void)store_->history(filter, {2, {"5551234"}}, Cursor::top(), limit);
            (void)store_->eachOfHistory(filter, {1, {"", "anna@example.com"}}, [](const CallRecord&) {});
            (void)store_->history(filter, step.row, "");
        }
    }
    if (kind == Kind::query) (void)store_->query("select ROWID, * from call where address = '5551234' order by date");
    if (kind == Kind::history) (void)store_->addresses();
    if (kind == Kind::page) (void)store_->deletedCalls(Cursor::top(), limit);
}

void Run::write(Kind kind, const Step& step) {
    CallMaker maker(step.row);
    switch (kind) {
        case Kind::remove:
            switch (step.which % 5) {
                case 0:
                    (void)store_->deleteAll(allFilters[step.row % 4], step.value);
                    break;
                case 1:
                    (void)store_->deleteDay(Filter::all, "2023-11-15");
                    break;
                case 2:
                    (void)store_->deleteHistory(Filter::all, {2, {"5551234"}});
                    break;
                case 3:
                    if (const auto page = store_->page(Filter::all, {false, true}, Cursor::top(), 1);
                        page && !page->rows.empty())
                        (void)store_->deleteRow(Filter::all, {false, true}, page->rows.front());
                    break;
                default:
                    (void)store_->deleteCalls(std::vector<std::int64_t>{1, 5, step.value});
            }
            break;
        case Kind::undelete:
            step.which % 2 == 0 ? (void)store_->undeleteAll()
                                : (void)store_->undelete(std::vector<std::int64_t>{2, step.value});
            break;
        case Kind::append:
            (void)store_->append(maker.call());
            break;
        case Kind::import:
            if (auto session = store_->beginImport()) {
                (void)session->beginSource();
                for (int at = 0; at < 4; ++at) {
                    const NewCall call = maker.call();
                    (void)session->claim(call);
                    (void)session->add(call);
                }
                (void)session->finish();
            }
            break;
        case Kind::link:
            (void)store_->link("5551234", step.row, "Somebody", "");
            break;
        case Kind::rebuild:
            (void)store_->rebuild();
            break;
        default:
            break;
    }
}

void Run::care(Kind kind) {
    store_.reset();
    BackupOptions backup;
    backup.log = options();
    backup.existing = Existing::replaced;
    switch (kind) {
        case Kind::check:
            if (isGood(log_)) requireValue(CallStore::open(log_, options()), "opening what the check calls good");
            break;
        case Kind::mend: {
            const auto mended = mend(log_, options());
            isMended_ = mended.ok();
            if (mended) {
                require(isGood(log_), "mending", "the log is not good after it");
            } else {
                const ErrorKind why = mended.error().kind;
                require(why == ErrorKind::foreign || why == ErrorKind::newer || why == ErrorKind::unreadable, "mending",
                        mended.error().message);
            }
            break;
        }
        case Kind::restore: {
            std::filesystem::copy_file(scratch_.file("whole"), scratch_.file("other"),
                                       std::filesystem::copy_options::overwrite_existing);
            (void)restore(log_, scratch_.file("other"), backup);
            require(isGood(scratch_.file("other")), "restoring from the log", "the restored log is not good");
            break;
        }
        case Kind::backUp:
            if (backUp(log_, scratch_.file("backup"), backup) && isGood(log_))
                require(isGood(scratch_.file("backup")), "backing up", "the copy is not good");
            break;
        case Kind::setAside: {
            const auto aside = CallStore::setAside(log_);
            if (aside) requireValue(bringBack(*aside, log_, options()), "bringing back");
            break;
        }
        default:
            break;
    }
}

}  // namespace
}  // namespace quorvel::store

extern "C" std::size_t LLVMFuzzerCustomMutator(std::uint8_t* data, std::size_t size, std::size_t room, unsigned seed) {
    using namespace quorvel::store::fuzz;
    auto steps = stepsOf(data, size);
    mutate(steps, seed);
    const std::size_t bytes = std::min(steps.size() * sizeof(Step), room / sizeof(Step) * sizeof(Step));
    std::memcpy(data, steps.data(), bytes);
    return bytes;
}

extern "C" int LLVMFuzzerInitialize(int*, char***) {
    quorvel::store::fuzz::usePlainMemory();
    // What the comparison with the model expects ends the process, as everything else does.
    testing::GTEST_FLAG(throw_on_failure) = true;
    int arguments = 1;
    char name[] = "log_fuzzer";
    char* names[] = {name, nullptr};
    testing::InitGoogleTest(&arguments, names);
    return 0;
}

/// Shorter stacks and less memory that is kept back: both are most of what an allocation costs.
extern "C" const char* __asan_default_options() {  // NOLINT
    return "malloc_context_size=4:quarantine_size_mb=4:detect_stack_use_after_return=0";
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const quorvel::store::Scratch scratch;
    quorvel::store::Run run(scratch);
    unsigned sum = 0;
    for (const auto& step : quorvel::store::fuzz::stepsOf(data, size)) {
        run.take(step);
        sum = sum * 31 + step.kind + step.which + step.row + step.column + static_cast<unsigned>(step.value);
    }
    run.end(sum % 4);
    return 0;
}
