// A reference is held back until its semicolon; the first half of a pair until the next reference.
#include "tools/import/reference_mender.h"

#include <charconv>

namespace tools {
namespace {

constexpr std::size_t longestReference = 12;
constexpr const char* replacement = "&#65533;";

bool isFirstHalf(unsigned code) { return code >= 0xD800 && code <= 0xDBFF; }
bool isSecondHalf(unsigned code) { return code >= 0xDC00 && code <= 0xDFFF; }

bool isAllowed(unsigned code) {
    if (code < 0x20) return code == '\t' || code == '\n' || code == '\r';
    return !isFirstHalf(code) && !isSecondHalf(code) && code != 0xFFFE && code != 0xFFFF && code <= 0x10FFFF;
}

/// The code of "&#55357;" or "&#xD83D;"; false for another reference.
bool codeOf(std::string_view reference, unsigned& code) {
    if (!reference.starts_with("&#")) return false;
    reference.remove_prefix(2);
    const bool isHexadecimal = reference.starts_with('x');
    if (isHexadecimal) reference.remove_prefix(1);
    reference.remove_suffix(1);
    const auto [end, error] =
        std::from_chars(reference.data(), reference.data() + reference.size(), code, isHexadecimal ? 16 : 10);
    return error == std::errc() && end == reference.data() + reference.size();
}

}  // namespace

void ReferenceMender::release(std::string& out) {
    if (firstHalf_ != 0) out += replacement;
    firstHalf_ = 0;
    out += reference_;
    reference_.clear();
}

void ReferenceMender::close(std::string& out) {
    unsigned code = 0;
    if (!codeOf(reference_, code)) {
        release(out);
    } else if (isSecondHalf(code) && firstHalf_ != 0) {
        out += "&#" + std::to_string(0x10000 + ((firstHalf_ - 0xD800) << 10) + (code - 0xDC00)) + ';';
        firstHalf_ = 0;
        reference_.clear();
    } else {
        if (!isAllowed(code)) reference_ = isFirstHalf(code) ? "" : replacement;
        release(out);
        if (isFirstHalf(code)) firstHalf_ = code;
    }
}

std::string ReferenceMender::mend(std::string_view piece) {
    std::string out;
    out.reserve(piece.size() + longestReference);
    for (const char letter : piece) {
        if (letter == '&') {
            if (!reference_.empty()) release(out);
            reference_ = letter;
        } else if (reference_.empty()) {
            if (firstHalf_ != 0) release(out);
            out += letter;
        } else {
            reference_ += letter;
            if (letter == ';')
                close(out);
            else if (reference_.size() > longestReference)
                release(out);
        }
    }
    return out;
}

std::string ReferenceMender::end() {
    std::string out;
    release(out);
    return out;
}

}  // namespace tools
