// The opcodes that say which pointers of an image have to be filled in, and with what.
#include <algorithm>
#include <cstring>
#include <optional>

#include "desktop/substrate/mach_image.h"

namespace substrate::mach {
namespace {

constexpr std::uint64_t pointerSize = 8;
constexpr const char* damaged = "has damaged fix-ups";

enum RebaseOpcode : std::uint8_t {
    rebaseDone = 0x00,
    rebaseType = 0x10,
    rebaseSegment = 0x20,
    rebaseAdd = 0x30,
    rebaseAddScaled = 0x40,
    rebaseTimes = 0x50,
    rebaseManyTimes = 0x60,
    rebaseThenAdd = 0x70,
    rebaseTimesSkipping = 0x80,
};
enum BindOpcode : std::uint8_t {
    bindDone = 0x00,
    bindOrdinal = 0x10,
    bindLargeOrdinal = 0x20,
    bindSpecialOrdinal = 0x30,
    bindSymbol = 0x40,
    bindType = 0x50,
    bindAddend = 0x60,
    bindSegment = 0x70,
    bindAdd = 0x80,
    bindOne = 0x90,
    bindThenAdd = 0xA0,
    bindThenAddScaled = 0xB0,
    bindTimesSkipping = 0xC0,
};

/// Reads opcodes; past the end every answer is nothing.
class Stream {
  public:
    explicit Stream(Bytes bytes) : bytes_(bytes) {}
    bool atEnd() const { return at_ == bytes_.size(); }
    std::optional<std::uint8_t> byte() {
        if (atEnd()) return std::nullopt;
        return static_cast<std::uint8_t>(bytes_[at_++]);
    }
    std::optional<std::uint64_t> number() {
        std::uint64_t value = 0;
        for (unsigned shift = 0; shift < 64; shift += 7) {
            const auto next = byte();
            if (!next) return std::nullopt;
            value |= static_cast<std::uint64_t>(*next & 0x7F) << shift;
            if ((*next & 0x80) == 0) return value;
        }
        return std::nullopt;
    }
    std::optional<std::int64_t> signedNumber() {
        std::uint64_t value = 0;
        for (unsigned shift = 0; shift < 64; shift += 7) {
            const auto next = byte();
            if (!next) return std::nullopt;
            value |= static_cast<std::uint64_t>(*next & 0x7F) << shift;
            if ((*next & 0x80) != 0) continue;
            if ((*next & 0x40) != 0 && shift + 7 < 64) value |= ~std::uint64_t{0} << (shift + 7);
            return static_cast<std::int64_t>(value);
        }
        return std::nullopt;
    }
    std::optional<std::string> text() {
        const auto* begin = reinterpret_cast<const char*>(bytes_.data()) + at_;
        const std::size_t length = strnlen(begin, bytes_.size() - at_);
        if (at_ + length == bytes_.size()) return std::nullopt;
        at_ += length + 1;
        return std::string(begin, length);
    }

  private:
    Bytes bytes_;
    std::size_t at_ = 0;
};

/// Where the opcodes are at work.
class Writer {
  public:
    explicit Writer(const Image& image) : image_(image) {}

    bool enter(std::size_t segment, std::uint64_t offset) {
        if (segment >= image_.segments.size() || !image_.segments[segment].isWritable) return false;
        place_ = {segment, offset};
        entered_ = true;
        return true;
    }
    /// Offsets wrap, as those that lead backwards are written so; put() looks where they end.
    void skip(std::uint64_t bytes) { place_.offset += bytes; }
    /// The present place, and on to the next pointer. Nothing where it lies outside the segment.
    std::optional<Place> put() {
        if (!entered_) return std::nullopt;
        const std::uint64_t size = image_.segments[place_.segment].size;
        if (place_.offset > size || size - place_.offset < pointerSize) return std::nullopt;
        const Place here = place_;
        place_.offset += pointerSize;
        return here;
    }

  private:
    const Image& image_;
    Place place_;
    bool entered_ = false;
};

/// Runs rebase opcodes.
class Rebaser {
  public:
    explicit Rebaser(const Image& image) : stream_(image.rebases), writer_(image) {}

    bool run() {
        while (!stream_.atEnd()) {
            const auto opcode = stream_.byte();
            if ((*opcode & 0xF0) == rebaseDone) return true;
            if (!step(*opcode & 0xF0, *opcode & 0x0F)) return false;
        }
        return true;
    }
    std::vector<Place> places;

  private:
    bool step(unsigned opcode, unsigned immediate) {
        std::optional<std::uint64_t> number = 0;
        switch (opcode) {
            case rebaseType:
                return immediate == 1;  // a pointer
            case rebaseSegment:
                number = stream_.number();
                return number && writer_.enter(immediate, *number);
            case rebaseAdd:
                number = stream_.number();
                if (number) writer_.skip(*number);
                return number.has_value();
            case rebaseAddScaled:
                writer_.skip(immediate * pointerSize);
                return true;
            case rebaseTimes:
                return put(immediate, 0);
            case rebaseManyTimes:
                number = stream_.number();
                return number && put(*number, 0);
            case rebaseThenAdd:
                number = stream_.number();
                return number && put(1, *number);
            case rebaseTimesSkipping: {
                number = stream_.number();
                const auto gap = stream_.number();
                return number && gap && put(*number, *gap);
            }
            default:
                return false;
        }
    }
    bool put(std::uint64_t times, std::uint64_t gap) {
        for (std::uint64_t i = 0; i < times; ++i) {
            const auto place = writer_.put();
            if (!place || places.size() > mostFixUps) return false;
            places.push_back(*place);
            writer_.skip(gap);
        }
        return true;
    }

    static constexpr std::size_t mostFixUps = std::size_t{1} << 20;
    Stream stream_;
    Writer writer_;
};

/// Runs bind opcodes.
class Binder {
  public:
    Binder(const Image& image, Bytes opcodes, bool isLazy, std::vector<Bind>& binds)
        : stream_(opcodes), writer_(image), isLazy_(isLazy), binds_(binds) {}

    bool run() {
        while (!stream_.atEnd()) {
            const auto opcode = stream_.byte();
            // Each lazy bind ends with a "done" of its own.
            if (*opcode == bindDone && !isLazy_) return true;
            if (*opcode != bindDone && !step(*opcode & 0xF0, *opcode & 0x0F)) return false;
        }
        return true;
    }

  private:
    bool step(unsigned opcode, unsigned immediate) {
        std::optional<std::uint64_t> number;
        switch (opcode) {
            case bindOrdinal:
            case bindSpecialOrdinal:
                return true;  // every symbol is looked for in all libraries
            case bindLargeOrdinal:
                return stream_.number().has_value();
            case bindSymbol: {
                auto name = stream_.text();
                if (!name) return false;
                bind_.symbol = *std::move(name);
                bind_.isWeak = (immediate & 1) != 0;
                return true;
            }
            case bindType:
                return immediate == 1;  // a pointer
            case bindAddend: {
                const auto addend = stream_.signedNumber();
                if (addend) bind_.addend = *addend;
                return addend.has_value();
            }
            case bindSegment:
                number = stream_.number();
                return number && writer_.enter(immediate, *number);
            case bindAdd:
                number = stream_.number();
                if (number) writer_.skip(*number);
                return number.has_value();
            case bindOne:
                return put(1, 0);
            case bindThenAdd:
                number = stream_.number();
                return number && put(1, *number);
            case bindThenAddScaled:
                return put(1, immediate * pointerSize);
            case bindTimesSkipping: {
                number = stream_.number();
                const auto gap = stream_.number();
                return number && gap && put(*number, *gap);
            }
            default:
                return false;
        }
    }
    bool put(std::uint64_t times, std::uint64_t gap) {
        for (std::uint64_t i = 0; i < times; ++i) {
            const auto place = writer_.put();
            if (!place || bind_.symbol.empty() || binds_.size() > mostBinds) return false;
            bind_.place = *place;
            binds_.push_back(bind_);
            writer_.skip(gap);
        }
        return true;
    }

    static constexpr std::size_t mostBinds = std::size_t{1} << 16;
    Stream stream_;
    Writer writer_;
    bool isLazy_;
    Bind bind_;
    std::vector<Bind>& binds_;
};

}  // namespace

std::variant<std::vector<Place>, std::string> rebasesOf(const Image& image) {
    Rebaser rebaser(image);
    if (!rebaser.run()) return damaged;
    return std::move(rebaser.places);
}

std::variant<std::vector<Bind>, std::string> bindsOf(const Image& image) {
    std::vector<Bind> binds;
    if (!Binder(image, image.binds, false, binds).run() || !Binder(image, image.lazyBinds, true, binds).run())
        return damaged;
    return binds;
}

}  // namespace substrate::mach
