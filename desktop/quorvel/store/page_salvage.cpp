// SQLite itself decodes the rows: in the copy the first page is replaced by one that says that there is a single table,
// and each page that holds rows is made that table's only one in turn. Which table they belong to shows in their types.
// (The tables of the command line tool's `.recover` are not compiled into Debian's library.)
#include "desktop/quorvel/store/page_salvage.h"

#include <algorithm>
#include <array>
#include <bit>
#include <fstream>
#include <unordered_set>

#include "desktop/quorvel/store/call_row.h"
#include "desktop/quorvel/store/page_copy.h"

namespace quorvel::store {
namespace {

namespace fs = std::filesystem;

constexpr std::size_t headerSize = 100;
constexpr unsigned char leafOfTable = 13;

/// The table that has room for the rows of every table of a log, with columns of no type. The first is the one that
/// stands for the row identifier there.
constexpr const char* tableOfPages = "create table page (c0, c1, c2, c3, c4, c5, c6, c7, c8, c9, c10, c11, c12)";
/// QUORVEL_OWN_COLUMNS and `extra` of the tables `call` and `deleted`, with what follows in each.
constexpr const char* rowsOfPage = "select ROWID, c1, c2, c3, c4, c5, c6, c7, c12, c8, c9, c10, c11, c0 from page";

fs::path beside(fs::path path, const char* suffix) {
    path += suffix;
    return path;
}

void copyFile(const fs::path& from, const fs::path& to) {
    std::error_code error;
    fs::copy_file(from, to, fs::copy_options::overwrite_existing, error);
    if (!error) return;
    const bool isFull = error == std::errc::no_space_on_device;
    throw Failure{{isFull ? ErrorKind::full : ErrorKind::unreadable,
                   "The log " + from.string() + " cannot be copied to " + to.string() + ": " + error.message() + '.'}};
}

/// In the place of a row identifier a row holds nothing.
bool isOwnRow(const Statement& row) {
    if (!row.isNull(13)) return false;
    const bool isNumbers = row.isInteger(2) && row.isInteger(3) && row.isInteger(4) && row.isInteger(5);
    const bool isPlace = row.isText(6) || row.isNull(6);
    const bool isExtra = row.isText(8) || row.isNull(8);
    return row.isText(1) && isNumbers && isPlace && row.isInteger(7) && isExtra;
}

bool isCall(const Statement& row) {
    return isOwnRow(row) && row.isText(9) && row.isInteger(10) && row.isInteger(11) && row.isInteger(12);
}

bool isDeleted(const Statement& row) {
    return isOwnRow(row) && row.isInteger(9) && row.isText(10) && row.isText(11) && row.isInteger(12);
}

bool isParty(const Statement& row) {
    return row.isText(1) && row.isInteger(2) && row.isText(3) && row.isText(4) && row.isInteger(5) && row.isNull(6);
}

bool isTotalOfAll(const Statement& row) {
    return row.integer(0) == 1 && row.isInteger(1) && row.isInteger(2) && row.isInteger(3) && row.isNull(4);
}

std::string nameKey(std::int64_t contact, std::string_view address) {
    return std::to_string(contact).append(1, ' ').append(address);
}

void putNumber(std::array<unsigned char, headerSize>& header, std::size_t at, std::uint32_t number) {
    for (std::size_t byte = 0; byte < 4; ++byte)
        header[at + byte] = static_cast<unsigned char>(number >> (24U - 8U * byte));
}

}  // namespace

PageSalvage::PageSalvage(const fs::path& log, fs::path copy) : copy_(std::move(copy)) {
    removeDatabase(copy_);
    copyFile(log, copy_);
    std::error_code ignored;
    if (fs::file_size(beside(log, "-wal"), ignored) > 0 && !ignored)
        copyFile(beside(log, "-wal"), beside(copy_, "-wal"));
    readHeader();
    takeWriteAheadLogIn();
    replaceFirstPage();
    connection_ =
        std::make_unique<Connection>(copy_, Connection::Use::write, std::chrono::milliseconds(0), std::string());
    connection_->execute("pragma journal_mode = off; pragma synchronous = off; pragma locking_mode = exclusive");
    sortPages();
}

PageSalvage::~PageSalvage() {
    connection_.reset();
    removeDatabase(copy_);
}

/// Learns the size of a page, and makes the header one that SQLite reads the file by.
void PageSalvage::readHeader() {
    std::array<unsigned char, headerSize> header{};
    {
        std::ifstream file(copy_, std::ios::binary);
        file.read(reinterpret_cast<char*>(header.data()), headerSize);
    }
    const unsigned size = unsigned{header[16]} << 8U | header[17];
    if (size == 1) pageSize_ = 65536;
    if (size >= 512 && std::has_single_bit(size)) pageSize_ = size;
    const auto bytes = fs::file_size(copy_);
    pageCount_ = static_cast<std::int64_t>((bytes + pageSize_ - 1) / pageSize_);
    fs::resize_file(copy_, static_cast<std::uintmax_t>(std::max<std::int64_t>(pageCount_, 1)) * pageSize_);
    std::ranges::copy(std::string_view("SQLite format 3\0", 16), header.begin());
    header[16] = static_cast<unsigned char>(pageSize_ >> 8U);
    header[17] = pageSize_ == 65536 ? 1 : static_cast<unsigned char>(pageSize_ & 0xffU);
    std::ranges::copy(std::array<unsigned char, 6>{2, 2, 0, 64, 32, 32}, header.begin() + 18);
    putNumber(header, 28, static_cast<std::uint32_t>(std::max<std::int64_t>(pageCount_, 1)));
    putNumber(header, 44, 4);
    putNumber(header, 56, 1);
    std::ranges::copy_n(header.begin() + 24, 4, header.begin() + 92);
    std::fstream(copy_, std::ios::binary | std::ios::in | std::ios::out)
        .write(reinterpret_cast<const char*>(header.data()), headerSize);
}

/// What was written last may stand in the write-ahead log alone.
void PageSalvage::takeWriteAheadLogIn() {
    try {
        Connection connection(copy_, Connection::Use::write, std::chrono::milliseconds(0), {});
        connection.execute(
            "pragma writable_schema = on; pragma wal_checkpoint(truncate); pragma journal_mode = delete");
    } catch (const Failure&) {
        // Then there is what the file has.
    }
    for (const char* suffix : {"-wal", "-shm", "-journal"}) {
        std::error_code ignored;
        fs::remove(beside(copy_, suffix), ignored);
    }
    pageCount_ = static_cast<std::int64_t>(fs::file_size(copy_) / pageSize_);
}

void PageSalvage::replaceFirstPage() {
    Connection made({}, Connection::Use::memory, {}, {});
    made.execute(("pragma page_size = " + std::to_string(pageSize_)).c_str());
    made.execute(tableOfPages);
    sqlite3_int64 size = 0;
    const std::unique_ptr<unsigned char, decltype(&sqlite3_free)> image(
        sqlite3_serialize(made.handle(), "main", &size, 0), &sqlite3_free);
    if (!image || static_cast<std::size_t>(size) < pageSize_) throw std::bad_alloc();
    std::array<unsigned char, headerSize> header{};
    std::copy_n(image.get(), headerSize, header.begin());
    putNumber(header, 28, static_cast<std::uint32_t>(std::max<std::int64_t>(pageCount_, 2)));
    std::ranges::copy(header, image.get());
    std::fstream file(copy_, std::ios::binary | std::ios::in | std::ios::out);
    file.write(reinterpret_cast<const char*>(image.get()), static_cast<std::streamsize>(pageSize_));
    if (pageCount_ >= 2) return;
    pageCount_ = 2;
    file.write(reinterpret_cast<const char*>(image.get()) + pageSize_, static_cast<std::streamsize>(pageSize_));
}

void PageSalvage::eachRow(std::int64_t page, const std::function<void(const Statement&)>& see) {
    connection_->execute("pragma writable_schema = on");
    connection_->execute(
        ("update sqlite_schema set rootpage = " + std::to_string(page) + " where name = 'page'").c_str());
    connection_->execute("pragma writable_schema = reset");
    try {
        Statement rows(connection_->handle(), rowsOfPage, copy_);
        while (rows.step()) see(rows);
    } catch (const Failure& failure) {
        if (failure.error.kind != ErrorKind::damaged && (failure.code & 0xff) != SQLITE_ERROR) throw;
    }
}

/// Looks at every page that holds rows of a table: calls are remembered by page, names are read.
void PageSalvage::sortPages() {
    std::vector<std::int64_t> leaves;
    {
        std::ifstream file(copy_, std::ios::binary);
        for (std::int64_t page = 2; page <= pageCount_; ++page) {
            file.seekg(static_cast<std::streamoff>(page - 1) * static_cast<std::streamoff>(pageSize_));
            if (file.get() == leafOfTable) leaves.push_back(page);
            file.clear();
        }
    }
    for (const std::int64_t page : leaves)
        eachRow(page, [&](const Statement& row) { note(row, {page, row.integer(0)}); });
    for (auto* pages : {&calls_, &deleted_})
        std::sort(pages->begin(), pages->end(),
                  [](const Page& one, const Page& other) { return one.firstRow < other.firstRow; });
}

void PageSalvage::note(const Statement& row, Page page) {
    const auto remember = [&](std::vector<Page>& pages) {
        if (pages.empty() || pages.back().number != page.number) pages.push_back(page);
    };
    if (isCall(row)) {
        remember(calls_);
    } else if (isDeleted(row)) {
        remember(deleted_);
    } else if (isParty(row)) {
        names_.try_emplace(nameKey(row.integer(2), row.text(1)), row.text(3), row.text(4));
    } else if (isTotalOfAll(row) && row.integer(1) >= 0 && row.integer(1) <= greatestNumber) {
        expected_ = std::max(expected_.value_or(0), row.integer(1));
    }
}

void PageSalvage::each(Kind kind, const See& see) {
    std::unordered_set<std::int64_t> seen;
    for (const Page& page : kind == Kind::call ? calls_ : deleted_) {
        eachRow(page.number, [&](const Statement& row) {
            if (kind == Kind::call ? !isCall(row) : !isDeleted(row)) return;
            if (objectionToRow(row)) {
                ++impossible_;
                return;
            }
            // The same call may stand on a page that was given up, too.
            if (!seen.insert(row.integer(0)).second) return;
            NewCall call = callOfRow(row);
            std::pair<std::string, std::string> names;
            if (kind == Kind::deleted) {
                names = {std::string(row.text(10)), std::string(row.text(11))};
            } else if (const auto found = names_.find(nameKey(call.contactId, call.address)); found != names_.end()) {
                names = found->second;
            }
            std::tie(call.name, call.label) = names;
            // A damaged name is no reason to lose its call.
            if (objectionTo(call)) call.name.clear(), call.label.clear();
            see(call);
        });
    }
}

}  // namespace quorvel::store
