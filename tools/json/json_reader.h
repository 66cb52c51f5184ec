// JSON read from the left, value by value, without holding more than one text of it.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace tools {

/// Each function that reads answers false, or nothing, where the text is not as asked; `trouble` then says what is
/// wrong with it, unless it may be read otherwise. After trouble nothing more can be read.
class JsonReader {
  public:
    /// Fills the space and answers how much it put there; 0 at the end.
    using Source = std::function<std::size_t(std::span<char>)>;

    explicit JsonReader(Source source) : source_(std::move(source)) {}

    /// The character that comes next behind white space; 0 at the end.
    char next();
    /// Takes the character, one of those that stand between values, where it comes next; without trouble where not.
    bool take(char mark);
    /// The same, with trouble.
    bool expect(char mark);
    /// A text as UTF-8; halves of pairs become U+FFFD. Nothing, without trouble, for one that is longer than a
    /// mebibyte, which is passed.
    std::optional<std::string> text();
    /// The name of a member and the colon behind it; of a name that is longer than a mebibyte that much.
    std::optional<std::string> name();
    /// A number that is whole, as 64 bits hold it; nothing, without trouble, for another number or value, which is
    /// passed.
    std::optional<std::int64_t> integer();
    /// Passes any value.
    bool pass();

    /// What is wrong with the text; empty for nothing so far.
    const std::string& trouble() const { return trouble_; }
    /// Where reading has come to, as "line:column".
    std::string place() const { return std::to_string(line_) + ':' + std::to_string(column_); }

  private:
    int peek();
    char takeByte();
    bool fail(std::string what);
    bool readEscape(std::string& text);
    std::optional<unsigned> readUnit();
    /// The text up to a mebibyte and a few bytes; nothing after trouble.
    std::optional<std::string> beginningOfText();
    bool passText();
    std::string word();

    Source source_;
    std::vector<char> buffer_;
    std::size_t at_ = 0;
    std::size_t filled_ = 0;
    std::int64_t line_ = 1;
    std::int64_t column_ = 1;
    std::string trouble_;
};

}  // namespace tools
