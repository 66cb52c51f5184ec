// Exif is a TIFF directory in a segment of the JPEG file.
#include "desktop/graphics/jpeg_orientation.h"

#include <cstdint>
#include <optional>

namespace graphics {
namespace {

constexpr std::string_view exifMark{"Exif\0\0", 6};

/// Numbers at places of a text, in the order of bytes that it states; nothing beyond its end.
class Fields {
  public:
    Fields(std::string_view bytes, bool bigEndian) : bytes_(bytes), bigEndian_(bigEndian) {}

    std::optional<std::uint32_t> number(std::size_t at, std::size_t length) const {
        if (at > bytes_.size() || bytes_.size() - at < length) return std::nullopt;
        std::uint32_t value = 0;
        for (std::size_t i = 0; i < length; ++i) {
            const auto byte = static_cast<unsigned char>(bytes_[at + (bigEndian_ ? i : length - 1 - i)]);
            value = value << 8 | byte;
        }
        return value;
    }

  private:
    std::string_view bytes_;
    bool bigEndian_;
};

/// The content of the segment that holds Exif; empty where none does.
std::string_view exifOf(std::string_view jpeg) {
    constexpr std::uint32_t application1 = 0xFFE1;
    constexpr std::uint32_t scanBegins = 0xFFDA;
    const Fields fields(jpeg, true);
    std::size_t at = 2;
    while (true) {
        const auto marker = fields.number(at, 2);
        const auto length = fields.number(at + 2, 2);
        if (!marker || !length || *marker < 0xFF00 || *marker == scanBegins || *length < 2) return {};
        const std::string_view content = jpeg.substr(at + 4, *length - 2);
        if (*marker == application1 && content.starts_with(exifMark)) return content.substr(exifMark.size());
        at += 2 + *length;
    }
}

}  // namespace

Orientation orientationOf(std::string_view jpeg) {
    constexpr std::uint32_t orientationTag = 0x0112;
    constexpr std::size_t entrySize = 12;
    const std::string_view tiff = exifOf(jpeg);
    if (!tiff.starts_with("II") && !tiff.starts_with("MM")) return Orientation::topLeft;
    const Fields fields(tiff, tiff.starts_with("MM"));
    const auto directory = fields.number(4, 4);
    const auto entries = directory ? fields.number(*directory, 2) : std::nullopt;
    for (std::size_t i = 0; i < entries.value_or(0); ++i) {
        const std::size_t entry = *directory + 2 + i * entrySize;
        const auto tag = fields.number(entry, 2);
        const auto value = fields.number(entry + 8, 2);
        if (!tag || !value) break;
        if (*tag == orientationTag && *value >= 1 && *value <= 8) return static_cast<Orientation>(*value);
    }
    return Orientation::topLeft;
}

}  // namespace graphics
