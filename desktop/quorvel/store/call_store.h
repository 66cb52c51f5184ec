// The call log on disk: reading by pages, counting, searching, deleting and importing at a cost that does not grow with
// it.
#pragma once

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "desktop/quorvel/store/call.h"
#include "desktop/quorvel/store/result.h"

namespace quorvel::store {

class ImportSession;

enum class Access {
    readWrite,  ///< The file is made where there is none.
    readOnly,   ///< The file must exist; every write answers ErrorKind::readOnly.
};

struct OpenOptions {
    Access access = Access::readWrite;
    /// How long a write waits for another process before it answers ErrorKind::busy.
    std::chrono::milliseconds busyBound{10000};
    /// Name of a registered SQLite file system; empty for the system's own.
    std::string fileSystem = {};
    /// Seconds since 1970; empty for the system's clock. Called by any thread that writes.
    std::function<std::int64_t()> clock = {};
};

constexpr std::int64_t noLimit = INT64_MAX;
/// A bound for deletions that takes every call; what a user asked for is bounded by newestRowId() of that moment.
constexpr std::int64_t anyRowId = INT64_MAX;

/// One call log. Any thread may call any operation at any time: the store orders its own work, and reading does not
/// wait for a deletion or an import. Several processes may hold the same file. A change is whole on disk when the
/// operation returns, or has not happened. Rows are newest first, by date and then by row identifier.
class CallStore {
  public:
    /// Opens the log. Errors: unreadable, foreign, damaged, newer, busy. The file is not changed where an error is
    /// returned.
    static Result<CallStore> open(const std::filesystem::path& path, const OpenOptions& options = {});

    /// Gives the file, with what SQLite keeps beside it, a free name of the form PATH.damaged-N and returns that name.
    /// Nothing is deleted. No store may have the file open.
    static Result<std::filesystem::path> setAside(const std::filesystem::path& path);

    CallStore(CallStore&&) noexcept;
    CallStore& operator=(CallStore&&) noexcept;
    ~CallStore();

    const std::filesystem::path& path() const;

    // Reading. `limit` is the greatest number of rows; 0 or less reads none, noLimit all.

    /// The rows below `after`, in the mode's rows.
    Result<Page> page(Filter filter, Mode mode, const Cursor& after, std::int64_t limit) const;
    /// The rows from row number `offset` on, counted from 0. Beyond the end the page is empty.
    Result<Page> pageAt(Filter filter, Mode mode, std::int64_t offset, std::int64_t limit) const;
    /// The cursor whose page begins with row number `offset`.
    Result<Cursor> cursorAt(Filter filter, Mode mode, std::int64_t offset) const;
    /// The day's calls of the filter from row number `offset` on; runs of them where the mode groups by contact, and
    /// grouping by date is ignored. A day without calls gives an empty page.
    Result<Page> dayPage(Filter filter, Mode mode, std::string_view day, std::int64_t offset, std::int64_t limit) const;
    /// The calls of the filter whose name or number contains the text whatever the case, on the day where one is given.
    /// An empty text is contained in all.
    Result<Page> search(Filter filter, std::string_view text, std::optional<std::string_view> day, const Cursor& after,
                        std::int64_t limit) const;
    /// All calls of the filter with the contact, or with the address where there is no contact.
    Result<std::vector<CallRecord>> history(Filter filter, std::int32_t contactId, std::string_view address) const;
    /// The correspondent's calls of the filter below `after`.
    Result<Page> history(Filter filter, const Correspondent& with, const Cursor& after, std::int64_t limit) const;
    /// Shows all calls that search() and history() answer without a limit, in their order, without holding them all.
    /// Returns how many there were. It runs within the reading: `see` may not ask the store.
    Result<std::int64_t> eachFound(Filter filter, std::string_view text, std::optional<std::string_view> day,
                                   const SeeCall& see) const;
    Result<std::int64_t> eachOfHistory(Filter filter, const Correspondent& with, const SeeCall& see) const;
    /// What remains of a row that was read before: the call or day, or the newest call from there on of the run.
    /// Nothing where nothing remains.
    Result<std::optional<CallRecord>> remaining(Filter filter, Mode mode, const CallRecord& row) const;
    /// Every address that there are calls of, once for each contact that they are linked to.
    Result<std::vector<NamedAddress>> addresses() const;
    /// The call of the row identifier, if there is one.
    Result<std::optional<CallRecord>> call(std::int64_t rowId) const;
    /// The calls of the row identifiers with every field, in the order of the identifiers. Those that do not exist are
    /// passed over.
    Result<std::vector<CallRecord>> wholeCalls(std::span<const std::int64_t> rowIds) const;
    Result<Totals> totals(Filter filter, Mode mode) const;
    /// Calls and seconds of the filter on one day; rows are its calls.
    Result<Totals> dayTotals(Filter filter, std::string_view day) const;
    /// Runs one reading statement over the table `call` and gives a record a row, from the columns it names. Whatever
    /// is not exactly one reading statement, or fails, gives an empty list and changes nothing.
    std::vector<CallRecord> query(std::string_view text) const;
    /// The greatest row identifier given so far; 0 for none.
    Result<std::int64_t> newestRowId() const;
    /// Rises with every change that a store makes to the log, by whatever process.
    Result<std::int64_t> revision() const;

    // Deleting. Each is one transaction and returns how many calls it deleted; calls with a row identifier above
    // `bound` stay, and so do the unnamed. What is deleted is kept aside.

    Result<std::int64_t> deleteAll(Filter filter, std::int64_t bound = anyRowId);
    Result<std::int64_t> deleteDay(Filter filter, std::string_view day, std::int64_t bound = anyRowId);
    /// Row identifiers that do not exist are passed over.
    Result<std::int64_t> deleteCalls(std::span<const std::int64_t> rowIds);
    /// Everything that the row of the list stands for: the call, the whole run or the whole day.
    Result<std::int64_t> deleteRow(Filter filter, Mode mode, const CallRecord& row, std::int64_t bound = anyRowId);
    /// The contact's calls of the filter (the address's where there is no contact), on one day where it is given.
    Result<std::int64_t> deleteHistory(Filter filter, std::int32_t contactId, std::string_view address,
                                       std::optional<std::string_view> day = std::nullopt,
                                       std::int64_t bound = anyRowId);
    /// The correspondent's calls of the filter.
    Result<std::int64_t> deleteHistory(Filter filter, const Correspondent& with, std::int64_t bound = anyRowId);

    // What was deleted, for as long as keptAsideFor. Later writes clear away what is older.

    /// The deleted calls below `after`, the last deleted first, and by row identifier within a second.
    Result<DeletedPage> deletedCalls(const Cursor& after, std::int64_t limit) const;
    /// Brings the calls back with every field as it was, in one transaction, and returns how many. Row identifiers that
    /// are not kept aside are passed over. A name that the number has been given since stays.
    Result<std::int64_t> undelete(std::span<const std::int64_t> rowIds);
    Result<std::int64_t> undeleteAll();

    // Writing.

    /// Adds one call and returns its row identifier.
    Result<std::int64_t> append(const NewCall& call);
    /// Begins an import; see import_session.h. Until it ends, other writers wait.
    Result<ImportSession> beginImport();
    /// Links all calls of the address to the contact (noContact for none) and gives them the name and label. Returns
    /// the number of calls of the address.
    Result<std::int64_t> link(std::string_view address, std::int32_t contactId, std::string_view name,
                              std::string_view label);
    /// The same for several addresses, each with a contact, name and label of its own, in one transaction. Of two for
    /// one address the last holds. Readers do not wait for it.
    Result<std::int64_t> link(std::span<const NamedAddress> links);

    // Care.

    /// Compares everything derived with the calls, and the file with itself; each finding is a sentence, none is good.
    Result<std::vector<std::string>> verify() const;
    /// Makes everything derived anew from the calls, days in the machine's present time zone.
    Result<Done> rebuild();

  private:
    class Impl;
    explicit CallStore(std::unique_ptr<Impl> impl);
    std::unique_ptr<Impl> impl_;
};

}  // namespace quorvel::store
