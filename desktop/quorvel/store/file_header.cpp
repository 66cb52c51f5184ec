// The first bytes of a log, looked at before SQLite reads them: it does not tell one wrong byte from another program's
// file, and takes some for an order to leave the file alone.
#include <array>
#include <bit>
#include <fstream>

#include "desktop/quorvel/store/schema.h"

namespace quorvel::store {
namespace {

constexpr std::size_t headerSize = 100;
using Header = std::array<unsigned char, headerSize>;

constexpr std::string_view magic("SQLite format 3\0", 16);
constexpr std::string_view ownApplication = "Quor";

std::uint32_t numberAt(const Header& header, std::size_t at) {
    return std::uint32_t{header[at]} << 24U | std::uint32_t{header[at + 1]} << 16U |
           std::uint32_t{header[at + 2]} << 8U | header[at + 3];
}

bool saysAt(const Header& header, std::size_t at, std::string_view words) {
    return std::string_view(reinterpret_cast<const char*>(header.data()) + at, words.size()) == words;
}

/// Whether the fields that SQLite reads a file by have values of a log. Those of one that is being made are 0.
bool isReadable(const Header& header) {
    const unsigned pageSize = unsigned{header[16]} << 8U | header[17];
    const bool isPageSize = pageSize == 1 || (pageSize >= 512 && std::has_single_bit(pageSize));
    // They differ for a moment while another process turns the write-ahead log on.
    const bool isVersion = header[18] >= 1 && header[18] <= 2 && header[19] >= 1 && header[19] <= 2;
    const bool isPayload = header[20] == 0 && header[21] == 64 && header[22] == 32 && header[23] == 32;
    return isPageSize && isVersion && isPayload && numberAt(header, 44) <= 4 && numberAt(header, 56) <= 1;
}

}  // namespace

void checkHeader(const std::filesystem::path& path) {
    std::error_code ignored;
    const auto status = std::filesystem::status(path, ignored);
    if (!std::filesystem::exists(status)) return;
    if (!std::filesystem::is_regular_file(status)) {
        throw Failure{
            {ErrorKind::unreadable, "The call log " + path.string() + " is not a file. Choose another name for it."}};
    }
    std::ifstream file(path, std::ios::binary);
    if (!file) throw failureOf(SQLITE_CANTOPEN, "it cannot be opened", path);
    Header header{};
    file.read(reinterpret_cast<char*>(header.data()), headerSize);
    const auto size = static_cast<std::size_t>(file.gcount());
    if (size == 0) {
        // SQLite would take the empty file for a new one and delete the write-ahead log with all that is in it.
        std::filesystem::path log = path;
        log += "-wal";
        const auto written = std::filesystem::file_size(log, ignored);
        if (!ignored && written > 0) throw failureOf(SQLITE_CORRUPT, "it is empty, but not what belongs to it", path);
        return;
    }
    const bool isDatabase = saysAt(header, 0, magic.substr(0, std::min(size, magic.size())));
    const bool isOwn = saysAt(header, 68, ownApplication);
    if (!isDatabase && !isOwn && header != Header{}) {
        throw Failure{{ErrorKind::foreign,
                       "The file " + path.string() + " is not a call log. Choose another file; it was left as it is."}};
    }
    if (size < headerSize) throw failureOf(SQLITE_CORRUPT, "it is cut off", path);
    if (!isDatabase || (isOwn && !isReadable(header))) throw failureOf(SQLITE_CORRUPT, "its header is damaged", path);
}

}  // namespace quorvel::store
