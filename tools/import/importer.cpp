// Choosing the importer of a file by how it begins.
#include "tools/import/importer.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <fstream>

#include "tools/import/csv_importer.h"
#include "tools/import/json_importer.h"
#include "tools/import/sqlite_importer.h"
#include "tools/import/voice_importer.h"
#include "tools/import/xml_importer.h"
#include "tools/text/words.h"

namespace tools {
namespace {

using Opened = std::variant<std::unique_ptr<Importer>, std::string>;

constexpr const char* known =
    "Calls are read from a handset's call_history.db or CallHistory.storedata, Android's calllog.db or contacts2.db, "
    "\"SMS Backup & Restore\" XML, Google Voice HTML, this program's own log and JSON, and comma-separated values.";

/// What a file is that holds no calls; empty where that is not certain.
std::string otherFormatOf(std::string_view head) {
    static constexpr std::array<std::pair<std::string_view, const char*>, 8> others{{
        {"PK\x03\x04", "is an archive. Unpack it, and name the files inside."},
        {"\x1F\x8B", "is compressed. Unpack it first."},
        {"7z\xBC\xAF", "is an archive. Unpack it, and name the files inside."},
        {"BZh", "is compressed. Unpack it first."},
        {"\xFD"
         "7zXZ",
         "is compressed. Unpack it first."},
        {"bplist00", "is a binary property list, which holds no calls."},
        {"ID3", "is a sound recording."},
        {"%PDF", "is a PDF document."},
    }};
    const auto found =
        std::find_if(others.begin(), others.end(), [&](const auto& each) { return head.starts_with(each.first); });
    return found == others.end() ? std::string() : found->second;
}

/// The head without a byte order mark and the zeros of two-byte letters, up to white space.
std::string textOf(std::string_view head) {
    std::string text;
    for (const char letter : head)
        if (letter != '\0') text += letter;
    for (const std::string_view mark : {"\xEF\xBB\xBF", "\xFF\xFE", "\xFE\xFF"})
        if (text.starts_with(mark)) text.erase(0, mark.size());
    text.erase(0, text.find_first_not_of(" \t\r\n"));
    return text;
}

}  // namespace

Opened openImporter(const std::filesystem::path& file, const ImportOptions& options) {
    std::error_code unknown;
    if (std::filesystem::is_directory(file, unknown)) return file.string() + " is a folder. Name a file.";
    if (!std::ifstream(file)) return file.string() + " cannot be read: " + std::strerror(errno) + '.';
    InputFile input(file);
    const auto head = input.head();
    if (head.starts_with(std::string_view("SQLite format 3\0", 16))) return SqliteImporter::open(file);
    if (auto other = otherFormatOf(head); !other.empty()) return file.string() + ' ' + other;
    const std::string text = lowerCase(textOf(head));
    if (text.starts_with("begin:vcard"))
        return file.string() + " holds contacts. Read it with: quorvelctl contacts import";
    if (text.starts_with('{')) return std::make_unique<JsonImporter>(std::move(input));
    if (text.starts_with('['))
        return file.string() + " is JSON of another program. This one reads JSON that it exported itself.";
    if (text.starts_with('<') &&
        (text.find("<!doctype html") != std::string::npos || text.find("<html") != std::string::npos))
        return std::make_unique<VoiceImporter>(std::move(input));
    if (text.starts_with('<')) return std::make_unique<XmlImporter>(std::move(input));
    const bool isWide = head.starts_with("\xFF\xFE") || head.starts_with("\xFE\xFF");
    if (!isWide && head.find('\0') != std::string_view::npos) return file.string() + " is no file of calls. " + known;
    return std::make_unique<CsvImporter>(std::move(input), options);
}

}  // namespace tools
