// The lines of a vCard file, whatever ends them and however its bytes are ordered; and the long lines that fold over
// several of them.
#pragma once

#include <istream>
#include <optional>
#include <string>
#include <vector>

#include "desktop/addressbook/vcard.h"

namespace vcard {

/// Reads physical lines. A line ends at LF, at any number of CR, or at both. Marks of the byte order are taken off, and
/// UTF-16 comes as UTF-8.
class PhysicalLines {
  public:
    /// What a line has beyond `longest` bytes is dropped.
    PhysicalLines(std::istream& stream, std::size_t longest);

    /// The next line without taking it; null at the end.
    const std::string* peek();
    std::string take();
    /// Whether the line that peek() answers was longer than allowed. After peek().
    bool wasCut() const { return wasCut_; }
    /// The number of the line that peek() answers, from 1.
    std::size_t number() const { return number_; }

  private:
    enum class Order { bytes, littleEndian, bigEndian };

    void detectOrder();
    int nextByte();
    /// A byte, or the first byte of a character's UTF-8 with the others in pending_; -1 at the end.
    int next();
    int unit();
    void append(int byte);
    bool read();

    std::streambuf& stream_;
    const std::size_t longest_;
    Order order_ = Order::bytes;
    std::string pending_;  // read already, next byte last
    std::optional<std::string> line_;
    std::size_t number_ = 0;
    bool wasCut_ = false;
};

/// A content line: one property, put together from the physical lines that it folds over.
struct ContentLine {
    std::string text;
    bool isCut = false;  ///< longer than allowed; the rest is missing

    /// Where a byte of the text stands in the file.
    Position position(std::size_t offset) const;

    struct Piece {
        std::size_t offset;
        Position position;
    };
    std::vector<Piece> pieces;
};

/// The next content line, or nothing at the end; empty lines are passed over. Folds of version 2.1 keep their blank.
std::optional<ContentLine> nextContentLine(PhysicalLines& lines, Version version, std::size_t longest);

/// Where the header of a content line ends: the first colon outside quotes, or, where a quote is not closed, the first
/// colon of all. npos where there is none.
std::size_t endOfHeader(std::string_view line);

}  // namespace vcard
