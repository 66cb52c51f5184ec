// Laid-out text, and the store that remembers it: one a thread, as Pango's objects belong to one thread.
#pragma once

#include <pango/pangocairo.h>

#include <list>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

#include "desktop/graphics/text.h"

namespace graphics {

struct ObjectRelease {
    void operator()(void* object) const { g_object_unref(object); }
};
using LayoutHandle = std::unique_ptr<PangoLayout, ObjectRelease>;

/// The beginning of the character of UTF-8 that the byte `at` belongs to; the size of the text for its end.
std::size_t characterStart(std::string_view text, std::size_t at);

/// The lines of a text that are to be shown, in order.
struct TextLayout {
    struct Line {
        /// Belongs to one of `sources`.
        PangoLayoutLine* line;
        double width;
        bool rightToLeft;
        /// Every glyph is a shape; false where one is a coloured picture.
        bool hasOutlines;
    };
    std::vector<LayoutHandle> sources;
    std::vector<Line> lines;
    FontMetrics metrics;
    bool truncated = false;

    double width() const;
};

/// Makes layouts, keeps the ones last used, and answers them again.
class TextEngine {
  public:
    /// This thread's own.
    static TextEngine& current();

    TextEngine();

    /// Of a text that is longer than can be shown, a part with an ellipsis for the rest. Valid until the next call.
    const TextLayout& layout(std::string_view text, const TextStyle& style, double width);
    FontMetrics metrics(const Font& font);
    /// A single line of the text, or of its first 4,096 bytes.
    LayoutHandle editedLine(std::string_view text, const Font& font);
    std::size_t count() const { return entries_.size(); }

  private:
    struct Key {
        std::string text;
        Font font;
        LineBreak lineBreak;
        int lines;
        int width;

        friend bool operator==(const Key&, const Key&) = default;
    };
    struct KeyHash {
        std::size_t operator()(const Key* key) const;
    };
    struct KeyEqual {
        bool operator()(const Key* a, const Key* b) const { return *a == *b; }
    };
    struct FontHash {
        std::size_t operator()(const Font& font) const;
    };
    struct Entry {
        Key key;
        TextLayout layout;
    };
    using Entries = std::list<Entry>;

    LayoutHandle plainLine(std::string_view text, const Font& font);
    LayoutHandle makeSource(const std::string& text, const Key& key, bool singleLine);
    TextLayout makeLayout(const Key& key);
    FontMetrics readMetrics(const Font& font);

    std::unique_ptr<PangoContext, ObjectRelease> context_;
    /// The last used first.
    Entries entries_;
    /// The keys are those of the entries themselves.
    std::unordered_map<const Key*, Entries::iterator, KeyHash, KeyEqual> index_;
    std::unordered_map<Font, FontMetrics, FontHash> metrics_;
};

}  // namespace graphics
