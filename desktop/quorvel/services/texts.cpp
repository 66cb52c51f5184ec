// String tables: property lists without the outer braces, as translators know them.
#include "desktop/quorvel/services/texts.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>

#include "desktop/files/regular_file.h"
#include "desktop/foundation/property_list.h"
#include "desktop/quorvel/services/built_in_texts.h"
#include "desktop/quorvel/services/plural_format.h"
#include "desktop/uikit/text.h"

namespace quorvel {
namespace {

constexpr std::string_view usualLanguage = "en";

/// The dictionary in the file; null, with a sentence, where there is none.
objc::Strong<> dictionaryIn(const std::filesystem::path& file, std::vector<std::string>& trouble) {
    const auto content = files::readFile(file, foundation::longestPropertyList);
    const auto* text = std::get_if<std::string>(&content);
    if (!text && std::get<std::error_code>(content) != std::errc::file_too_large) {
        trouble.push_back("The texts in " + file.string() + " cannot be read. Install the product's texts again.");
        return {};
    }
    if (const auto read = text ? foundation::dictionaryInStringTable(*text) : objc::Object{})
        return objc::Strong<>(read);
    trouble.push_back("The texts in " + file.string() +
                      " are damaged; English is shown for them. The file was left as it is: install the product's "
                      "texts again.");
    return {};
}

/// Shows each key with its value.
template <class See>
void forEach(objc::Object dictionary, See see) {
    const auto keys = objc::send<"allKeys", objc::Object>(dictionary);
    const auto count = objc::send<"count", unsigned long>(keys);
    for (unsigned long i = 0; i < count; ++i) {
        const auto key = objc::send<"objectAtIndex:", objc::Object>(keys, i);
        see(uikit::utf8(key), objc::send<"objectForKey:", objc::Object>(dictionary, key));
    }
}

bool isString(objc::Object object) { return objc::isKindOf(object, objc::classNamed<"NSString">()); }

}  // namespace

TextTable TextTable::read(const std::filesystem::path& folder, const std::string& language,
                          std::vector<std::string>& trouble) {
    const auto tables = folder / (language + ".lproj");
    TextTable table;
    const auto strings = tables / "Quorvel.strings";
    table.addStrings(dictionaryIn(strings, trouble), strings.string(), trouble);
    const auto plurals = tables / "Quorvel.stringsdict";
    table.addPlurals(dictionaryIn(plurals, trouble), language, plurals.string(), trouble);
    return table;
}

TextTable TextTable::builtIn() {
    std::vector<std::string> trouble;
    TextTable table;
    table.addStrings(objc::Strong<>(foundation::dictionaryInStringTable(builtInStrings())), {}, trouble);
    table.addPlurals(objc::Strong<>(foundation::dictionaryInStringTable(builtInPlurals())), std::string(usualLanguage),
                     {}, trouble);
    return table;
}

void TextTable::addStrings(objc::Object dictionary, const std::string& file, std::vector<std::string>& trouble) {
    if (!dictionary) return;
    forEach(dictionary, [&](const std::string& key, objc::Object text) {
        if (isString(text))
            texts_[key] = objc::Strong<>(text);
        else
            trouble.push_back("In " + file + " the key " + key + " has something else than a text.");
    });
}

void TextTable::addPlurals(objc::Object dictionary, const std::string& language, const std::string& file,
                           std::vector<std::string>& trouble) {
    if (!dictionary) return;
    const auto counting = std::make_shared<const Counting>(language);
    std::map<std::string, PluralTexts> plurals;
    forEach(dictionary, [&](const std::string& key, objc::Object forms) {
        PluralTexts texts{{}, counting};
        if (objc::isKindOf(forms, objc::classNamed<"NSDictionary">()))
            forEach(forms, [&](const std::string& form, objc::Object text) {
                if (isString(text)) texts.byForm[form] = uikit::utf8(text);
            });
        if (texts.byForm.contains("other"))
            plurals[key] = std::move(texts);
        else
            trouble.push_back("In " + file + " the key " + key + " lacks the form \"other\".");
    });
    for (const auto& [key, texts] : plurals) {
        PluralTexts whole = texts;
        // "CALLS_D_D" is "CALLS_D" with a duration.
        constexpr std::string_view argument = "_D";
        const auto shorter = plurals.find(key.substr(0, key.size() - std::min(argument.size(), key.size())));
        if (key.ends_with("_D_D") && shorter != plurals.end()) whole.withoutText = shorter->second.byForm;
        texts_[key] = objc::Strong<>(objc::Object{PluralFormat::of(std::move(whole)).self()});
    }
}

objc::Strong<> TextTable::find(const std::string& key) const {
    const auto found = texts_.find(key);
    return found == texts_.end() ? objc::Strong<>() : found->second;
}

std::vector<std::string> TextTable::keys() const {
    std::vector<std::string> keys;
    for (const auto& [key, text] : texts_) keys.push_back(key);
    return keys;
}

Texts& Texts::shared() {
    static auto* const one = new Texts();
    return *one;
}

std::vector<std::string> Texts::open(const std::filesystem::path& folder, const std::string& language) {
    const std::string wanted = language.empty() ? localeLanguage() : language;
    std::string table = wanted.substr(0, wanted.find_first_of("_-"));
    if (!std::filesystem::is_directory(folder / (table + ".lproj"))) table = usualLanguage;
    std::vector<std::string> trouble;
    TextTable english;
    TextTable own;
    std::error_code error;
    if (std::filesystem::is_directory(folder, error)) {
        english = TextTable::read(folder, std::string(usualLanguage), trouble);
        own = table == usualLanguage ? english : TextTable::read(folder, table, trouble);
    } else {
        trouble.push_back("The texts in " + folder.string() +
                          " cannot be read; English is shown. Install the product's texts again.");
    }
    TextTable builtIn = TextTable::builtIn();
    const std::lock_guard lock(mutex_);
    language_ = table == wanted.substr(0, table.size()) ? wanted : table;
    english_ = std::move(english);
    builtIn_ = std::move(builtIn);
    table_ = std::move(own);
    missing_.clear();
    return trouble;
}

objc::Strong<> Texts::text(objc::Object key) {
    const std::string name = uikit::utf8(key);
    const std::lock_guard lock(mutex_);
    if (auto text = table_.find(name)) return text;
    if (auto text = english_.find(name)) return text;
    if (builtIn_.isEmpty()) builtIn_ = TextTable::builtIn();  // before tables are opened
    if (auto text = builtIn_.find(name)) return text;
    if (missing_.insert(name).second) std::fprintf(stderr, "libQuorvel: there is no text for %s\n", name.c_str());
    return objc::Strong<>(key);
}

std::string Texts::language() const {
    const std::lock_guard lock(mutex_);
    return language_;
}

std::string localeLanguage() {
    for (const char* name : {"LC_ALL", "LC_MESSAGES", "LANG"}) {
        const char* value = std::getenv(name);
        if (!value || !*value) continue;
        const std::string_view locale(value);
        const auto language = locale.substr(0, locale.find_first_of(".@"));
        if (language == "C" || language == "POSIX") break;
        return std::string(language);
    }
    return std::string(usualLanguage);
}

}  // namespace quorvel
