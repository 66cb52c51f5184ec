// The plug-in loader: which images of a directory a process wants, and what keeps one from being loaded.
#include <dlfcn.h>
#include <elf.h>

#include <algorithm>
#include <fstream>
#include <map>
#include <vector>

#include "desktop/substrate/mach_loader.h"
#include "desktop/substrate/substrate.h"

namespace substrate {
namespace {

enum class ImageKind { elf, machO, other };

ImageKind kindOf(const std::vector<unsigned char>& start) {
    auto begins = [&](std::initializer_list<unsigned char> magic) {
        return start.size() >= magic.size() && std::equal(magic.begin(), magic.end(), start.begin());
    };
    if (begins({0x7f, 'E', 'L', 'F'})) return ImageKind::elf;
    if (begins({0xcf, 0xfa, 0xed, 0xfe}) || begins({0xce, 0xfa, 0xed, 0xfe}) || begins({0xca, 0xfe, 0xba, 0xbe}))
        return ImageKind::machO;
    return ImageKind::other;
}

std::string quoted(const std::filesystem::path& path) { return "\"" + path.string() + "\""; }

/// Whether the file ends before a segment that its header announces: mapping such a file would end the process.
bool isCutShort(std::ifstream& file, std::uintmax_t size) {
    Elf64_Ehdr header{};
    file.clear();
    file.seekg(0);
    if (!file.read(reinterpret_cast<char*>(&header), sizeof header)) return true;
    if (header.e_ident[EI_CLASS] != ELFCLASS64 || header.e_phentsize != sizeof(Elf64_Phdr)) return false;
    for (unsigned i = 0; i < header.e_phnum; ++i) {
        Elf64_Phdr segment{};
        file.seekg(static_cast<std::streamoff>(header.e_phoff + i * sizeof segment));
        if (!file.read(reinterpret_cast<char*>(&segment), sizeof segment)) return true;
        if (segment.p_type == PT_LOAD && (segment.p_offset > size || segment.p_filesz > size - segment.p_offset))
            return true;
    }
    return false;
}

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
    std::error_code none;
    if (!std::filesystem::is_regular_file(path, none) || !std::ifstream(path)) return fail("cannot be read");
    auto name = objc::sendClass<"NSString", "stringWithUTF8String:", Object>(path.c_str());
    // (NSDictionary's own reader would print a line of its own about a file that it cannot read.)
    auto data = objc::sendClass<"NSData", "dataWithContentsOfFile:", Object>(name);
    constexpr unsigned long immutable = 0;
    auto list = objc::sendClass<"NSPropertyListSerialization",
                                "propertyListFromData:mutabilityOption:format:errorDescription:", Object>(
        data, immutable, static_cast<void*>(nullptr), static_cast<void*>(nullptr));
    if (!objc::isKindOf(list, objc::classNamed<"NSDictionary">()))
        return fail("is not a property list with a dictionary");
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
    std::error_code error;
    auto size = std::filesystem::file_size(image, error);
    std::ifstream file(image, std::ios::binary);
    if (error || !file)
        return "plug-in " + quoted(image) +
               " cannot be read: " + (error ? error.message() : std::string("permission denied")) +
               "; name an image that exists";
    std::vector<unsigned char> start(16);
    file.read(reinterpret_cast<char*>(start.data()), static_cast<std::streamsize>(start.size()));
    start.resize(static_cast<std::size_t>(file.gcount()));
    switch (kindOf(start)) {
        case ImageKind::elf:
            if (isCutShort(file, size))
                return "plug-in " + quoted(image) + " is cut short; build it again, or remove it";
            return loadElf(image);
        case ImageKind::machO:
            if (const auto trouble = mach::load(image))
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
