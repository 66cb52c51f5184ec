// The plug-in loader: which images of a directory a process wants, and what keeps one from being loaded.
#include <dlfcn.h>

#include <algorithm>
#include <map>
#include <vector>

#include "desktop/files/regular_file.h"
#include "desktop/foundation/property_list.h"
#include "desktop/substrate/elf_image.h"
#include "desktop/substrate/mach_loader.h"
#include "desktop/substrate/substrate.h"

namespace substrate {
namespace {

enum class ImageKind { elf, machO, other };

ImageKind kindOf(std::string_view content) {
    if (content.starts_with("\x7f"
                            "ELF"))
        return ImageKind::elf;
    for (const std::string_view magic : {"\xcf\xfa\xed\xfe", "\xce\xfa\xed\xfe", "\xca\xfe\xba\xbe"})
        if (content.starts_with(magic)) return ImageKind::machO;
    return ImageKind::other;
}

std::string quoted(const std::filesystem::path& path) { return "\"" + path.string() + "\""; }

std::optional<std::string> loadElf(const std::filesystem::path& image) {
    // A path without a slash would be looked for among the system's libraries.
    if (dlopen(std::filesystem::absolute(image).c_str(), RTLD_NOW | RTLD_LOCAL)) return std::nullopt;
    const char* reason = dlerror();
    return "plug-in " + quoted(image) + " cannot be loaded: " + (reason ? reason : "no reason given") +
           "; build it again for this machine, or remove it";
}

struct Filter {
    std::vector<std::string> bundles;
    std::string error;
};

std::string textOf(objc::Object string) {
    const char* text = objc::send<"UTF8String", const char*>(string);
    return text ? text : "";
}

/// The bundles that a filter file names, or what is wrong with it.
Filter readFilter(const std::filesystem::path& path) {
    using objc::Object;
    objc::AutoreleasePool pool;
    auto fail = [&](const std::string& what) {
        return Filter{{},
                      "filter " + quoted(path) + " " + what +
                          "; write a property list with an array Filter.Bundles of bundle identifiers"};
    };
    const auto content = files::readFile(path, foundation::longestPropertyList);
    const auto* bytes = std::get_if<std::string>(&content);
    if (!bytes && std::get<std::error_code>(content) != std::errc::file_too_large) return fail("cannot be read");
    const auto list = bytes ? foundation::dictionaryInPropertyList(*bytes) : Object{};
    if (!list) return fail("is not a property list with a dictionary");
    auto valueOf = [](Object dictionary, const char* key) {
        return objc::send<"objectForKey:", Object>(dictionary,
                                                   objc::sendClass<"NSString", "stringWithUTF8String:", Object>(key));
    };
    auto filter = valueOf(list, "Filter");
    if (!objc::isKindOf(filter, objc::classNamed<"NSDictionary">())) return fail("has no dictionary Filter");
    auto bundles = valueOf(filter, "Bundles");
    if (!objc::isKindOf(bundles, objc::classNamed<"NSArray">())) return fail("has no array Filter.Bundles");
    Filter read;
    auto count = objc::send<"count", unsigned long>(bundles);
    for (unsigned long i = 0; i < count; ++i) {
        auto bundle = objc::send<"objectAtIndex:", Object>(bundles, i);
        if (!objc::isKindOf(bundle, objc::classNamed<"NSString">()))
            return fail("has something other than a text in Filter.Bundles");
        read.bundles.push_back(textOf(bundle));
    }
    return read;
}

/// The images of a directory, by plug-in name.
std::map<std::string, std::filesystem::path> imagesIn(const std::filesystem::path& directory,
                                                      const ErrorHandler& report) {
    std::map<std::string, std::filesystem::path> images;
    std::error_code error;
    if (!std::filesystem::exists(directory, error) && !error) return images;
    std::filesystem::directory_iterator entries(directory, error);
    for (; !error && entries != std::filesystem::directory_iterator(); entries.increment(error)) {
        const auto& path = entries->path();
        if (path.extension() == ".so")
            images[path.stem()] = path;
        else if (path.extension() == ".dylib")
            images.try_emplace(path.stem(), path);
    }
    if (error)
        report("plug-in directory " + quoted(directory) + " cannot be read: " + error.message() +
               "; make it a directory that this user may read");
    return images;
}

}  // namespace

std::optional<std::string> loadPlugin(const std::filesystem::path& image) {
    /// More than any plug-in has.
    constexpr std::size_t largestImage = std::size_t{1} << 28;
    const auto read = files::readFile(image, largestImage);
    if (const auto* error = std::get_if<std::error_code>(&read))
        return "plug-in " + quoted(image) + " cannot be read: " + files::reasonOf(*error) +
               "; name an image that exists";
    const auto& content = std::get<std::string>(read);
    const auto bytes = std::as_bytes(std::span(content));
    switch (kindOf(content)) {
        case ImageKind::elf:
            if (const auto trouble = elf::objectionTo(bytes))
                return "plug-in " + quoted(image) + ' ' + *trouble + "; build it again for this machine, or remove it";
            return loadElf(image);
        case ImageKind::machO:
            if (const auto trouble = mach::load(bytes))
                return "plug-in " + quoted(image) + ' ' + *trouble + "; build it again for the simulator, or remove it";
            return std::nullopt;
        case ImageKind::other:
            break;
    }
    return "plug-in " + quoted(image) + " is not an image, or is damaged; build it again, or remove it";
}

std::size_t loadPlugins(const std::filesystem::path& directory, std::string_view bundleIdentifier,
                        const ErrorHandler& report) {
    std::size_t loaded = 0;
    for (const auto& [name, image] : imagesIn(directory, report)) {
        auto filterPath = directory / (name + ".plist");
        std::error_code error;
        if (std::filesystem::exists(std::filesystem::symlink_status(filterPath, error))) {
            Filter filter = readFilter(filterPath);
            if (!filter.error.empty()) {
                report(filter.error + " (" + image.filename().string() + " is not loaded)");
                continue;
            }
            if (std::find(filter.bundles.begin(), filter.bundles.end(), bundleIdentifier) == filter.bundles.end())
                continue;
        }
        if (auto failure = loadPlugin(image))
            report(*failure);
        else
            ++loaded;
    }
    return loaded;
}

}  // namespace substrate
