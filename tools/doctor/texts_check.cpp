// The string tables: that each can be read and lacks nothing that the English one has.
#include <algorithm>
#include <optional>
#include <set>

#include "desktop/files/regular_file.h"
#include "desktop/foundation/property_list.h"
#include "tools/doctor/check.h"

namespace tools {
namespace {

namespace fs = std::filesystem;
using Keys = std::set<std::string>;

constexpr const char* tables[] = {"Quorvel.strings", "Quorvel.stringsdict"};
constexpr const char* advice = " Install the product again.";

/// Nothing where the file is no table.
std::optional<Keys> keysIn(const fs::path& file) {
    const auto content = files::readFile(file, foundation::longestPropertyList);
    const auto* text = std::get_if<std::string>(&content);
    const auto read = text ? foundation::dictionaryInStringTable(*text) : objc::Object{};
    if (!read) return std::nullopt;
    Keys keys;
    const auto all = objc::send<"allKeys", objc::Object>(read);
    const auto count = objc::send<"count", unsigned long>(all);
    for (unsigned long i = 0; i < count; ++i) {
        const auto key = objc::send<"objectAtIndex:", objc::Object>(all, i);
        keys.insert(objc::send<"UTF8String", const char*>(key));
    }
    return keys;
}

class Texts : public Organ {
  public:
    explicit Texts(fs::path folder) : folder_(std::move(folder)) {}
    const char* name() const override { return "texts"; }

    Sentences examine() override {
        std::error_code error;
        std::vector<fs::path> languages;
        for (const auto& entry : fs::directory_iterator(folder_, error))
            if (entry.path().extension() == ".lproj") languages.push_back(entry.path());
        if (error) return {"The texts in " + folder_.string() + " cannot be read: " + error.message() + '.' + advice};
        std::sort(languages.begin(), languages.end());
        Sentences found;
        const auto english = examine(folder_ / "en.lproj", {}, found);
        for (const auto& language : languages)
            if (language.filename() != "en.lproj") examine(language, english, found);
        return found;
    }

    /// They belong to the product, not to the user.
    Sentences mend() override { return {"Texts cannot be mended from here." + std::string(advice)}; }

  private:
    static Keys examine(const fs::path& language, const Keys& wanted, Sentences& found) {
        Keys all;
        bool isWhole = true;
        for (const char* table : tables) {
            const auto keys = keysIn(language / table);
            if (keys) {
                all.insert(keys->begin(), keys->end());
                continue;
            }
            isWhole = false;
            found.push_back("The texts in " + (language / table).string() +
                            " are damaged or not there; English is shown for them." + advice);
        }
        for (const auto& key : wanted)
            if (isWhole && !all.contains(key))
                found.push_back("The texts in " + language.string() + " lack " + key + '.' + advice);
        return all;
    }

    fs::path folder_;
};

}  // namespace

std::unique_ptr<Organ> textsOrgan(const fs::path& folder) { return std::make_unique<Texts>(folder); }

}  // namespace tools
