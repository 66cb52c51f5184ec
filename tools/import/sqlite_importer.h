// Calls from the databases of handsets: by the table that is there.
#pragma once

#include <sqlite3.h>

#include <cstdint>
#include <memory>
#include <optional>

#include "tools/import/importer.h"
#include "tools/import/raw_call.h"

namespace tools {

/// The rows of the one table that holds calls, as they lie there. The file is opened as one that nobody changes, so
/// that nothing appears beside it; where it has a journal of changes, a private copy of both is read.
class SqliteImporter : public Importer {
  public:
    /// An importer, or why there is none.
    static std::variant<std::unique_ptr<Importer>, std::string> open(const std::filesystem::path& file);
    ~SqliteImporter() override;

    Item next() override;
    std::string place() const override;
    double progress() const override;
    std::string format() const override;

    /// A table that holds calls, and what its rows mean.
    struct Source {
        const char* table;
        const char* column;  ///< Tells it from other tables of that name.
        const char* otherTable;
        const char* otherColumn;  ///< The same of what else has to be there.
        const char* columns;      ///< What a row is made of, behind its identifier.
        const char* from;
        const char* format;
        CallOrWrong (*callOf)(RawCall);
    };

  private:
    struct Close {
        void operator()(sqlite3* database) const { sqlite3_close_v2(database); }
    };
    struct Finalize {
        void operator()(sqlite3_stmt* statement) const { sqlite3_finalize(statement); }
    };
    using Query = std::unique_ptr<sqlite3_stmt, Finalize>;

    explicit SqliteImporter(std::filesystem::path file) : file_(std::move(file)) {}
    /// Empty where the file is ready to be read.
    std::string begin();
    std::string copyAside();
    bool holds(const char* table, const char* column);
    Query prepare(const std::string& text);
    std::int64_t integerOf(const std::string& text);
    RawCall rawCall() const;
    bool passRow();
    void prepareParticipants();
    void addParticipants(RawCall& raw);
    void limitWork();
    std::string trouble() const;

    std::filesystem::path file_;
    std::filesystem::path copy_;  ///< The folder of the private copy; empty for none.
    std::unique_ptr<sqlite3, Close> database_;
    const Source* source_ = nullptr;
    Query rows_;
    Query participants_;
    std::int64_t expected_ = 0;
    std::int64_t most_ = 0;
    std::int64_t read_ = 0;
    std::int64_t last_ = 0;  ///< The identifier of the row read last.
    /// Thousands of steps that SQLite may still take, for everything and for the participants of calls alone.
    std::int64_t workLeft_ = 0, participantsLeft_ = 0;
    bool isAtParticipants_ = false;
    std::optional<Complaint> complaint_;  ///< Comes before the next row.
    bool ended_ = false;
};

}  // namespace tools
