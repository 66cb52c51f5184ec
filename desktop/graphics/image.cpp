// Pictures in memory and in PNG files.
#include "desktop/graphics/image.h"

#include <cstring>
#include <filesystem>
#include <fstream>
#include <string_view>

#include "desktop/files/output.h"

namespace graphics {

namespace {

/// "all_icon.png" at 2 is "all_icon@2x.png".
std::string variantPath(const std::string& path, int scale) {
    if (scale == 1) return path;
    const std::filesystem::path whole(path);
    const std::string name = whole.stem().string() + "@" + std::to_string(scale) + "x" + whole.extension().string();
    return (whole.parent_path() / name).string();
}

/// The scale that a file's own name states.
int statedScale(const std::string& path) {
    const std::string stem = std::filesystem::path(path).stem().string();
    if (stem.ends_with("@2x")) return 2;
    if (stem.ends_with("@3x")) return 3;
    return 1;
}

std::string reason(cairo_status_t status) {
    switch (status) {
        case CAIRO_STATUS_FILE_NOT_FOUND:
            return "there is no such file, or it may not be read";
        case CAIRO_STATUS_NO_MEMORY:
            return "there is not enough memory";
        default:
            return "it is not a complete PNG picture";
    }
}

/// Whether the file begins as a PNG does. Cairo calls every other content a want of memory.
bool beginsAsPng(const std::string& path) {
    constexpr std::string_view signature = "\x89PNG\r\n\x1A\n";
    char start[signature.size()] = {};
    std::ifstream file(path, std::ios::binary);
    return file.read(start, sizeof start) && std::string_view(start, sizeof start) == signature;
}

/// A file without transparency is read in another format; every image here has the same one.
cairo_surface_t* withAlpha(cairo_surface_t* surface) {
    if (cairo_image_surface_get_format(surface) == CAIRO_FORMAT_ARGB32) return surface;
    cairo_surface_t* copy = cairo_image_surface_create(CAIRO_FORMAT_ARGB32, cairo_image_surface_get_width(surface),
                                                       cairo_image_surface_get_height(surface));
    cairo_t* context = cairo_create(copy);
    cairo_set_source_surface(context, surface, 0, 0);
    cairo_paint(context);
    cairo_destroy(context);
    cairo_surface_destroy(surface);
    return copy;
}

cairo_status_t takeBytes(void* output, const unsigned char* bytes, unsigned int count) {
    static_cast<files::Output*>(output)->write({reinterpret_cast<const char*>(bytes), count});
    return CAIRO_STATUS_SUCCESS;
}

/// The file to read for a display of this scale, and the scale of its pixels.
std::pair<std::string, int> chooseVariant(const std::string& path, double scale) {
    const int stated = statedScale(path);
    if (stated != 1) return {path, stated};
    const int wanted = scale <= 1 ? 1 : scale <= 2 ? 2 : 3;
    std::error_code ignored;
    for (int candidate = wanted; candidate <= 3; ++candidate) {
        const std::string name = variantPath(path, candidate);
        if (std::filesystem::exists(name, ignored)) return {name, candidate};
    }
    for (int candidate = wanted - 1; candidate >= 1; --candidate) {
        const std::string name = variantPath(path, candidate);
        if (std::filesystem::exists(name, ignored)) return {name, candidate};
    }
    return {path, 1};
}

}  // namespace

Image::Image(Size size, double scale)
    : Image(std::shared_ptr<cairo_surface_t>(
                cairo_image_surface_create(CAIRO_FORMAT_ARGB32, std::max(1, int(std::lround(size.width * scale))),
                                           std::max(1, int(std::lround(size.height * scale)))),
                cairo_surface_destroy),
            scale) {
    size_ = size;
}

Image::Image(std::shared_ptr<cairo_surface_t> surface, double scale) : surface_(std::move(surface)), scale_(scale) {
    size_ = {pixelWidth() / scale, pixelHeight() / scale};
}

Result<Image> Image::load(const std::string& path, double scale) {
    const auto [name, pixelsPerPoint] = chooseVariant(path, scale);
    cairo_surface_t* surface = cairo_image_surface_create_from_png(name.c_str());
    const cairo_status_t status = cairo_surface_status(surface);
    if (status != CAIRO_STATUS_SUCCESS) {
        cairo_surface_destroy(surface);
        const bool foreign = status != CAIRO_STATUS_FILE_NOT_FOUND && !beginsAsPng(name);
        return Failure{"The picture " + name + " cannot be read: " + reason(foreign ? CAIRO_STATUS_PNG_ERROR : status) +
                       "."};
    }
    return Image(std::shared_ptr<cairo_surface_t>(withAlpha(surface), cairo_surface_destroy), pixelsPerPoint);
}

std::string Image::writePng(const std::string& path) const {
    const auto failure = [&path](const std::string& why) {
        return "The picture " + path + " cannot be written: " + why + ".";
    };
    if (!surface_) return failure("it is empty");
    if (path.empty()) return failure("it has no name");
    files::Output output(path, files::Existing::replaced);
    const cairo_status_t status = cairo_surface_write_to_png_stream(surface_.get(), takeBytes, &output);
    if (status != CAIRO_STATUS_SUCCESS) return failure(cairo_status_to_string(status));
    const auto error = output.finish();
    return error ? failure(error.message()) : std::string();
}

int Image::pixelWidth() const { return surface_ ? cairo_image_surface_get_width(surface_.get()) : 0; }
int Image::pixelHeight() const { return surface_ ? cairo_image_surface_get_height(surface_.get()) : 0; }

Image Image::tinted(const Color& color) const {
    if (!surface_) return {};
    Image result(size_, scale_);
    cairo_t* context = cairo_create(result.surface());
    cairo_set_source_rgba(context, color.red, color.green, color.blue, color.alpha);
    cairo_mask_surface(context, surface_.get(), 0, 0);
    cairo_destroy(context);
    return result;
}

std::uint32_t Image::pixel(int x, int y) const {
    if (x < 0 || y < 0 || x >= pixelWidth() || y >= pixelHeight()) return 0;
    cairo_surface_flush(surface_.get());
    const unsigned char* row =
        cairo_image_surface_get_data(surface_.get()) + y * cairo_image_surface_get_stride(surface_.get());
    std::uint32_t value = 0;
    std::memcpy(&value, row + x * 4, sizeof value);
    return value;
}

}  // namespace graphics
