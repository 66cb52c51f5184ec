// Bars drawn with Cairo, with texts in every script by Pango.
#include "tools/stats/plot.h"

#include <cairo-svg.h>
#include <cairo.h>
#include <pango/pangocairo.h>

#include <algorithm>
#include <cmath>
#include <memory>

#include "tools/export/output.h"

namespace tools {
namespace {

constexpr double width = 960, height = 540;
constexpr double margin = 48;
constexpr double chartTop = 96, chartBottom = 460;
constexpr double monthsRight = 600, contactsLeft = 650;
constexpr std::size_t contactsShown = 12;

struct Shade {
    double red, green, blue;
};
constexpr Shade ink{0.13, 0.15, 0.20}, faint{0.85, 0.87, 0.90}, paper{1, 1, 1};
/// From the bottom of a bar upwards. They differ in lightness too.
struct Kind {
    const char* name;
    Shade shade;
    std::int64_t (*count)(const CallSums&);
};
constexpr Kind kinds[] = {
    {"received", {0.16, 0.50, 0.73}, [](const CallSums& sums) { return sums.received; }},
    {"dialled", {0.42, 0.70, 0.38}, [](const CallSums& sums) { return sums.dialled; }},
    {"cancelled", {0.75, 0.78, 0.80}, [](const CallSums& sums) { return sums.cancelled; }},
    {"missed", {0.84, 0.28, 0.24}, [](const CallSums& sums) { return sums.missed; }},
};

enum class Side { left, centre, right };

class Picture {
  public:
    explicit Picture(cairo_surface_t* surface) : context_(cairo_create(surface)) {}

    void bar(double x, double y, double barWidth, double barHeight, const Shade& shade) {
        cairo_set_source_rgb(context_.get(), shade.red, shade.green, shade.blue);
        cairo_rectangle(context_.get(), x, y, barWidth, barHeight);
        cairo_fill(context_.get());
    }

    /// The text beside, around or before x, its middle at y; cut where it is longer than `longest`.
    void text(const std::string& words, double x, double y, Side side, double size, double longest = width) {
        const std::unique_ptr<PangoLayout, decltype(&g_object_unref)> layout(pango_cairo_create_layout(context_.get()),
                                                                             g_object_unref);
        const std::unique_ptr<PangoFontDescription, decltype(&pango_font_description_free)> font(
            pango_font_description_from_string("Inter, Noto Sans, sans-serif"), pango_font_description_free);
        pango_font_description_set_absolute_size(font.get(), size * PANGO_SCALE);
        pango_layout_set_font_description(layout.get(), font.get());
        pango_layout_set_text(layout.get(), words.data(), static_cast<int>(words.size()));
        pango_layout_set_single_paragraph_mode(layout.get(), TRUE);
        pango_layout_set_ellipsize(layout.get(), PANGO_ELLIPSIZE_END);
        int taken = 0, high = 0;
        pango_layout_get_pixel_size(layout.get(), &taken, &high);
        if (taken > longest) {
            pango_layout_set_width(layout.get(), static_cast<int>(longest * PANGO_SCALE));
            pango_layout_get_pixel_size(layout.get(), &taken, &high);
        }
        const double left = side == Side::left ? x : side == Side::right ? x - taken : x - taken / 2.0;
        cairo_set_source_rgb(context_.get(), ink.red, ink.green, ink.blue);
        cairo_move_to(context_.get(), left, y - high / 2.0);
        pango_cairo_show_layout(context_.get(), layout.get());
    }

  private:
    struct Destroy {
        void operator()(cairo_t* context) const { cairo_destroy(context); }
    };
    std::unique_ptr<cairo_t, Destroy> context_;
};

std::int64_t mostCalls(const std::vector<NamedSums>& rows) {
    std::int64_t most = 1;
    for (const auto& row : rows) most = std::max(most, row.sums.calls());
    return most;
}

/// A round number of calls between two lines: 1, 2 or 5 times a power of ten, so that about five lines stand.
std::int64_t lineStep(std::int64_t most) {
    for (std::int64_t power = 1;; power *= 10)
        for (const std::int64_t times : {1, 2, 5})
            if (most / (times * power) <= 5) return times * power;
}

void drawMonths(Picture& picture, const std::vector<NamedSums>& months) {
    const std::int64_t most = mostCalls(months);
    const double perCall = (chartBottom - chartTop) / static_cast<double>(most);
    for (std::int64_t calls = 0; calls <= most; calls += lineStep(most)) {
        const double y = chartBottom - static_cast<double>(calls) * perCall;
        picture.bar(margin, y, monthsRight - margin, 1, faint);
        picture.text(std::to_string(calls), margin - 6, y, Side::right, 11);
    }
    const double step = (monthsRight - margin) / static_cast<double>(std::max<std::size_t>(months.size(), 1));
    // So many months share one label that labels do not touch.
    const auto labelled = std::max<std::size_t>(1, static_cast<std::size_t>(std::ceil(56 / step)));
    for (std::size_t at = 0; at < months.size(); ++at) {
        const double left = margin + static_cast<double>(at) * step;
        double bottom = chartBottom;
        for (const Kind& kind : kinds) {
            const double high = static_cast<double>(kind.count(months[at].sums)) * perCall;
            bottom -= high;
            if (high > 0) picture.bar(left + step * 0.1, bottom, step * 0.8, high, kind.shade);
        }
        if (at % labelled == 0) picture.text(months[at].name, left + step / 2, chartBottom + 14, Side::centre, 11);
    }
    double x = margin;
    for (const Kind& kind : kinds) {
        picture.bar(x, height - 36, 12, 12, kind.shade);
        picture.text(kind.name, x + 18, height - 30, Side::left, 12);
        x += 100;
    }
}

void drawContacts(Picture& picture, const std::vector<NamedSums>& contacts) {
    const auto most = static_cast<double>(mostCalls(contacts));
    const double step = (chartBottom - chartTop) / contactsShown;
    double y = chartTop;
    for (const auto& contact : contacts) {
        const double length = (width - margin - contactsLeft - 40) * static_cast<double>(contact.sums.calls()) / most;
        picture.text(contact.name, contactsLeft, y + step * 0.25, Side::left, 12, width - margin - contactsLeft);
        picture.bar(contactsLeft, y + step * 0.55, length, step * 0.3, kinds[0].shade);
        picture.text(std::to_string(contact.sums.calls()), contactsLeft + length + 6, y + step * 0.7, Side::left, 11);
        y += step;
    }
}

void draw(Picture& picture, const Statistics& statistics) {
    picture.bar(0, 0, width, height, paper);
    const auto& all = statistics.all();
    picture.text(std::to_string(all.calls()) + " calls, " + talkText(all.seconds) + " of talk", margin, 36, Side::left,
                 20);
    picture.text("Calls of each month", margin, 72, Side::left, 14);
    picture.text("Most calls", contactsLeft, 72, Side::left, 14);
    drawMonths(picture, statistics.months());
    drawContacts(picture, statistics.contacts(contactsShown));
}

cairo_status_t take(void* output, const unsigned char* bytes, unsigned int count) {
    static_cast<Output*>(output)->write({reinterpret_cast<const char*>(bytes), count});
    return CAIRO_STATUS_SUCCESS;
}

}  // namespace

bool isPlotName(const std::filesystem::path& file) { return file.extension() == ".svg" || file.extension() == ".png"; }

std::optional<std::string> plot(const Statistics& statistics, const std::filesystem::path& file,
                                files::Existing existing) {
    constexpr double pngScale = 2;
    Output output(file, existing);
    const bool isPng = file.extension() == ".png";
    struct Destroy {
        void operator()(cairo_surface_t* surface) const { cairo_surface_destroy(surface); }
    };
    const std::unique_ptr<cairo_surface_t, Destroy> surface(
        isPng ? cairo_image_surface_create(CAIRO_FORMAT_RGB24, static_cast<int>(width * pngScale),
                                           static_cast<int>(height * pngScale))
              : cairo_svg_surface_create_for_stream(take, &output, width, height));
    if (isPng) cairo_surface_set_device_scale(surface.get(), pngScale, pngScale);
    {
        Picture picture(surface.get());
        draw(picture, statistics);
    }
    if (isPng) cairo_surface_write_to_png_stream(surface.get(), take, &output);
    cairo_surface_finish(surface.get());
    if (const auto status = cairo_surface_status(surface.get()); status != CAIRO_STATUS_SUCCESS)
        return "The plot cannot be drawn: " + std::string(cairo_status_to_string(status)) + '.';
    return output.finish();
}

}  // namespace tools
