// A format whose wording depends on the number that fills it: "1 call", "2 calls".
#pragma once

#include <map>
#include <memory>
#include <string>

#include "objc/layer.h"

namespace quorvel {

/// How a language counts: its plural forms and how it groups digits. Any thread.
class Counting {
  public:
    /// The language as ICU names it: "de", "en_GB". An unknown one counts as English does.
    explicit Counting(const std::string& language);
    ~Counting();

    /// "zero", "one", "two", "few", "many" or "other".
    std::string form(std::int64_t number) const;
    /// The number with the language's separators, in Western digits: they stand beside durations, which have them too.
    std::string digits(std::int64_t number) const;

  private:
    struct Rules;
    std::unique_ptr<Rules> rules_;
};

/// The texts of one key by plural form, and the counting of their language. There is always an "other".
struct PluralTexts {
    using Forms = std::map<std::string, std::string, std::less<>>;
    Forms byForm;
    std::shared_ptr<const Counting> counting;
    /// What is said in place of a form that takes a text after the number where that text is missing; may be empty.
    Forms withoutText = {};
};

/// The format for that number: the text of its form among `forms`, which belong to `texts`, in which the first "%ld" is
/// the number itself. What follows takes the arguments after the number.
std::string formatFor(const PluralTexts& texts, const PluralTexts::Forms& forms, std::int64_t number);

/// QVPluralFormat, a string. Used as a format, its first argument (a signed 64-bit integer) chooses the form, and a
/// text that is missing after it is left out; read as a string, it is the form "other".
class PluralFormat : public objc::PeerBase {
  public:
    using Super = objc::Foreign<"NSString">;
    static constexpr objc::Name className{"QVPluralFormat"};
    static void define(objc::ClassDefinition<PluralFormat>& definition);

    /// Needs an autorelease pool.
    static objc::Ref<PluralFormat> of(PluralTexts texts);

    const PluralTexts& texts() const { return texts_; }
    /// Itself: it never changes.
    objc::Object copyWithZone(void*) const;
    objc::Object init() { return {self}; }
    unsigned long length() const;
    std::uint16_t characterAtIndex(unsigned long index) const;

  private:
    PluralTexts texts_;
    objc::Strong<> plain_;
};

/// Registers the class and makes Foundation's formatting know it. Once, at load.
void registerPluralFormat();

}  // namespace quorvel
