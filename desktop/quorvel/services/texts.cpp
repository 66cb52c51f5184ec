// String tables: property lists without the outer braces, as translators know them.
#include "desktop/quorvel/services/texts.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <fstream>

#include "desktop/quorvel/services/built_in_texts.h"
#include "desktop/quorvel/services/plural_format.h"
#include "desktop/uikit/text.h"

namespace quorvel {
namespace {

constexpr std::string_view usualLanguage = "en";

/// The dictionary that a table's content makes; null where it is none.
objc::Strong<> dictionaryOf(std::string_view content) {
    const std::string list = "{" + std::string(content) + "}";
    const auto data = objc::sendClass<"NSData", "dataWithBytes:length:", objc::Object>(
        static_cast<const void*>(list.data()), static_cast<unsigned long>(list.size()));
    objc::Object read;
    try {
        read =
            objc::sendClass<"NSPropertyListSerialization", "propertyListWithData:options:format:error:", objc::Object>(
                data, 0UL, static_cast<void*>(nullptr), static_cast<void*>(nullptr));
    } catch (...) {
        read = {};  // Foundation raises on some malformed lists and answers nil on others.
    }
    return objc::isKindOf(read, objc::classNamed<"NSDictionary">()) ? objc::Strong<>(read) : objc::Strong<>();
}

/// The dictionary in the file; null, with a sentence, where there is none.
objc::Strong<> dictionaryIn(const std::filesystem::path& file, std::vector<std::string>& trouble) {
    std::ifstream stream(file, std::ios::binary);
    const std::string content{std::istreambuf_iterator<char>(stream), {}};
    if (!stream) {
        trouble.push_back("The texts in " + file.string() + " cannot be read. Install the product's texts again.");
        return {};
    }
    auto read = dictionaryOf(content);
    if (!read)
        trouble.push_back("The texts in " + file.string() +
                          " are damaged; English is shown for them. The file was left as it is: install the product's "
                          "texts again.");
    return read;
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
    table.addStrings(dictionaryOf(builtInStrings()), {}, trouble);
    table.addPlurals(dictionaryOf(builtInPlurals()), std::string(usualLanguage), {}, trouble);
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
