// UIColor, UIFont and UIImage.
#include "desktop/uikit/color.h"

#include <cstdio>
#include <filesystem>
#include <limits>
#include <mutex>
#include <set>

#include "desktop/graphics/product_images.h"
#include "desktop/uikit/application.h"
#include "desktop/uikit/text.h"

namespace uikit {
namespace {

std::string& root() {
    static std::string folder;
    return folder;
}

template <auto make>
objc::Object colorNamed(Class) {
    return uiColor(make());
}

template <class Peer, class Value>
objc::Object makeValue(Class cls, Value value) {
    auto made = objc::make<objc::Object>(cls);
    objc::peerOf<Peer>(made.self())->value = std::move(value);
    return objc::autorelease(std::move(made));
}

objc::Object colorWithComponents(Class cls, double red, double green, double blue, double alpha) {
    return makeValue<ColorObject>(cls, Color{red, green, blue, alpha});
}
objc::Object colorWithWhite(Class cls, double white, double alpha) {
    return makeValue<ColorObject>(cls, Color::gray(white, alpha));
}
objc::Object initWithComponents(ColorObject* color, double red, double green, double blue, double alpha) {
    color->value = {red, green, blue, alpha};
    return objc::Object{color->self};
}
objc::Object colorWithAlpha(ColorObject* color, double alpha) { return uiColor(color->value.withAlpha(alpha)); }

bool isEqualColor(ColorObject* color, objc::Object other) {
    const auto* peer = objc::peerIf<ColorObject>(other);
    return peer && peer->value == color->value;
}
unsigned long hashOfColor(ColorObject* color) {
    auto part = [](double component) { return static_cast<unsigned long>(component * 255 + 0.5) & 0xFF; };
    return part(color->value.red) << 24 | part(color->value.green) << 16 | part(color->value.blue) << 8 |
           part(color->value.alpha);
}

objc::Object systemFont(Class cls, double size) { return makeValue<FontObject>(cls, graphics::Font::system(size)); }
objc::Object boldFont(Class cls, double size) { return makeValue<FontObject>(cls, graphics::Font::boldSystem(size)); }
objc::Object italicFont(Class cls, double size) {
    auto font = graphics::Font::system(size);
    font.italic = true;
    return makeValue<FontObject>(cls, font);
}
double pointSize(FontObject* font) { return font->value.size; }
double lineHeight(FontObject* font) { return font->value.lineHeight(); }
double ascender(FontObject* font) { return font->value.metrics().ascender; }
objc::Object fontWithSize(FontObject* font, double size) {
    auto other = font->value;
    other.size = size;
    return uiFont(other);
}
bool isEqualFont(FontObject* font, objc::Object other) {
    const auto* peer = objc::peerIf<FontObject>(other);
    return peer && peer->value == font->value;
}
unsigned long hashOfFont(FontObject* font) {
    return static_cast<unsigned long>(font->value.size * 8) << 4 | static_cast<unsigned long>(font->value.weight);
}

void sayOnce(const std::string& sentence) {
    static std::mutex mutex;
    static std::set<std::string> said;
    const std::lock_guard lock(mutex);
    if (said.insert(sentence).second) std::fprintf(stderr, "%s\n", sentence.c_str());
}

/// The image in the file. Where it cannot be read, standard error says so once, and an image of the product's own is
/// drawn in its place; nil for any other.
objc::Object loadedImage(const std::string& file, const std::string& name) {
    auto image = graphics::Image::load(file, screenScale());
    if (image) return uiImage(std::move(*image), name);
    const auto symbol = graphics::symbolOfProductImage(name);
    sayOnce(image.error() + (symbol ? " One that is built in is shown. Install the product again." : ""));
    return symbol ? uiImage(graphics::symbolImage(*symbol, screenScale()), name) : objc::Object{};
}

objc::Object imageWithFile(Class, objc::Object path) {
    const std::string name = utf8(path);
    return name.empty() ? objc::Object{} : loadedImage(root() + name, std::filesystem::path(name).stem().string());
}
objc::Object imageNamed(Class, objc::Object name) {
    auto bundle = objc::sendClass<"NSBundle", "mainBundle", objc::Object>();
    auto file = objc::send<"pathForResource:ofType:", objc::Object>(bundle, name, nsString("png"));
    return loadedImage(file ? utf8(file) : utf8(name) + ".png", utf8(name));
}
Size imageSize(ImageObject* image) { return image->value.size(); }
double imageScale(ImageObject* image) { return image->value.scale(); }
objc::Object withRenderingMode(ImageObject* image, long mode) {
    constexpr long alwaysTemplate = 2;
    auto other = uiImage(image->value, image->name);
    objc::peerOf<ImageObject>(other)->isTemplate = mode == alwaysTemplate;
    return other;
}
long renderingMode(ImageObject* image) { return image->isTemplate ? 2 : 0; }

}  // namespace

void ColorObject::define(objc::ClassDefinition<ColorObject>& definition) {
    definition.classMethod<"colorWithRed:green:blue:alpha:", &colorWithComponents>()
        .classMethod<"colorWithWhite:alpha:", &colorWithWhite>()
        .classMethod<"blackColor", &colorNamed<&Color::black>>()
        .classMethod<"whiteColor", &colorNamed<&Color::white>>()
        .classMethod<"clearColor", &colorNamed<&Color::clear>>()
        .classMethod<"grayColor", &colorNamed<[] { return Color::gray(0.5); }>>()
        .classMethod<"lightGrayColor", &colorNamed<[] { return Color::gray(2 / 3.0); }>>()
        .classMethod<"darkGrayColor", &colorNamed<[] { return Color::gray(1 / 3.0); }>>()
        .classMethod<"redColor", &colorNamed<[] {
                         return Color{1, 0, 0, 1};
                     }>>()
        .classMethod<"greenColor", &colorNamed<[] {
                         return Color{0, 1, 0, 1};
                     }>>()
        .classMethod<"blueColor", &colorNamed<[] {
                         return Color{0, 0, 1, 1};
                     }>>();
    Class cls = objc::classOf<ColorObject>();
    objc::addMethod<"initWithRed:green:blue:alpha:", &initWithComponents>(cls);
    objc::addMethod<"colorWithAlphaComponent:", &colorWithAlpha>(cls);
    objc::addMethod<"isEqual:", &isEqualColor>(cls);
    objc::addMethod<"hash", &hashOfColor>(cls);
}

objc::Object uiColor(Color color) { return makeValue<ColorObject>(objc::classOf<ColorObject>(), color); }

Color colorOf(objc::Object color) { return color ? objc::peerOf<ColorObject>(color)->value : Color::clear(); }

void FontObject::define(objc::ClassDefinition<FontObject>& definition) {
    definition.classMethod<"systemFontOfSize:", &systemFont>()
        .classMethod<"boldSystemFontOfSize:", &boldFont>()
        .classMethod<"italicSystemFontOfSize:", &italicFont>();
    Class cls = objc::classOf<FontObject>();
    objc::addMethod<"pointSize", &pointSize>(cls);
    objc::addMethod<"lineHeight", &lineHeight>(cls);
    objc::addMethod<"ascender", &ascender>(cls);
    objc::addMethod<"fontWithSize:", &fontWithSize>(cls);
    objc::addMethod<"isEqual:", &isEqualFont>(cls);
    objc::addMethod<"hash", &hashOfFont>(cls);
}

objc::Object uiFont(graphics::Font font) { return makeValue<FontObject>(objc::classOf<FontObject>(), font); }

graphics::Font fontOf(objc::Object font) {
    return font ? objc::peerOf<FontObject>(font)->value : graphics::Font::system(17);
}

void ImageObject::define(objc::ClassDefinition<ImageObject>& definition) {
    definition.classMethod<"imageWithContentsOfFile:", &imageWithFile>().classMethod<"imageNamed:", &imageNamed>();
    Class cls = objc::classOf<ImageObject>();
    objc::addMethod<"size", &imageSize>(cls);
    objc::addMethod<"scale", &imageScale>(cls);
    objc::addMethod<"imageWithRenderingMode:", &withRenderingMode>(cls);
    objc::addMethod<"renderingMode", &renderingMode>(cls);
}

objc::Object uiImage(graphics::Image image, std::string name) {
    auto made = makeValue<ImageObject>(objc::classOf<ImageObject>(), std::move(image));
    objc::peerOf<ImageObject>(made)->name = std::move(name);
    return made;
}

graphics::Image imageOf(objc::Object image) {
    return image ? objc::peerOf<ImageObject>(image)->value : graphics::Image();
}

std::string imageName(objc::Object image) { return image ? objc::peerOf<ImageObject>(image)->name : std::string(); }

bool isTemplateImage(objc::Object image) { return image && objc::peerOf<ImageObject>(image)->isTemplate; }

void setHandsetRoot(std::string folder) { root() = std::move(folder); }

const std::string& handsetRoot() { return root(); }

}  // namespace uikit
