// Comma-separated values (RFC 4180) read record by record, with the place of each field.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <span>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace tools {

/// A place in a text; lines and columns count from 1, columns in characters.
struct Place {
    std::int64_t line = 1;
    std::int64_t column = 1;
    friend bool operator==(const Place&, const Place&) = default;
};

struct CsvComplaint {
    Place place;
    std::string what;
};

struct CsvField {
    std::string text;  ///< Without its quotation marks.
    Place place;       ///< Of its first character, which may be a quotation mark.
};

struct CsvRecord {
    std::vector<CsvField> fields;
    Place end;  ///< Just behind the last field.
};

/// The character between the fields of the first line: a comma, a semicolon or a tab, whichever stands there most often
/// outside quotation marks.
char delimiterOf(std::string_view text);

/// Reads UTF-8 with or without a byte order mark; lines end in LF or CRLF, the last one perhaps in nothing; empty lines
/// are passed over. Holds one record at a time, of at most a mebibyte.
class CsvReader {
  public:
    /// Fills the buffer and answers how much it put there; 0 at the end. It throws what reading throws.
    using Source = std::function<std::size_t(std::span<char>)>;

    explicit CsvReader(Source source, char delimiter = ',') : source_(std::move(source)), delimiter_(delimiter) {}

    struct End {};
    /// The next record, or what is wrong with it. After a complaint reading goes on with the line below it.
    std::variant<CsvRecord, CsvComplaint, End> next();

    /// How many bytes were read so far.
    std::uint64_t bytesRead() const { return bytesRead_; }

  private:
    static constexpr int ended = -1;

    int peek();
    char take();
    bool atLineEnd();
    void passLineEnd();
    void passLine();
    void beginText();
    std::string readField(CsvField& field);
    std::string readQuoted(CsvField& field);
    std::string check(const CsvField& field);

    Source source_;
    char delimiter_;
    std::vector<char> buffer_;
    std::size_t at_ = 0;
    std::size_t filled_ = 0;
    std::uint64_t bytesRead_ = 0;
    bool begun_ = false;
    Place place_;
    Place wrong_;  // where the last complaint is
    std::size_t recordBytes_ = 0;
};

}  // namespace tools
