// The soft shadow of a rounded rectangle: its shape as a stencil, blurred three times with a box, which comes close to
// a Gaussian. The last few stencils are kept, as a card casts the same shadow in every frame.
#include <cstdint>
#include <memory>
#include <vector>

#include "desktop/graphics/canvas.h"

namespace graphics {

namespace {

struct Stencil {
    int width;
    int height;
    int radius;
    int blur;
    std::shared_ptr<cairo_surface_t> surface;

    bool isFor(int otherWidth, int otherHeight, int otherRadius, int otherBlur) const {
        return width == otherWidth && height == otherHeight && radius == otherRadius && blur == otherBlur;
    }
};

constexpr std::size_t keptStencils = 8;

/// The mean of the `2 * reach + 1` values around each, along one row or column.
void blurRun(std::uint8_t* values, int count, int stride, int reach, std::vector<std::uint8_t>& copy) {
    copy.resize(static_cast<std::size_t>(count));
    for (int i = 0; i < count; ++i) copy[static_cast<std::size_t>(i)] = values[i * stride];
    const auto at = [&](int i) { return i < 0 || i >= count ? 0 : int(copy[static_cast<std::size_t>(i)]); };
    int sum = 0;
    for (int i = -reach; i <= reach; ++i) sum += at(i);
    for (int i = 0; i < count; ++i) {
        values[i * stride] = static_cast<std::uint8_t>(sum / (2 * reach + 1));
        sum += at(i + reach + 1) - at(i - reach);
    }
}

void blur(cairo_surface_t* surface, int reach) {
    cairo_surface_flush(surface);
    std::uint8_t* pixels = cairo_image_surface_get_data(surface);
    const int width = cairo_image_surface_get_width(surface), height = cairo_image_surface_get_height(surface);
    const int stride = cairo_image_surface_get_stride(surface);
    std::vector<std::uint8_t> copy;
    for (int round = 0; round < 3; ++round) {
        for (int y = 0; y < height; ++y) blurRun(pixels + y * stride, width, 1, reach, copy);
        for (int x = 0; x < width; ++x) blurRun(pixels + x, height, stride, reach, copy);
    }
    cairo_surface_mark_dirty(surface);
}

/// The stencil has `blur` pixels of room on each side.
std::shared_ptr<cairo_surface_t> makeStencil(int width, int height, int radius, int blurPixels) {
    std::shared_ptr<cairo_surface_t> surface(
        cairo_image_surface_create(CAIRO_FORMAT_A8, width + 2 * blurPixels, height + 2 * blurPixels),
        cairo_surface_destroy);
    cairo_t* context = cairo_create(surface.get());
    Canvas(context, 1)
        .fillRounded({{double(blurPixels), double(blurPixels)}, {double(width), double(height)}}, radius,
                     Color::black());
    cairo_destroy(context);
    if (blurPixels >= 3) blur(surface.get(), blurPixels / 3);
    return surface;
}

std::shared_ptr<cairo_surface_t> stencil(int width, int height, int radius, int blurPixels) {
    static thread_local std::vector<Stencil> kept;
    for (const Stencil& each : kept) {
        if (each.isFor(width, height, radius, blurPixels)) return each.surface;
    }
    if (kept.size() == keptStencils) kept.erase(kept.begin());
    kept.push_back({width, height, radius, blurPixels, makeStencil(width, height, radius, blurPixels)});
    return kept.back().surface;
}

}  // namespace

void Canvas::shadow(const Rect& rect, double radius, double blurDistance, Point offset, const Color& color) {
    if (rect.isEmpty()) return;
    const double pixels = pixelsPerPoint();
    const auto whole = [pixels](double points) { return static_cast<int>(std::lround(points * pixels)); };
    const int reach = std::max(0, whole(blurDistance));
    const auto surface =
        stencil(std::max(1, whole(rect.width())), std::max(1, whole(rect.height())), whole(radius), reach);
    save();
    const Point corner = snapped(rect.origin + offset);
    translate(corner.x - reach / pixels, corner.y - reach / pixels);
    scale(1 / pixels);
    source(color);
    cairo_mask_surface(context_, surface.get(), 0, 0);
    restore();
}

}  // namespace graphics
