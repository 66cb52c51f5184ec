// One statement over the table of calls; each column goes by its name into the raw call.
#include "tools/import/sqlite_importer.h"

#include <unistd.h>

#include <algorithm>
#include <array>
#include <cctype>
#include <cstdio>
#include <cstdlib>
#include <utility>

namespace tools {
namespace {

constexpr int longestValue = 1 << 20;
constexpr int mostColumns = 200;

// Later versions of each table add columns, earlier ones lack some: all are read, by whatever name. The rows come as
// they lie there, which is by their identifiers; a hostile file gets nothing sorted.
constexpr std::array<SqliteImporter::Source, 4> sources{{
    {"call", "party", "party", "contact", "call.*, party.name, party.label",
     "call left join party on party.party = call.party", "a call log of this program", callOfOwnLog},
    {"ZCALLRECORD", "ZADDRESS", "ZCALLRECORD", "ZDATE", "*, cast(ZADDRESS as text) as ZADDRESS", "ZCALLRECORD",
     "a handset's CallHistory.storedata", callOfLaterStore},
    {"call", "flags", "call", "address", "*", "call", "a handset's call_history.db", callOfHandset},
    {"calls", "type", "calls", "number", "*", "calls", "an Android phone's calls", callOfAndroid},
}};

std::string uriOf(const std::filesystem::path& file) {
    std::string uri = "file:";
    for (const char letter : std::filesystem::absolute(file).string()) {
        if (std::isalnum(static_cast<unsigned char>(letter)) || letter == '/' || letter == '.' || letter == '-') {
            uri += letter;
            continue;
        }
        std::array<char, 4> code{};
        std::snprintf(code.data(), code.size(), "%%%02X", static_cast<unsigned>(static_cast<unsigned char>(letter)));
        uri += code.data();
    }
    return uri;
}

std::filesystem::path beside(const std::filesystem::path& file, const char* suffix) {
    return std::filesystem::path(file.string() + suffix);
}

/// Bytes; 0 where there is no file.
std::int64_t sizeOf(const std::filesystem::path& file) {
    std::error_code none;
    const auto size = std::filesystem::file_size(file, none);
    return none ? 0 : static_cast<std::int64_t>(size);
}

std::string hexText(const unsigned char* bytes, std::size_t count) {
    static constexpr char digits[] = "0123456789abcdef";
    std::string text;
    for (std::size_t i = 0; i < count; ++i) {
        text += digits[bytes[i] >> 4];
        text += digits[bytes[i] & 15];
    }
    return text;
}

/// A value as text; bytes that are not UTF-8 text as hexadecimal digits, long ones by their number.
std::string textOf(sqlite3_stmt* row, int column) {
    constexpr std::size_t mostBytes = 4096;
    if (sqlite3_column_type(row, column) == SQLITE_BLOB) {
        const auto count = static_cast<std::size_t>(sqlite3_column_bytes(row, column));
        if (count > mostBytes) return std::to_string(count) + " bytes";
        return hexText(static_cast<const unsigned char*>(sqlite3_column_blob(row, column)), count);
    }
    const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(row, column));
    return text ? std::string(text, static_cast<std::size_t>(sqlite3_column_bytes(row, column))) : std::string();
}

std::string quotedName(const std::string& name) {
    std::string quoted = "\"";
    for (const char letter : name) quoted += letter == '"' ? std::string("\"\"") : std::string(1, letter);
    return quoted + '"';
}

}  // namespace

std::variant<std::unique_ptr<Importer>, std::string> SqliteImporter::open(const std::filesystem::path& file) {
    std::unique_ptr<SqliteImporter> importer(new SqliteImporter(file));
    if (auto wrong = importer->begin(); !wrong.empty()) return wrong;
    return std::unique_ptr<Importer>(std::move(importer));
}

SqliteImporter::~SqliteImporter() {
    participants_.reset();
    rows_.reset();
    database_.reset();
    std::error_code ignored;
    if (!copy_.empty()) std::filesystem::remove_all(copy_, ignored);
}

std::string SqliteImporter::copyAside() {
    std::error_code trouble;
    std::string pattern = (std::filesystem::temp_directory_path(trouble) / "quorvelctl-XXXXXX").string();
    if (trouble || !mkdtemp(pattern.data())) return file_.string() + " cannot be copied: there is no folder for it.";
    copy_ = pattern;
    for (const char* suffix : {"", "-wal", "-journal"}) {
        if (!std::filesystem::exists(beside(file_, suffix))) continue;
        std::filesystem::copy_file(beside(file_, suffix), beside(copy_ / "calls", suffix), trouble);
        if (trouble) return beside(file_, suffix).string() + " cannot be copied: " + trouble.message() + '.';
        std::filesystem::permissions(beside(copy_ / "calls", suffix), std::filesystem::perms::owner_write,
                                     std::filesystem::perm_options::add, trouble);
    }
    return {};
}

std::string SqliteImporter::begin() {
    const bool hasJournal = sizeOf(beside(file_, "-wal")) > 0 || sizeOf(beside(file_, "-journal")) > 0;
    if (hasJournal)
        if (auto wrong = copyAside(); !wrong.empty()) return wrong;
    const auto uri = hasJournal ? uriOf(copy_ / "calls") : uriOf(file_) + "?immutable=1";
    sqlite3* opened = nullptr;
    const int access = hasJournal ? SQLITE_OPEN_READWRITE : SQLITE_OPEN_READONLY;
    const int code = sqlite3_open_v2(uri.c_str(), &opened, access | SQLITE_OPEN_URI, nullptr);
    database_.reset(opened);
    if (code != SQLITE_OK) return file_.string() + " cannot be read: " + trouble() + '.';
    // A database from elsewhere may define its tables by anything.
    sqlite3_db_config(opened, SQLITE_DBCONFIG_TRUSTED_SCHEMA, 0, nullptr);
    sqlite3_db_config(opened, SQLITE_DBCONFIG_DEFENSIVE, 1, nullptr);
    sqlite3_limit(opened, SQLITE_LIMIT_LENGTH, longestValue);
    sqlite3_limit(opened, SQLITE_LIMIT_COLUMN, mostColumns);
    // Rows take some bytes; a tree whose branches lead to one another would have more of them.
    most_ = sizeOf(file_) + sizeOf(beside(file_, "-wal"));
    limitWork();
    sqlite3_exec(opened, "pragma query_only = on; pragma cell_size_check = on", nullptr, nullptr, nullptr);

    for (const auto& source : sources) {
        if (!holds(source.table, source.column) || !holds(source.otherTable, source.otherColumn)) continue;
        source_ = &source;
        rows_ = prepare(std::string("select ") + source.table + ".rowid, " + source.columns + " from " + source.from +
                        " where " + source.table + ".rowid >= ?1");
        if (rows_) sqlite3_bind_int64(rows_.get(), 1, INT64_MIN);
        break;
    }
    const int wrong = sqlite3_errcode(opened);
    if (!rows_ && (source_ || (wrong != SQLITE_OK && wrong != SQLITE_DONE && wrong != SQLITE_ROW)))
        return file_.string() + " is a damaged database: " + trouble() + ". Copy it from the phone again.";
    if (!rows_)
        return file_.string() +
               " is a database without a table of calls. Those of handsets are named call, "
               "ZCALLRECORD or calls.";
    expected_ = integerOf(std::string("select count(*) from (select 1 from ") + source_->table + " limit " +
                          std::to_string(most_) + ')');
    if (source_->callOf == callOfLaterStore) prepareParticipants();
    return {};
}

/// So that no table, nor the lack of an index, takes more work than the file's size explains.
void SqliteImporter::limitWork() {
    constexpr int thousand = 1000;
    constexpr std::int64_t stepsOfAByte = 20;
    workLeft_ = participantsLeft_ = thousand + most_ * stepsOfAByte / thousand;
    sqlite3_progress_handler(
        database_.get(), thousand,
        [](void* self) {
            auto* importer = static_cast<SqliteImporter*>(self);
            auto& left = importer->isAtParticipants_ ? importer->participantsLeft_ : importer->workLeft_;
            return --left < 0 ? 1 : 0;
        },
        this);
}

std::string SqliteImporter::trouble() const {
    if (!database_) return "no memory";
    if (sqlite3_errcode(database_.get()) == SQLITE_INTERRUPT)
        return "reading it takes more work than its size explains";
    return sqlite3_errmsg(database_.get());
}

SqliteImporter::Query SqliteImporter::prepare(const std::string& text) {
    sqlite3_stmt* statement = nullptr;
    sqlite3_prepare_v2(database_.get(), text.c_str(), -1, &statement, nullptr);
    return Query(statement);
}

std::int64_t SqliteImporter::integerOf(const std::string& text) {
    const auto query = prepare(text);
    return query && sqlite3_step(query.get()) == SQLITE_ROW ? sqlite3_column_int64(query.get(), 0) : 0;
}

bool SqliteImporter::holds(const char* table, const char* column) {
    const std::string name = std::string("'") + table + '\'';
    return integerOf("select count(*) from sqlite_schema where type = 'table' and rootpage > 0 and name = " + name) ==
               1 &&
           integerOf("select count(*) from pragma_table_info(" + name + ") where name = '" + column + '\'') == 1 &&
           // Columns that are computed may take any time.
           integerOf("select count(*) from pragma_table_xinfo(" + name + ") where hidden in (2, 3)") == 0;
}

/// The join table's name and columns carry numbers that change with the version of the handset.
void SqliteImporter::prepareParticipants() {
    const auto names = prepare(
        "select t.name, c.name, h.name from sqlite_schema t, pragma_table_info(t.name) c, pragma_table_info(t.name) h "
        "where t.type = 'table' and t.rootpage > 0 and t.name glob 'Z_*REMOTEPARTICIPANTHANDLES' "
        "and c.name glob 'Z_*REMOTEPARTICIPANTCALLS' and h.name glob 'Z_*REMOTEPARTICIPANTHANDLES'");
    if (!holds("ZHANDLE", "ZVALUE") || !names || sqlite3_step(names.get()) != SQLITE_ROW) return;
    const auto table = quotedName(textOf(names.get(), 0));
    const auto calls = quotedName(textOf(names.get(), 1));
    const auto handles = quotedName(textOf(names.get(), 2));
    participants_ =
        prepare("select cast(ZHANDLE.ZVALUE as text) from " + table + " join ZHANDLE on ZHANDLE.Z_PK = " + table + '.' +
                handles + " where " + table + '.' + calls + " = ?1 order by ZHANDLE.Z_PK limit 100");
}

void SqliteImporter::addParticipants(RawCall& raw) {
    if (!participants_) return;
    sqlite3_bind_text(participants_.get(), 1, raw.at("Z_PK").c_str(), -1, SQLITE_TRANSIENT);
    std::string list;
    int count = 0;
    isAtParticipants_ = true;
    int code = SQLITE_ROW;
    while ((code = sqlite3_step(participants_.get())) == SQLITE_ROW) {
        list += (list.empty() ? "" : ", ") + textOf(participants_.get(), 0);
        ++count;
    }
    isAtParticipants_ = false;
    sqlite3_reset(participants_.get());
    if (code == SQLITE_INTERRUPT) {
        participants_.reset();
        complaint_ = Complaint{place(),
                               "From here on the other participants of calls are not read: the database lacks the "
                               "index by which they are found.",
                               Complaint::Reach::Call};
    }
    if (count == 1 && raw.at("ZADDRESS").empty()) {
        raw.set("ZADDRESS", list);
    } else if (count > 1 || (count == 1 && list != raw.at("ZADDRESS"))) {
        raw.set("participants", list);
    }
}

RawCall SqliteImporter::rawCall() const {
    RawCall raw;
    // Of columns of one name the last is the one that the statement adds.
    for (int column = 1; column < sqlite3_column_count(rows_.get()); ++column) {
        const char* given = sqlite3_column_name(rows_.get(), column);
        raw.set(given ? given : "", textOf(rows_.get(), column));
    }
    return raw;
}

/// Goes on behind the row that could not be read. Whether there is one, and its identifier can be read.
bool SqliteImporter::passRow() {
    const auto wrong = prepare(std::string("select rowid from ") + source_->table + " where rowid > ?1 limit 1");
    sqlite3_reset(rows_.get());
    if (!wrong || read_ >= most_) return false;
    // The first row has none before it.
    if (read_ == 0) {
        last_ = integerOf(std::string("select rowid from ") + source_->table + " order by rowid limit 1");
    } else {
        sqlite3_bind_int64(wrong.get(), 1, last_);
        if (sqlite3_step(wrong.get()) != SQLITE_ROW) return false;
        last_ = sqlite3_column_int64(wrong.get(), 0);
    }
    if (last_ == INT64_MAX) return false;
    ++read_;
    return sqlite3_bind_int64(rows_.get(), 1, last_ + 1) == SQLITE_OK;
}

Importer::Item SqliteImporter::next() {
    if (complaint_) return *std::exchange(complaint_, std::nullopt);
    if (ended_) return End{};
    const int code = sqlite3_step(rows_.get());
    if (code == SQLITE_TOOBIG && passRow())
        return Complaint{place(), "A value of this row is longer than a mebibyte.", Complaint::Reach::Call};
    if (code != SQLITE_ROW || read_ >= most_) {
        ended_ = true;
        if (code == SQLITE_DONE) return End{};
        const std::string what = code == SQLITE_ROW ? "its pages lead in circles" : trouble();
        return Complaint{place(),
                         "Behind this row the database is damaged: " + what + ". Copy it from the phone again.",
                         Complaint::Reach::Call};
    }
    ++read_;
    last_ = sqlite3_column_int64(rows_.get(), 0);
    RawCall raw = rawCall();
    addParticipants(raw);
    auto call = source_->callOf(std::move(raw));
    if (auto* wrong = std::get_if<std::string>(&call))
        return Complaint{place(), std::move(*wrong), Complaint::Reach::Call};
    return std::get<quorvel::store::NewCall>(std::move(call));
}

std::string SqliteImporter::place() const { return "row " + std::to_string(read_); }

double SqliteImporter::progress() const {
    return expected_ > 0 ? std::min(1.0, static_cast<double>(read_) / static_cast<double>(expected_)) : 0;
}

std::string SqliteImporter::format() const { return source_->format; }

}  // namespace tools
