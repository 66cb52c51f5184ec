// Dates as people write them: numbers, names of months and marks of the half of the day, in the order they come.
#include <algorithm>
#include <array>
#include <utility>
#include <vector>

#include "tools/import/written_fields.h"

namespace tools {
namespace {

constexpr std::int64_t leastMilliseconds = 1'000'000'000'000;

constexpr std::array<std::pair<std::string_view, int>, 28> months{
    {{"jan", 1},  {"feb", 2},  {"mar", 3},  {"mär", 3},  {"mrz", 3},  {"apr", 4},  {"avr", 4},
     {"may", 5},  {"mai", 5},  {"jun", 6},  {"juin", 6}, {"jul", 7},  {"juil", 7}, {"aug", 8},
     {"août", 8}, {"aou", 8},  {"ago", 8},  {"sep", 9},  {"oct", 10}, {"okt", 10}, {"nov", 11},
     {"dec", 12}, {"dez", 12}, {"déc", 12}, {"dic", 12}, {"fév", 2},  {"janv", 1}, {"ene", 1}}};
constexpr std::array<std::string_view, 14> weekdays{"mon",        "tue",     "wed",     "thu",      "fri",
                                                    "sat",        "sun",     "montag",  "dienstag", "mittwoch",
                                                    "donnerstag", "freitag", "samstag", "sonntag"};

/// A number with what stands before it, or a word.
struct Token {
    std::string word;
    int number = -1;
    std::size_t digits = 0;
    char before = ' ';
    bool isNumber() const { return number >= 0; }
};

bool isDigit(char letter) { return letter >= '0' && letter <= '9'; }
bool isLetter(char letter) {
    return (letter >= 'A' && letter <= 'Z') || (letter >= 'a' && letter <= 'z') ||
           static_cast<unsigned char>(letter) >= 0x80;
}

std::vector<Token> tokensOf(std::string_view text) {
    std::vector<Token> tokens;
    char before = ' ';
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t begin = at;
        Token token;
        token.before = before;
        if (isDigit(text[at])) {
            while (at < text.size() && isDigit(text[at])) ++at;
            token.digits = at - begin;
            if (token.digits > 9) return {};
            token.number = static_cast<int>(*parseInteger(text.substr(begin, token.digits)));
            before = ' ';
            tokens.push_back(token);
        } else if (isLetter(text[at])) {
            while (at < text.size() && isLetter(text[at])) ++at;
            token.word = bareWord(text.substr(begin, at - begin));
            before = ' ';
            tokens.push_back(token);
        } else {
            if (text[at] != ' ') before = text[at];
            ++at;
        }
    }
    return tokens;
}

int monthOf(std::string_view word) {
    const auto found =
        std::find_if(months.begin(), months.end(), [&](const auto& each) { return word.starts_with(each.first); });
    return found == months.end() ? 0 : found->second;
}

bool isWeekday(std::string_view word) {
    return std::any_of(weekdays.begin(), weekdays.end(), [&](auto each) { return word.starts_with(each); });
}

/// The same moment as parseTime reads it; empty where the parts make no date.
std::string isoOf(int year, int month, int day, const std::vector<int>& clock, const std::string& zone) {
    const auto twoDigits = [](int number) { return (number < 10 ? "0" : "") + std::to_string(number); };
    const bool isDate = year >= 1900 && year < 10000 && month >= 1 && month <= 12 && day >= 1 && day <= 31;
    const bool isClock = clock.empty() || (clock[0] < 24 && clock[1] < 60 && (clock.size() == 2 || clock[2] < 61));
    if (!isDate || !isClock) return {};
    std::string iso = std::to_string(year) + '-' + twoDigits(month) + '-' + twoDigits(day);
    for (std::size_t at = 0; at < clock.size(); ++at) iso += (at == 0 ? 'T' : ':') + twoDigits(clock[at]);
    return clock.empty() ? iso : iso + zone;
}

/// Sorts tokens into a date's parts, one by one.
class Parts {
  public:
    explicit Parts(DateOrder order) : order_(order) {}

    bool take(const Token& token) {
        if (!token.isNumber()) return takeWord(token.word);
        if (date_.size() + (month_ > 0 ? 1 : 0) < 3) {
            date_.push_back(token);
            return true;
        }
        // A fraction of a second counts for nothing.
        if (clock_.size() == 3 && (token.before == '.' || token.before == ',')) return true;
        if (clock_.size() == 3 || token.digits > 2 || hasHalf_ || !zone_.empty()) return false;
        if (!clock_.empty() && token.before != ':' && token.before != '.') return false;
        clock_.push_back(token.number);
        return true;
    }

    std::string iso() {
        if (clock_.size() == 1 && !hasHalf_) return {};
        if (clock_.size() == 1) clock_.push_back(0);
        if (hasHalf_ && (clock_.empty() || clock_[0] < 1 || clock_[0] > 12)) return {};
        if (hasHalf_) clock_[0] = clock_[0] % 12 + (isAfternoon_ ? 12 : 0);
        const std::size_t needed = month_ > 0 ? 2 : 3;
        if (date_.size() != needed) return {};
        return isoOf(yearOf(yearFirst() ? date_[0] : date_.back()), monthNumber(), dayNumber(), clock_, zone_);
    }

  private:
    bool takeWord(const std::string& word) {
        if (word == "am" || word == "pm") {
            isAfternoon_ = word == "pm";
            return !std::exchange(hasHalf_, true);
        }
        if (word == "utc" || word == "gmt" || word == "z") {
            zone_ = "Z";
            return true;
        }
        if (word == "uhr" || word == "at" || word == "um" || word == "t") return true;
        if (const int month = monthOf(word); month > 0 && month_ == 0) {
            month_ = month;
            return true;
        }
        return isWeekday(word) || word == "th" || word == "st" || word == "nd" || word == "rd";
    }
    bool yearFirst() const { return date_[0].digits == 4; }
    static int yearOf(const Token& token) { return token.digits == 2 ? 2000 + token.number : token.number; }
    bool monthFirst() const { return order_ == DateOrder::MonthFirst && date_[1].before != '.'; }
    int monthNumber() const {
        if (month_ > 0) return month_;
        return yearFirst() || !monthFirst() ? date_[1].number : date_[0].number;
    }
    int dayNumber() const {
        if (month_ > 0) return yearFirst() ? date_[1].number : date_[0].number;
        return yearFirst() ? date_[2].number : monthFirst() ? date_[1].number : date_[0].number;
    }

    DateOrder order_;
    std::vector<Token> date_;
    std::vector<int> clock_;
    int month_ = 0;
    bool hasHalf_ = false;
    bool isAfternoon_ = false;
    std::string zone_;
};

}  // namespace

std::optional<std::int64_t> parseWrittenTime(std::string_view text, LocalClock& clock, DateOrder order) {
    if (text.size() > longestField) return std::nullopt;
    if (const auto number = parseInteger(text); number && *number >= leastMilliseconds) return *number / 1000;
    if (const auto time = parseTime(text, clock)) return time;
    std::string spaced(text);
    for (const std::string_view space : {"\u00A0", "\u202F"})
        for (auto at = spaced.find(space); at != std::string::npos; at = spaced.find(space, at))
            spaced.replace(at, space.size(), 1, ' ');
    Parts parts(order);
    for (const Token& token : tokensOf(spaced))
        if (!parts.take(token)) return std::nullopt;
    const std::string iso = parts.iso();
    return iso.empty() ? std::nullopt : parseTime(iso, clock);
}

}  // namespace tools
