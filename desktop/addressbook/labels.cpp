// Types of vCards and words of five languages.
#include "desktop/addressbook/labels.h"

#include <algorithm>
#include <array>

namespace contacts::label {
namespace {

/// The languages of the words below, in their order.
constexpr std::array<std::string_view, 5> languages = {"en", "de", "es", "ru", "ar"};

struct Known {
    const char* label;
    const char* words[languages.size()];
};
constexpr Known known[] = {
    {home, {"home", "Privat", "casa", "домашний", "المنزل"}},
    {work, {"work", "Arbeit", "trabajo", "рабочий", "العمل"}},
    {other, {"other", "Andere", "otro", "другой", "آخر"}},
    {mobile, {"mobile", "Mobil", "móvil", "сотовый", "المحمول"}},
    {iPhone, {"iPhone", "iPhone", "iPhone", "iPhone", "iPhone"}},
    {mainNumber, {"main", "Zentrale", "principal", "основной", "رئيسي"}},
    {homeFax, {"home fax", "Fax (privat)", "fax de casa", "домашний факс", "فاكس المنزل"}},
    {workFax, {"work fax", "Fax (Arbeit)", "fax del trabajo", "рабочий факс", "فاكس العمل"}},
    {otherFax, {"other fax", "Fax (andere)", "otro fax", "другой факс", "فاكس آخر"}},
    {pager, {"pager", "Pager", "busca", "пейджер", "النداء"}},
    {homePage, {"home page", "Homepage", "página de inicio", "домашняя страница", "الصفحة الرئيسية"}},
    {anniversary, {"anniversary", "Jahrestag", "aniversario", "годовщина", "الذكرى السنوية"}},
    {spouse, {"spouse", "Ehepartner", "cónyuge", "супруг(а)", "الزوج"}},
};

/// Types that say something else than where a value belongs.
constexpr std::string_view meaningless[] = {"PREF",  "VOICE",  "MSG",    "TEXT", "VIDEO",    "INTERNET",
                                            "X400",  "POSTAL", "PARCEL", "INTL", "DOM",      "BBS",
                                            "MODEM", "ISDN",   "PCS",    "CAR",  "TEXTPHONE"};

struct KnownProperty {
    Property property;
    const char* words[languages.size()];
};
constexpr KnownProperty properties[] = {
    {Property::phone, {"Phone", "Telefon", "Teléfono", "Телефон", "الهاتف"}},
    {Property::email, {"Email", "E-Mail", "Correo", "Эл. почта", "البريد الإلكتروني"}},
    {Property::url, {"URL", "URL", "URL", "URL", "URL"}},
    {Property::address, {"Address", "Adresse", "Dirección", "Адрес", "العنوان"}},
    {Property::birthday, {"Birthday", "Geburtstag", "Cumpleaños", "День рождения", "تاريخ الميلاد"}},
    {Property::date, {"Date", "Datum", "Fecha", "Дата", "التاريخ"}},
    {Property::relatedNames,
     {"Related People", "Zugehörige Namen", "Personas relacionadas", "Близкие", "أسماء ذات صلة"}},
    {Property::instantMessage, {"Instant Message", "Nachricht", "Mensajería", "Мессенджер", "رسالة فورية"}},
    {Property::socialProfile, {"Social Profile", "Soziales Profil", "Perfil social", "Профиль", "ملف تعريف"}},
    {Property::note, {"Notes", "Notizen", "Notas", "Заметки", "ملاحظات"}},
    {Property::firstName, {"First Name", "Vorname", "Nombre", "Имя", "الاسم الأول"}},
    {Property::lastName, {"Last Name", "Nachname", "Apellidos", "Фамилия", "اسم العائلة"}},
    {Property::organization, {"Company", "Firma", "Empresa", "Компания", "الشركة"}},
    {Property::department, {"Department", "Abteilung", "Departamento", "Отдел", "القسم"}},
    {Property::jobTitle, {"Job Title", "Position", "Cargo", "Должность", "المسمى الوظيفي"}},
    {Property::nickname, {"Nickname", "Spitzname", "Apodo", "Псевдоним", "الكنية"}},
};

std::size_t indexOf(std::string_view language) {
    const auto* at = std::ranges::find(languages, language.substr(0, 2));
    return at == languages.end() ? 0 : static_cast<std::size_t>(at - languages.begin());
}

/// The language of the words that stand for known labels in the call log.
constexpr std::string_view logLanguage = "en";

/// The label that the text is, or is a word for in one of the languages; null for an own label.
const Known* knownAs(std::string_view text) {
    const auto* found = std::ranges::find_if(known, [text](const Known& each) {
        return text == each.label || std::ranges::find(each.words, text) != std::end(each.words);
    });
    return found == std::end(known) ? nullptr : found;
}

/// The word between the marks of a label that is not known here; any other label as it is.
std::string unmarked(std::string_view label) {
    if (!label.starts_with("_$!<") || !label.ends_with(">!$_") || label.size() < 8) return std::string(label);
    std::string word(label.substr(4, label.size() - 8));
    std::ranges::transform(word, word.begin(),
                           [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c; });
    return word;
}

}  // namespace

std::string ofTypes(const vcard::Property& property) {
    const auto has = [&property](std::string_view type) { return property.hasType(type); };
    if (has("FAX")) return has("HOME") ? homeFax : has("WORK") ? workFax : otherFax;
    if (has("PAGER")) return pager;
    if (has("IPHONE")) return iPhone;
    if (has("CELL") || has("MOBILE")) return mobile;
    if (has("MAIN")) return mainNumber;
    if (has("HOME")) return home;
    if (has("WORK")) return work;
    if (has("OTHER")) return other;
    for (const std::string& type : property.parameter("TYPE")) {
        const auto isThis = [&type](std::string_view word) { return vcard::equalsIgnoringCase(type, word); };
        if (std::ranges::none_of(meaningless, isThis)) return type;
    }
    return {};
}

bool addTypes(vcard::Property& property, std::string_view label) {
    struct Types {
        std::string_view label;
        std::array<const char*, 2> types;
    };
    static constexpr Types all[] = {{home, {"HOME"}},           {work, {"WORK"}},           {other, {"OTHER"}},
                                    {mobile, {"CELL"}},         {iPhone, {"IPHONE"}},       {mainNumber, {"MAIN"}},
                                    {homeFax, {"HOME", "FAX"}}, {workFax, {"WORK", "FAX"}}, {otherFax, {"FAX"}},
                                    {pager, {"PAGER"}}};
    const auto* found = std::ranges::find(all, label, &Types::label);
    if (found == std::end(all)) return label.empty();
    for (const char* type : found->types)
        if (type) property.add("TYPE", type);
    return true;
}

std::string forPeople(std::string_view label, std::string_view language) {
    const auto* found = std::ranges::find_if(known, [label](const Known& each) { return label == each.label; });
    if (found != std::end(known)) return found->words[indexOf(language)];
    return unmarked(label);
}

std::string inLog(std::string_view label) {
    const Known* found = knownAs(label);
    return found ? found->words[indexOf(logLanguage)] : unmarked(label);
}

std::string ofLog(std::string_view text, std::string_view language) {
    const Known* found = knownAs(text);
    return found ? found->words[indexOf(language)] : unmarked(text);
}

std::string ofProperty(Property property, std::string_view language) {
    const auto* found = std::ranges::find(properties, property, &KnownProperty::property);
    return found == std::end(properties) ? std::string() : found->words[indexOf(language)];
}

}  // namespace contacts::label
