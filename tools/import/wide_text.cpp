// Units of two bytes, joined into characters where two of them make one.
#include "tools/import/wide_text.h"

#include <array>
#include <utility>

#include "tools/text/utf8.h"

namespace tools {
namespace {

constexpr unsigned replacement = 0xFFFD;

}  // namespace

WideText::WideText(InputFile& file) : file_(file) {
    isBigEnd_ = file_.head().starts_with("\xFE\xFF");
    isWide_ = isBigEnd_ || file_.head().starts_with("\xFF\xFE");
}

void WideText::takeUnit(unsigned unit) {
    // The byte order mark.
    if (std::exchange(isFirst_, false)) return;
    const bool isSecond = unit >= 0xDC00 && unit <= 0xDFFF;
    const unsigned first = std::exchange(firstOfPair_, 0);
    if (first != 0 && isSecond) {
        appendUtf8(ready_, 0x10000 + ((first - 0xD800) << 10) + (unit - 0xDC00));
        return;
    }
    if (first != 0) appendUtf8(ready_, replacement);
    if (unit >= 0xD800 && unit <= 0xDBFF)
        firstOfPair_ = unit;
    else
        appendUtf8(ready_, isSecond ? replacement : unit);
}

std::size_t WideText::read(std::span<char> space) {
    if (!isWide_) return file_.read(space);
    while (ready_.empty() && !hasEnded_) {
        std::array<char, 4096> bytes{};
        const std::size_t count = file_.read(bytes);
        for (std::size_t at = 0; at < count; ++at) {
            const int byte = static_cast<unsigned char>(bytes[at]);
            if (half_ < 0) {
                half_ = byte;
                continue;
            }
            takeUnit(static_cast<unsigned>(isBigEnd_ ? half_ << 8 | byte : byte << 8 | half_));
            half_ = -1;
        }
        hasEnded_ = count == 0;
        if (hasEnded_ && (firstOfPair_ != 0 || half_ >= 0)) appendUtf8(ready_, replacement);
    }
    const std::size_t count = ready_.copy(space.data(), space.size());
    ready_.erase(0, count);
    return count;
}

}  // namespace tools
