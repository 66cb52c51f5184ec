// QuorvelUtils.
#include "desktop/quorvel/services/utilities.h"

#include <cstdio>
#include <cstdlib>
#include <map>
#include <mutex>

#include "desktop/uikit/color.h"
#include "desktop/uikit/text.h"

namespace quorvel {
namespace {

struct Texts {
    std::mutex mutex;
    std::filesystem::path folder;
    std::string language;
    bool loaded = false;
    objc::Strong<> table;
    objc::Strong<> english;
};
Texts& texts() {
    static Texts one;
    return one;
}

struct Pictures {
    std::mutex mutex;
    std::filesystem::path folder;
    std::map<int, objc::Strong<>> cache;
};
Pictures& pictures() {
    static Pictures one;
    return one;
}
constexpr std::size_t mostPictures = 500;

std::string localeLanguage() {
    for (const char* name : {"LC_ALL", "LC_MESSAGES", "LANG"})
        if (const char* value = std::getenv(name); value && *value) return std::string(value).substr(0, 2);
    return "en";
}

/// The table of a language; null, with a line on standard error where the file is there but damaged.
objc::Strong<> readTable(const std::filesystem::path& folder, const std::string& language) {
    const auto file = folder / (language + ".lproj") / "Quorvel.strings";
    if (!std::filesystem::exists(file)) return {};
    const auto text = objc::sendClass<"NSString", "stringWithContentsOfFile:encoding:error:", objc::Object>(
        uikit::nsString(file.string()), 4UL, static_cast<void*>(nullptr));
    objc::Object table;
    try {
        table = objc::send<"propertyListFromStringsFileFormat", objc::Object>(text);
    } catch (...) {
        table = {};
    }
    if (!table) std::fprintf(stderr, "libQuorvel: the texts in %s are damaged; English ones are used\n", file.c_str());
    return table;
}

objc::Strong<> localizedString(Class, objc::Object key) {
    Texts& all = texts();
    const std::lock_guard lock(all.mutex);
    if (!all.loaded) {
        all.loaded = true;
        all.english = readTable(all.folder, "en");
        all.table = readTable(all.folder, all.language.empty() ? localeLanguage() : all.language);
    }
    for (const auto& table : {all.table, all.english})
        if (const auto text = objc::send<"objectForKey:", objc::Object>(table.get(), key)) return text;
    return key;
}

objc::Strong<> pictureFromCache(Class, int record) {
    Pictures& all = pictures();
    const std::lock_guard lock(all.mutex);
    const auto found = all.cache.find(record);
    return found == all.cache.end() ? objc::Strong<>() : found->second;
}

objc::Strong<> picture(Class cls, int record) {
    if (const auto known = pictureFromCache(cls, record)) return known;
    Pictures& all = pictures();
    const auto file = all.folder / (std::to_string(record) + ".png");
    if (!std::filesystem::exists(file)) return {};
    auto image = graphics::Image::load(file.string());
    if (!image) {
        std::fprintf(stderr, "libQuorvel: %s\n", image.error().c_str());
        return {};
    }
    const objc::Strong<> made(uikit::uiImage(*image, file.stem().string()));
    const std::lock_guard lock(all.mutex);
    if (all.cache.size() >= mostPictures) all.cache.clear();
    all.cache[record] = made;
    return made;
}

objc::Object dateFormatter(Class) {
    static const auto one = objc::make<objc::Object>(objc::classNamed<"NSDateFormatter">());
    return one;
}

bool isEmailAddress(Class, objc::Object text) {
    const std::string address = uikit::utf8(text);
    const auto at = address.find('@');
    return at != std::string::npos && at > 0 && address.find('.', at) != std::string::npos;
}

bool canAccessAddressBook(Class) { return true; }
bool isPreIOS4(Class) { return false; }
bool isIOS7(Class) { return true; }

}  // namespace

void Utilities::define(objc::ClassDefinition<Utilities>& definition) {
    definition.classMethod<"getLocalizedString:", &localizedString>()
        .classMethod<"getContactImageFromCache:", &pictureFromCache>()
        .classMethod<"getContactImage:", &picture>()
        .classMethod<"dateFormatter", &dateFormatter>()
        .classMethod<"isEmailAddress:", &isEmailAddress>()
        .classMethod<"canAccessAddressBook", &canAccessAddressBook>()
        .classMethod<"isPreIOS_4", &isPreIOS4>()
        .classMethod<"isIOS_7_0", &isIOS7>();
}

void setTexts(std::filesystem::path folder, std::string language) {
    Texts& all = texts();
    const std::lock_guard lock(all.mutex);
    all.folder = std::move(folder);
    all.language = std::move(language);
    all.loaded = false;
}

void setContactPictures(std::filesystem::path folder) { pictures().folder = std::move(folder); }

}  // namespace quorvel
