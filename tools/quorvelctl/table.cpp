// The lines of a table.
#include "tools/quorvelctl/table.h"

#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <ctime>

namespace tools {
namespace {

std::string withoutControls(std::string text) {
    std::replace_if(
        text.begin(), text.end(), [](unsigned char byte) { return byte < 0x20 || byte == 0x7F; }, ' ');
    return text;
}

/// How many characters of UTF-8 the text has.
std::size_t lengthOf(std::string_view text) {
    return static_cast<std::size_t>(
        std::count_if(text.begin(), text.end(), [](unsigned char byte) { return (byte & 0xC0) != 0x80; }));
}

}  // namespace

std::string alignedLine(const std::vector<Column>& columns, const std::vector<std::string>& cells) {
    std::string line;
    std::size_t end = 0;
    for (std::size_t i = 0; i < cells.size(); ++i) {
        const std::string cell = withoutControls(cells[i]);
        line += cell;
        end += columns[i].width + 2;
        const std::size_t length = lengthOf(line);
        line.append(length + 2 <= end ? end - length : 2, ' ');
    }
    line.erase(line.find_last_not_of(' ') + 1);
    return line;
}

std::string tabbedLine(const std::vector<std::string>& cells) {
    std::string line;
    for (std::size_t i = 0; i < cells.size(); ++i) {
        if (i > 0) line += '\t';
        line += withoutControls(cells[i]);
    }
    return line;
}

Table::Table(std::vector<Column> columns) : columns_(std::move(columns)), isTerminal_(isatty(STDOUT_FILENO) != 0) {
    if (!isTerminal_) return;
    std::vector<std::string> titles;
    for (const auto& column : columns_) titles.emplace_back(column.title);
    row(titles);
}

void Table::row(const std::vector<std::string>& cells) const {
    std::puts((isTerminal_ ? alignedLine(columns_, cells) : tabbedLine(cells)).c_str());
}

std::string localTime(std::int64_t seconds) {
    const auto time = static_cast<std::time_t>(seconds);
    std::tm local{};
    localtime_r(&time, &local);
    char text[32];
    return {text, std::strftime(text, sizeof text, "%Y-%m-%d %H:%M:%S", &local)};
}

}  // namespace tools
