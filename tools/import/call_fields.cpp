// Numbers, times and kinds of calls from text.
#include "tools/import/call_fields.h"

#include <algorithm>
#include <charconv>
#include <ctime>
#include <string>

#include "tools/text/words.h"

namespace tools {
namespace {

/// Takes text apart from the left.
class Scanner {
  public:
    explicit Scanner(std::string_view text) : text_(text) {}
    /// Exactly that many digits.
    std::optional<int> digits(std::size_t count) {
        if (text_.size() < count) return std::nullopt;
        int value = 0;
        for (char digit : text_.substr(0, count)) {
            if (digit < '0' || digit > '9') return std::nullopt;
            value = value * 10 + (digit - '0');
        }
        text_.remove_prefix(count);
        return value;
    }
    bool accept(std::string_view any) {
        if (text_.empty() || any.find(text_.front()) == std::string_view::npos) return false;
        last_ = text_.front();
        text_.remove_prefix(1);
        return true;
    }
    char last() const { return last_; }
    void passDigits() { text_.remove_prefix(std::min(text_.find_first_not_of("0123456789"), text_.size())); }
    bool atEnd() const { return text_.empty(); }

  private:
    std::string_view text_;
    char last_ = 0;
};

bool isDate(const std::tm& time) {
    static constexpr int lengths[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    const int year = time.tm_year + 1900;
    const bool leap = (year % 4 == 0 && year % 100 != 0) || year % 400 == 0;
    if (time.tm_mon < 0 || time.tm_mon > 11 || time.tm_mday < 1) return false;
    return time.tm_mday <= lengths[time.tm_mon] + (leap && time.tm_mon == 1 ? 1 : 0);
}

/// "12:00", "12:00:30", "12:00:30.5".
bool readClock(Scanner& scanner, std::tm& time) {
    const auto hour = scanner.digits(2);
    if (!hour || !scanner.accept(":")) return false;
    const auto minute = scanner.digits(2);
    if (!minute) return false;
    int second = 0;
    if (scanner.accept(":")) {
        const auto read = scanner.digits(2);
        if (!read) return false;
        second = *read;
        if (scanner.accept(".,")) scanner.passDigits();
    }
    time.tm_hour = *hour;
    time.tm_min = *minute;
    time.tm_sec = second;
    return *hour < 24 && *minute < 60 && second < 61;
}

/// Seconds east of Greenwich; nothing for an offset that is none.
std::optional<int> readOffset(Scanner& scanner) {
    if (scanner.accept("Zz")) return 0;
    if (!scanner.accept("+-")) return std::nullopt;
    const int sign = scanner.last() == '-' ? -1 : 1;
    const auto hours = scanner.digits(2);
    if (!hours) return std::nullopt;
    int minutes = 0;
    if (scanner.accept(":") || !scanner.atEnd()) {
        const auto read = scanner.digits(2);
        if (!read) return std::nullopt;
        minutes = *read;
    }
    return sign * (*hours * 60 + minutes) * 60;
}

}  // namespace

std::optional<std::int64_t> parseInteger(std::string_view text) {
    std::int64_t value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc() || end != text.data() + text.size()) return std::nullopt;
    return value;
}

std::optional<std::int64_t> parseTime(std::string_view text, LocalClock& clock) {
    if (const auto seconds = parseInteger(text)) return seconds;
    Scanner scanner(text);
    std::tm time{};
    const auto year = scanner.digits(4);
    if (!year || !scanner.accept("-")) return std::nullopt;
    const auto month = scanner.digits(2);
    if (!month || !scanner.accept("-")) return std::nullopt;
    const auto day = scanner.digits(2);
    if (!day) return std::nullopt;
    time.tm_year = *year - 1900;
    time.tm_mon = *month - 1;
    time.tm_mday = *day;
    if (!isDate(time)) return std::nullopt;
    if (!scanner.atEnd() && (!scanner.accept("Tt ") || !readClock(scanner, time))) return std::nullopt;
    if (scanner.atEnd()) return clock.secondsOf(time);
    scanner.accept(" ");
    const auto offset = readOffset(scanner);
    if (!offset || !scanner.atEnd()) return std::nullopt;
    return static_cast<std::int64_t>(timegm(&time)) - *offset;
}

std::optional<CallKind> parseKind(std::string_view text) {
    const std::string word = lowerCase(text);
    if (word == "dialled" || word == "dialed") return CallKind::Dialled;
    if (word == "cancelled" || word == "canceled") return CallKind::Cancelled;
    if (word == "received") return CallKind::Received;
    if (word == "missed") return CallKind::Missed;
    return std::nullopt;
}

}  // namespace tools
