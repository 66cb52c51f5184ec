// Laying text out with Pango, and remembering it.
#include "desktop/graphics/text_layout.h"

#include <hb-ot.h>

#include <algorithm>
#include <cstdio>
#include <functional>
#include <mutex>

namespace graphics {

namespace {

constexpr double unit = PANGO_SCALE;

/// Inter's display cut is drawn for large sizes; the text cut is wider and sturdier.
constexpr double displaySize = 28;

/// Families whose weights and proportions go with Inter's, for the scripts that it lacks. Without them the first font
/// that has the characters would be taken, whatever it looks like beside the others.
constexpr const char* otherScripts =
    "Noto Sans,Noto Sans Arabic,Noto Sans Hebrew,Noto Sans Devanagari,Noto Sans Thai,Noto Sans CJK SC,sans-serif";

struct DescriptionRelease {
    void operator()(PangoFontDescription* description) const { pango_font_description_free(description); }
};
using Description = std::unique_ptr<PangoFontDescription, DescriptionRelease>;

PangoWeight pangoWeight(Weight weight) {
    switch (weight) {
        case Weight::Light:
            return PANGO_WEIGHT_LIGHT;
        case Weight::Regular:
            return PANGO_WEIGHT_NORMAL;
        case Weight::Medium:
            return PANGO_WEIGHT_MEDIUM;
        case Weight::Semibold:
            return PANGO_WEIGHT_SEMIBOLD;
        case Weight::Bold:
            return PANGO_WEIGHT_BOLD;
    }
    return PANGO_WEIGHT_NORMAL;
}

Description describe(const Font& font) {
    Description description(pango_font_description_new());
    static const std::string textFamilies = std::string("Inter,") + otherScripts;
    static const std::string displayFamilies = "Inter Display," + textFamilies;
    const std::string& families = font.size >= displaySize ? displayFamilies : textFamilies;
    pango_font_description_set_family_static(description.get(), families.c_str());
    pango_font_description_set_weight(description.get(), pangoWeight(font.weight));
    pango_font_description_set_style(description.get(), font.italic ? PANGO_STYLE_ITALIC : PANGO_STYLE_NORMAL);
    pango_font_description_set_absolute_size(description.get(), font.size * unit);
    return description;
}

std::string validText(std::string_view text) {
    if (g_utf8_validate_len(text.data(), text.size(), nullptr)) return std::string(text);
    char* repaired = g_utf8_make_valid(text.data(), static_cast<gssize>(text.size()));
    std::string result(repaired);
    g_free(repaired);
    return result;
}

/// More than a line can show; what a field that is edited can reach.
constexpr std::size_t longestLine = 4096;
/// More than anybody reads; some five hundred lines.
constexpr std::size_t longestText = 16384;
/// A word without an end is broken here, because Pango measures all of it again for every line that it fills.
constexpr std::size_t longestWord = 512;
constexpr std::string_view dots = "\u2026";

/// The part of a text that can be shown, with an ellipsis for what was left out.
std::string shownPart(std::string_view text, LineBreak lineBreak, std::size_t most) {
    if (text.size() <= most) return std::string(text);
    const std::size_t behind = lineBreak == LineBreak::TruncateHead     ? most
                               : lineBreak == LineBreak::TruncateMiddle ? most / 2
                                                                        : 0;
    std::string part(text.substr(0, characterStart(text, most - behind)));
    part += dots;
    if (behind > 0) part += text.substr(characterStart(text, text.size() - behind));
    return part;
}

/// The text with a place to break in every word that is too long.
std::string withBreaks(const std::string& text) {
    constexpr std::string_view breaking = "\u200B";
    std::string broken;
    std::size_t begin = 0;
    for (std::size_t at = 0; at < text.size(); ++at) {
        if (text[at] == ' ' || text[at] == '\n') begin = at + 1;
        if (at - begin < longestWord || (static_cast<unsigned char>(text[at]) & 0xC0) == 0x80) {
            broken += text[at];
            continue;
        }
        broken += breaking;
        broken += text[at];
        begin = at;
    }
    return broken;
}

std::string onOneLine(std::string text) {
    std::replace_if(
        text.begin(), text.end(), [](char c) { return c == '\n' || c == '\r'; }, ' ');
    return text;
}

bool truncates(LineBreak lineBreak) {
    return lineBreak == LineBreak::TruncateHead || lineBreak == LineBreak::TruncateMiddle ||
           lineBreak == LineBreak::TruncateTail;
}

bool isSingleLine(int lines, LineBreak lineBreak) {
    return lines == 1 && (truncates(lineBreak) || lineBreak == LineBreak::Clip);
}

PangoEllipsizeMode ellipsis(LineBreak lineBreak) {
    switch (lineBreak) {
        case LineBreak::TruncateHead:
            return PANGO_ELLIPSIZE_START;
        case LineBreak::TruncateMiddle:
            return PANGO_ELLIPSIZE_MIDDLE;
        case LineBreak::TruncateTail:
            return PANGO_ELLIPSIZE_END;
        default:
            return PANGO_ELLIPSIZE_NONE;
    }
}

/// How far capital or small letters without curves reach up, in points.
double letterHeight(PangoContext* context, const PangoFontDescription* description, const char* letter) {
    LayoutHandle layout(pango_layout_new(context));
    pango_layout_set_font_description(layout.get(), description);
    pango_layout_set_text(layout.get(), letter, -1);
    PangoRectangle ink;
    pango_layout_line_get_extents(pango_layout_get_line_readonly(layout.get(), 0), &ink, nullptr);
    return -ink.y / unit;
}

bool hasOutlines(PangoLayoutLine* line) {
    for (GSList* run = line->runs; run != nullptr; run = run->next) {
        PangoFont* font = static_cast<PangoLayoutRun*>(run->data)->item->analysis.font;
        if (font == nullptr) continue;  // a machine without fonts
        hb_face_t* face = hb_font_get_face(pango_font_get_hb_font(font));
        if (hb_ot_color_has_png(face) || hb_ot_color_has_layers(face) || hb_ot_color_has_svg(face)) return false;
    }
    return true;
}

void addLines(TextLayout& layout, PangoLayout* source, int limit) {
    const int count = std::min(limit, pango_layout_get_line_count(source));
    for (int i = 0; i < count; ++i) {
        PangoLayoutLine* line = pango_layout_get_line_readonly(source, i);
        PangoRectangle extents;
        pango_layout_line_get_extents(line, nullptr, &extents);
        const bool rightToLeft = pango_layout_line_get_resolved_direction(line) == PANGO_DIRECTION_RTL;
        layout.lines.push_back({line, extents.width / unit, rightToLeft, hasOutlines(line)});
    }
}

/// Once.
void sayThatFontsAreMissing() {
    static std::once_flag once;
    std::call_once(once, [] {
        std::fputs("No font can be loaded: texts are drawn as boxes. Install a font, for instance fonts-inter.\n",
                   stderr);
    });
}

}  // namespace

std::size_t characterStart(std::string_view text, std::size_t at) {
    for (int back = 0; back < 3 && at > 0 && at < text.size(); ++back, --at)
        if ((static_cast<unsigned char>(text[at]) & 0xC0) != 0x80) break;
    return at;
}

double TextLayout::width() const {
    double widest = 0;
    for (const Line& line : lines) widest = std::max(widest, line.width);
    return widest;
}

TextEngine& TextEngine::current() {
    static thread_local TextEngine engine;
    return engine;
}

TextEngine::TextEngine() : context_(pango_font_map_create_context(pango_cairo_font_map_get_default())) {
    // Metrics that are not rounded to pixels let one layout serve every scale.
    cairo_font_options_t* options = cairo_font_options_create();
    cairo_font_options_set_antialias(options, CAIRO_ANTIALIAS_GRAY);
    cairo_font_options_set_hint_style(options, CAIRO_HINT_STYLE_SLIGHT);
    cairo_font_options_set_hint_metrics(options, CAIRO_HINT_METRICS_OFF);
    pango_cairo_context_set_font_options(context_.get(), options);
    cairo_font_options_destroy(options);
    pango_context_set_round_glyph_positions(context_.get(), FALSE);
}

std::size_t TextEngine::FontHash::operator()(const Font& font) const {
    return std::hash<double>()(font.size) * 31 + static_cast<std::size_t>(font.weight) * 2 + (font.italic ? 1 : 0);
}

std::size_t TextEngine::KeyHash::operator()(const Key* key) const {
    std::size_t hash = std::hash<std::string>()(key->text);
    hash = hash * 31 + FontHash()(key->font);
    hash = hash * 31 + static_cast<std::size_t>(key->lineBreak);
    hash = hash * 31 + static_cast<std::size_t>(key->lines);
    return hash * 31 + static_cast<std::size_t>(key->width);
}

const TextLayout& TextEngine::layout(std::string_view text, const TextStyle& style, double width) {
    const double bounded = std::clamp(width, 0.0, unboundedWidth);
    const std::size_t most = isSingleLine(style.lines, style.lineBreak) ? longestLine : longestText;
    Key key{shownPart(text, style.lineBreak, most), style.font, style.lineBreak, std::max(0, style.lines),
            int(std::lround(bounded * unit))};
    if (const auto found = index_.find(&key); found != index_.end()) {
        entries_.splice(entries_.begin(), entries_, found->second);
        return entries_.front().layout;
    }
    if (entries_.size() == cachedLayoutsLimit) {
        index_.erase(&entries_.back().key);
        entries_.pop_back();
    }
    TextLayout made = makeLayout(key);
    made.truncated = made.truncated || text.size() > most;
    entries_.push_front({std::move(key), std::move(made)});
    index_.emplace(&entries_.front().key, entries_.begin());
    return entries_.front().layout;
}

LayoutHandle TextEngine::makeSource(const std::string& text, const Key& key, bool singleLine) {
    LayoutHandle source = plainLine(text, key.font);
    const bool unbounded = key.width >= int(unboundedWidth * unit);
    if (unbounded || (singleLine && !truncates(key.lineBreak))) return source;
    pango_layout_set_width(source.get(), key.width);
    if (singleLine) {
        pango_layout_set_ellipsize(source.get(), ellipsis(key.lineBreak));
    } else {
        const bool anywhere = key.lineBreak == LineBreak::Characters;
        pango_layout_set_wrap(source.get(), anywhere ? PANGO_WRAP_CHAR : PANGO_WRAP_WORD_CHAR);
    }
    return source;
}

TextLayout TextEngine::makeLayout(const Key& key) {
    TextLayout result;
    result.metrics = metrics(key.font);
    std::string text = validText(key.text);
    if (isSingleLine(key.lines, key.lineBreak)) {
        result.sources.push_back(makeSource(onOneLine(text), key, true));
        PangoLayout* source = result.sources.back().get();
        addLines(result, source, 1);
        result.truncated = pango_layout_is_ellipsized(source) || result.width() * unit > key.width + 1;
        return result;
    }
    text = withBreaks(text);
    result.sources.push_back(makeSource(text, key, false));
    PangoLayout* source = result.sources.back().get();
    const int limit = key.lines == 0 ? pango_layout_get_line_count(source) : key.lines;
    result.truncated = pango_layout_get_line_count(source) > limit;
    if (!result.truncated || !truncates(key.lineBreak)) {
        addLines(result, source, limit);
        return result;
    }
    // The last line takes all the rest of the text, and shortens it.
    addLines(result, source, limit - 1);
    const int start = pango_layout_get_line_readonly(source, limit - 1)->start_index;
    result.sources.push_back(makeSource(onOneLine(text.substr(static_cast<std::size_t>(start))), key, true));
    addLines(result, result.sources.back().get(), 1);
    return result;
}

LayoutHandle TextEngine::editedLine(std::string_view text, const Font& font) {
    return plainLine(text.substr(0, characterStart(text, std::min(text.size(), longestLine))), font);
}

LayoutHandle TextEngine::plainLine(std::string_view text, const Font& font) {
    LayoutHandle source(pango_layout_new(context_.get()));
    pango_layout_set_font_description(source.get(), describe(font).get());
    const std::string valid = validText(text);
    pango_layout_set_text(source.get(), valid.data(), static_cast<int>(valid.size()));
    return source;
}

FontMetrics TextEngine::metrics(const Font& font) {
    const auto known = metrics_.find(font);
    if (known != metrics_.end()) return known->second;
    return metrics_.emplace(font, readMetrics(font)).first->second;
}

FontMetrics TextEngine::readMetrics(const Font& font) {
    const Description description = describe(font);
    FontMetrics result{font.size * 0.97, font.size * 0.24, 0, 0};
    if (PangoFont* loaded = pango_context_load_font(context_.get(), description.get())) {
        PangoFontMetrics* metrics = pango_font_get_metrics(loaded, nullptr);
        result.ascender = pango_font_metrics_get_ascent(metrics) / unit;
        result.descender = pango_font_metrics_get_descent(metrics) / unit;
        pango_font_metrics_unref(metrics);
        g_object_unref(loaded);
    } else {
        sayThatFontsAreMissing();
    }
    result.capHeight = letterHeight(context_.get(), description.get(), "H");
    result.xHeight = letterHeight(context_.get(), description.get(), "x");
    return result;
}

}  // namespace graphics
