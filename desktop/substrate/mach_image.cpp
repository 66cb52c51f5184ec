// Reading the header and the load commands. Every number comes from a file that may be damaged or hostile.
#include "desktop/substrate/mach_image.h"

#include <algorithm>
#include <cstring>
#include <optional>

namespace substrate::mach {
namespace {

constexpr std::uint32_t magic64 = 0xFEEDFACF;
constexpr std::uint32_t dynamicLibrary = 6;
constexpr std::uint32_t bundle = 8;
constexpr std::uint64_t pageSize = 4096;
/// More than any plug-in needs; it keeps a damaged size from taking all memory.
constexpr std::uint64_t greatestExtent = std::uint64_t{1} << 30;

enum Command : std::uint32_t {
    loadLibrary = 0xC,
    identity = 0xD,
    segment64 = 0x19,
    encryption = 0x21,
    weakLibrary = 0x80000018,
    libraryForExport = 0x8000001F,
    encryption64 = 0x2C,
    fixUps = 0x22,
    fixUpsOnly = 0x80000022,
    chainedFixUps = 0x80000034,
};

struct Header {
    std::uint32_t magic, processor, variant, kind, commands, commandBytes, flags, reserved;
};
struct CommandHeader {
    std::uint32_t kind, size;
};
struct SegmentCommand {
    std::uint32_t kind, size;
    char name[16];
    std::uint64_t address, memorySize, fileOffset, fileSize;
    std::uint32_t greatestProtection, protection, sections, flags;
};
struct SectionHeader {
    char name[16], segment[16];
    std::uint64_t address, size;
    std::uint32_t offset, alignment, relocationOffset, relocations, flags, reserved1, reserved2, reserved3;
};
struct FixUpsCommand {
    std::uint32_t kind, size, rebaseOffset, rebaseSize, bindOffset, bindSize, weakOffset, weakSize, lazyOffset,
        lazySize, exportOffset, exportSize;
};
struct EncryptionCommand {
    std::uint32_t kind, size, offset, length, system;
};
struct LibraryCommand {
    std::uint32_t kind, size, nameOffset, timestamp, currentVersion, compatibleVersion;
};

template <class T>
std::optional<T> read(Bytes bytes, std::uint64_t offset) {
    if (offset > bytes.size() || bytes.size() - offset < sizeof(T)) return std::nullopt;
    T value;
    std::memcpy(&value, bytes.data() + offset, sizeof value);
    return value;
}

std::optional<Bytes> part(Bytes bytes, std::uint64_t offset, std::uint64_t size) {
    if (offset > bytes.size() || size > bytes.size() - offset) return std::nullopt;
    return bytes.subspan(offset, size);
}

template <std::size_t length>
std::string nameOf(const char (&name)[length]) {
    return {name, strnlen(name, length)};
}

constexpr const char* cutShort = "is cut short";
constexpr const char* damaged = "is damaged";

/// Reads one file; each step answers what is wrong, or nothing.
class Parser {
  public:
    Parser(Bytes file, Processor wanted) : file_(file), wanted_(wanted) {}

    std::string run() {
        const auto header = read<Header>(file_, 0);
        if (!header) return cutShort;
        if (header->magic != magic64) return "is no Mach-O image of 64 bits";
        if (header->processor != static_cast<std::uint32_t>(wanted_)) return "is for another processor";
        if (header->kind != dynamicLibrary && header->kind != bundle) return "is no dynamic library";
        const auto commands = part(file_, sizeof(Header), header->commandBytes);
        if (!commands) return cutShort;
        std::uint64_t at = 0;
        for (std::uint32_t i = 0; i < header->commands; ++i) {
            const auto command = read<CommandHeader>(*commands, at);
            if (!command || command->size < sizeof(CommandHeader) || command->size % 8 != 0) return damaged;
            const auto bytes = part(*commands, at, command->size);
            if (!bytes) return damaged;
            if (auto trouble = take(command->kind, *bytes); !trouble.empty()) return trouble;
            at += command->size;
        }
        return placeSegments();
    }
    Image image;

  private:
    std::string take(std::uint32_t kind, Bytes command) {
        switch (kind) {
            case segment64:
                return takeSegment(command);
            case fixUps:
            case fixUpsOnly:
                return takeFixUps(command);
            case identity:
            case loadLibrary:
            case weakLibrary:
            case libraryForExport:
                return takeLibrary(kind, command);
            case encryption:
            case encryption64:
                return takeEncryption(command);
            case chainedFixUps:
                return "has fix-ups of a form that is not read here; link it with -no_fixup_chains";
            default:
                return {};
        }
    }

    std::string takeSegment(Bytes command) {
        constexpr std::uint32_t writing = 2;
        constexpr std::uint32_t executing = 4;
        const auto header = read<SegmentCommand>(command, 0);
        if (!header) return damaged;
        const auto content = part(file_, header->fileOffset, header->fileSize);
        if (!content) return cutShort;
        if (header->fileSize > header->memorySize || header->address % pageSize != 0) return damaged;
        if (header->memorySize > greatestExtent || header->address > UINT64_MAX - 2 * greatestExtent) return damaged;
        image.segments.push_back({nameOf(header->name), header->address, header->memorySize, *content,
                                  (header->protection & writing) != 0, (header->protection & executing) != 0});
        for (std::uint32_t i = 0; i < header->sections; ++i) {
            const auto section = read<SectionHeader>(command, sizeof(SegmentCommand) + i * sizeof(SectionHeader));
            if (!section) return damaged;
            if (auto trouble = takeSection(*section, image.segments.back()); !trouble.empty()) return trouble;
        }
        return {};
    }

    std::string takeSection(const SectionHeader& section, const Segment& segment) {
        constexpr std::uint32_t kindBits = 0xFF;
        constexpr std::uint32_t initialiserPointers = 9;
        constexpr std::uint32_t threadVariables = 0x13;
        const std::uint32_t kind = section.flags & kindBits;
        if (kind == threadVariables) return "has variables of threads, which are not set up here";
        if (kind != initialiserPointers) return {};
        const std::uint64_t offset = section.address - segment.address;
        if (section.address < segment.address || offset > segment.size || section.size > segment.size - offset ||
            section.size % 8 != 0 || section.address % 8 != 0)
            return damaged;
        image.initialisers.push_back({section.address, section.size / 8});
        return {};
    }

    std::string takeFixUps(Bytes command) {
        const auto header = read<FixUpsCommand>(command, 0);
        if (!header) return damaged;
        const auto rebases = part(file_, header->rebaseOffset, header->rebaseSize);
        const auto binds = part(file_, header->bindOffset, header->bindSize);
        const auto lazyBinds = part(file_, header->lazyOffset, header->lazySize);
        if (!rebases || !binds || !lazyBinds) return cutShort;
        if (header->weakSize > 0) return "has weak fix-ups, which are not read here";
        image.rebases = *rebases;
        image.binds = *binds;
        image.lazyBinds = *lazyBinds;
        return {};
    }

    /// Room for encryption is announced by every image for the handset; a system of 0 means that it is not used.
    static std::string takeEncryption(Bytes command) {
        const auto header = read<EncryptionCommand>(command, 0);
        if (!header) return damaged;
        return header->system == 0 ? "" : "is encrypted";
    }

    std::string takeLibrary(std::uint32_t kind, Bytes command) {
        const auto header = read<LibraryCommand>(command, 0);
        if (!header || header->nameOffset > command.size()) return damaged;
        const auto* begin = reinterpret_cast<const char*>(command.data()) + header->nameOffset;
        std::string name(begin, strnlen(begin, command.size() - header->nameOffset));
        if (kind == identity)
            image.installName = std::move(name);
        else
            image.libraries.push_back(std::move(name));
        return {};
    }

    std::string placeSegments() {
        if (image.segments.empty()) return damaged;
        std::vector<std::pair<std::uint64_t, std::uint64_t>> ranges;
        for (const auto& segment : image.segments) ranges.emplace_back(segment.address, segment.address + segment.size);
        std::sort(ranges.begin(), ranges.end());
        for (std::size_t i = 1; i < ranges.size(); ++i)
            if (ranges[i].first < ranges[i - 1].second) return damaged;
        image.lowest = ranges.front().first;
        const std::uint64_t extent = ranges.back().second - image.lowest;
        if (extent == 0 || extent > greatestExtent) return damaged;
        image.extent = (extent + pageSize - 1) / pageSize * pageSize;
        return {};
    }

    Bytes file_;
    Processor wanted_;
};

}  // namespace

std::variant<Image, std::string> parse(Bytes file, Processor wanted) {
    Parser parser(file, wanted);
    if (auto trouble = parser.run(); !trouble.empty()) return trouble;
    return std::move(parser.image);
}

}  // namespace substrate::mach
