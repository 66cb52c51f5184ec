// PNG by Cairo, JPEG by TurboJPEG.
#include "desktop/graphics/image_decoding.h"

#include <turbojpeg.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <memory>
#include <utility>

#include "desktop/graphics/jpeg_orientation.h"

namespace graphics {
namespace {

constexpr double mostPixels = 1e8;
constexpr std::string_view pngSignature = "\x89PNG\r\n\x1A\n";

using Surface = std::unique_ptr<cairo_surface_t, void (*)(cairo_surface_t*)>;

/// Takes the places of pixels as the camera stored them to those of the upright picture, which is of that size.
cairo_matrix_t uprighting(Orientation orientation, double width, double height) {
    switch (orientation) {
        case Orientation::topRight:
            return {-1, 0, 0, 1, width, 0};
        case Orientation::bottomRight:
            return {-1, 0, 0, -1, width, height};
        case Orientation::bottomLeft:
            return {1, 0, 0, -1, 0, height};
        case Orientation::leftTop:
            return {0, 1, 1, 0, 0, 0};
        case Orientation::rightTop:
            return {0, 1, -1, 0, width, 0};
        case Orientation::rightBottom:
            return {0, -1, -1, 0, width, height};
        case Orientation::leftBottom:
            return {0, -1, 1, 0, 0, height};
        default:
            return {1, 0, 0, 1, 0, 0};
    }
}

/// What is drawn of a surface upright with a longest side.
Image madeSmaller(const Surface& surface, int longestSide, Orientation orientation = Orientation::topLeft) {
    double width = cairo_image_surface_get_width(surface.get());
    double height = cairo_image_surface_get_height(surface.get());
    if (isTurned(orientation)) std::swap(width, height);
    const double factor = std::min(1.0, longestSide / std::max(width, height));
    Image image({std::max(1.0, std::floor(width * factor)), std::max(1.0, std::floor(height * factor))}, 1);
    cairo_t* context = cairo_create(image.surface());
    cairo_scale(context, image.size().width / width, image.size().height / height);
    const cairo_matrix_t upright = uprighting(orientation, width, height);
    cairo_transform(context, &upright);
    cairo_set_source_surface(context, surface.get(), 0, 0);
    cairo_pattern_set_filter(cairo_get_source(context), CAIRO_FILTER_BEST);
    // The edge is mixed with itself, not with nothing.
    cairo_pattern_set_extend(cairo_get_source(context), CAIRO_EXTEND_PAD);
    cairo_paint(context);
    cairo_destroy(context);
    return image;
}

/// The width and height that a PNG file states in its first chunk; nothing where it has none.
bool isPngOfUsableSize(std::string_view bytes) {
    constexpr std::size_t sizeAt = 16;
    if (bytes.size() < sizeAt + 8) return false;
    const auto number = [bytes](std::size_t at) {
        double value = 0;
        for (std::size_t i = 0; i < 4; ++i) value = value * 256 + static_cast<unsigned char>(bytes[at + i]);
        return value;
    };
    return number(sizeAt) * number(sizeAt + 4) <= mostPixels;
}

cairo_status_t readFrom(void* closure, unsigned char* data, unsigned length) {
    auto& rest = *static_cast<std::string_view*>(closure);
    if (rest.size() < length) return CAIRO_STATUS_READ_ERROR;
    std::memcpy(data, rest.data(), length);
    rest.remove_prefix(length);
    return CAIRO_STATUS_SUCCESS;
}

Result<Image> decodePng(std::string_view bytes, int longestSide) {
    if (!isPngOfUsableSize(bytes)) return Failure{"It is no complete PNG picture, or a far too large one."};
    std::string_view rest = bytes;
    const Surface surface(cairo_image_surface_create_from_png_stream(readFrom, &rest), cairo_surface_destroy);
    if (cairo_surface_status(surface.get()) != CAIRO_STATUS_SUCCESS) return Failure{"It is no complete PNG picture."};
    return madeSmaller(surface, longestSide);
}

/// The smallest size in which the file can be read at once that is not below the wanted one.
tjscalingfactor scalingFor(int longest, int longestSide) {
    tjscalingfactor best{1, 1};
    int count = 0;
    const tjscalingfactor* all = tjGetScalingFactors(&count);
    for (int i = 0; i < count; ++i) {
        const int scaled = TJSCALED(longest, all[i]);
        if (scaled >= longestSide && scaled < TJSCALED(longest, best)) best = all[i];
    }
    return best;
}

Result<Image> decodeJpeg(std::string_view bytes, int longestSide) {
    const std::unique_ptr<void, int (*)(tjhandle)> decoder(tjInitDecompress(), tjDestroy);
    const auto failure = [&decoder] {
        return Failure{std::string("It is no JPEG picture: ") + tjGetErrorStr2(decoder.get())};
    };
    const auto* data = reinterpret_cast<const unsigned char*>(bytes.data());
    int width = 0;
    int height = 0;
    int subsampling = 0;
    int colors = 0;
    if (!decoder || tjDecompressHeader3(decoder.get(), data, bytes.size(), &width, &height, &subsampling, &colors) != 0)
        return failure();
    if (static_cast<double>(width) * height > mostPixels) return Failure{"The picture is far too large."};
    const auto scaling = scalingFor(std::max(width, height), longestSide);
    width = TJSCALED(width, scaling);
    height = TJSCALED(height, scaling);
    const Surface surface(cairo_image_surface_create(CAIRO_FORMAT_RGB24, width, height), cairo_surface_destroy);
    if (cairo_surface_status(surface.get()) != CAIRO_STATUS_SUCCESS) return Failure{"There is not enough memory."};
    const int decoded = tjDecompress2(decoder.get(), data, bytes.size(), cairo_image_surface_get_data(surface.get()),
                                      width, cairo_image_surface_get_stride(surface.get()), height, TJPF_BGRX, 0);
    // A file that ends early shows as far as it goes.
    if (decoded != 0 && tjGetErrorCode(decoder.get()) != TJERR_WARNING) return failure();
    cairo_surface_mark_dirty(surface.get());
    return madeSmaller(surface, longestSide, orientationOf(bytes));
}

}  // namespace

Result<Image> decodeImage(std::string_view bytes, int longestSide) {
    if (bytes.starts_with(pngSignature)) return decodePng(bytes, longestSide);
    if (bytes.starts_with("\xFF\xD8")) return decodeJpeg(bytes, longestSide);
    return Failure{"It is neither a PNG nor a JPEG picture."};
}

}  // namespace graphics
