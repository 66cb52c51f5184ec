// Plural forms by ICU's rules, and the hook on Foundation's formatting.
#include "desktop/quorvel/services/plural_format.h"

#include <unicode/numberformatter.h>
#include <unicode/plurrule.h>

#include <cstdarg>

#include "desktop/uikit/text.h"
#include "platform/substrate.h"

namespace quorvel {
namespace {

constexpr std::string_view numberPlace = "%ld";
constexpr std::string_view textPlace = "%@";

using FormatFunction = id (*)(id, SEL, id, id, std::va_list);
IMP formatOfFoundation = nullptr;

/// Whether the next argument, an object, is there. The arguments stay as they are.
bool isTextNext(std::va_list arguments) {
    std::va_list next;
    va_copy(next, arguments);
    const bool isThere = va_arg(next, id) != nullptr;
    va_end(next);
    return isThere;
}

/// `initWithFormat:locale:arguments:` of the string that is being made.
id initWithFormat(id self, SEL name, id format, id locale, std::va_list arguments) {
    const auto foundation = reinterpret_cast<FormatFunction>(reinterpret_cast<void (*)()>(formatOfFoundation));
    if (!format || object_getClass(format) != objc::classOf<PluralFormat>())
        return foundation(self, name, format, locale, arguments);
    std::va_list following;
    va_copy(following, arguments);
    const auto number = va_arg(following, std::int64_t);
    const objc::AutoreleasePool pool;
    const PluralTexts& texts = objc::peerOf<PluralFormat>(format)->texts();
    std::string text = formatFor(texts, texts.byForm, number);
    if (!texts.withoutText.empty() && text.find(textPlace) != std::string::npos && !isTextNext(following))
        text = formatFor(texts, texts.withoutText, number);
    const auto chosen = uikit::nsString(text);
    id made = foundation(self, name, chosen.self, locale, following);
    va_end(following);
    return made;
}

}  // namespace

struct Counting::Rules {
    std::unique_ptr<icu::PluralRules> plural;
    icu::number::LocalizedNumberFormatter digits;
};

Counting::Counting(const std::string& language) : rules_(std::make_unique<Rules>()) {
    UErrorCode status = U_ZERO_ERROR;
    rules_->plural.reset(icu::PluralRules::forLocale(icu::Locale(language.c_str()), status));
    if (U_FAILURE(status)) {
        status = U_ZERO_ERROR;
        rules_->plural.reset(icu::PluralRules::forLocale(icu::Locale::getEnglish(), status));
    }
    rules_->digits = icu::number::NumberFormatter::withLocale(icu::Locale((language + "@numbers=latn").c_str()));
}

Counting::~Counting() = default;

std::string Counting::form(std::int64_t number) const {
    if (!rules_->plural) return "other";
    std::string form;
    rules_->plural->select(static_cast<double>(number)).toUTF8String(form);
    return form;
}

std::string Counting::digits(std::int64_t number) const {
    UErrorCode status = U_ZERO_ERROR;
    std::string text;
    rules_->digits.formatInt(number, status).toString(status).toUTF8String(text);
    return U_SUCCESS(status) ? text : std::to_string(number);
}

std::string formatFor(const PluralTexts& texts, const PluralTexts::Forms& forms, std::int64_t number) {
    auto found = forms.find(texts.counting->form(number));
    if (found == forms.end()) found = forms.find("other");
    if (found == forms.end()) return {};
    std::string format = found->second;
    if (const auto place = format.find(numberPlace); place != std::string::npos)
        format.replace(place, numberPlace.size(), texts.counting->digits(number));
    return format;
}

void PluralFormat::define(objc::ClassDefinition<PluralFormat>& definition) {
    definition.method<"init", &PluralFormat::init>();
    definition.method<"copyWithZone:", &PluralFormat::copyWithZone>();
    definition.method<"length", &PluralFormat::length>();
    definition.method<"characterAtIndex:", &PluralFormat::characterAtIndex>();
}

objc::Ref<PluralFormat> PluralFormat::of(PluralTexts texts) {
    auto made = objc::Ref<PluralFormat>::make();
    const auto other = texts.byForm.find("other");
    made->plain_ = objc::Strong<>(uikit::nsString(other == texts.byForm.end() ? std::string() : other->second));
    made->texts_ = std::move(texts);
    return made;
}

objc::Object PluralFormat::copyWithZone(void*) const {
    const objc::Object itself{self};
    objc::retain(itself);
    return itself;
}

unsigned long PluralFormat::length() const { return objc::send<"length", unsigned long>(plain_.get()); }

std::uint16_t PluralFormat::characterAtIndex(unsigned long index) const {
    return objc::send<"characterAtIndex:", std::uint16_t>(plain_.get(), index);
}

void registerPluralFormat() {
    if (formatOfFoundation) return;
    objc::classOf<PluralFormat>();
    // The class of a string that has no text yet; it carries out every +stringWithFormat:.
    const auto empty = objc::sendClass<"NSString", "alloc", objc::Object>();
    MSHookMessageEx(object_getClass(empty.self), objc::selector<"initWithFormat:locale:arguments:">(),
                    objc::implementation(&initWithFormat), &formatOfFoundation);
}

}  // namespace quorvel
