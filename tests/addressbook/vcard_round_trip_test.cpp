// What is written is read again, in every version.
#include <gtest/gtest.h>
#include <rapidcheck.h>

#include "desktop/addressbook/vcard_writer.h"
#include "vcard_support.h"

namespace vcard::test {
namespace {

const std::vector<std::string> snippets = {"a",  "Zoë", "中文", "🎂",  "\n", "\\", ",",   ";",   ":",  "=", " ",
                                           "  ", "\t",  "\"",   "^n", "^",  "'",  "=20", "=0A", "x.", "é", "END:VCARD"};

/// Texts that look for trouble, some of them longer than a line.
rc::Gen<std::string> troublesomeText() {
    return rc::gen::map(rc::gen::container<std::vector<std::size_t>>(rc::gen::inRange<std::size_t>(0, snippets.size())),
                        [](const std::vector<std::size_t>& picks) {
                            std::string text;
                            for (const auto pick : picks) text += snippets[pick];
                            return text;
                        });
}

std::string without(std::string text, std::string_view letters) {
    std::erase_if(text, [&](char letter) { return letters.find(letter) != std::string_view::npos; });
    return text;
}

std::string trimmed(std::string text) {
    while (text.starts_with(' ')) text.erase(0, 1);
    while (text.ends_with(' ')) text.pop_back();
    return text;
}

Property someProperty(Version version) {
    Property property;
    property.group = *rc::gen::element<std::string>("", "item1", "a-b");
    property.name = *rc::gen::element<std::string>("FN", "NOTE", "X-OWN", "TEL");
    if (*rc::gen::arbitrary<bool>()) {
        property.add("TYPE", *rc::gen::element<std::string>("HOME", "cell", "x-own"));
        if (*rc::gen::arbitrary<bool>()) property.add("TYPE", "FAX");
    }
    if (*rc::gen::arbitrary<bool>()) {
        auto value = trimmed(without(*troublesomeText(), "\t"));
        if (version == Version::v21) value = trimmed(without(std::move(value), "\"\n"));
        if (!value.empty()) property.add("X-LABEL", value);
    }
    property.isBinary = *rc::gen::weightedElement<bool>({{4, false}, {1, true}});
    if (property.isBinary) {
        property.name = "PHOTO";
        property.value = *rc::gen::nonEmpty(rc::gen::arbitrary<std::string>());
        if (version == Version::v40) property.parameters = {{"TYPE", {"PNG"}}};
        return property;
    }
    auto text = *troublesomeText();
    if (version == Version::v21) text = without(std::move(text), "\\");
    const auto parts = *rc::gen::inRange(1, 4);
    property.value = escaped(text);
    for (int i = 1; i < parts; ++i) property.value += ';' + escaped(text);
    return property;
}

void expectRoundTrip(Version version) {
    EXPECT_TRUE(rc::check([version] {
        Card card;
        card.version = version;
        const auto count = *rc::gen::inRange(0, 6);
        for (int i = 0; i < count; ++i) card.properties.push_back(someProperty(version));
        const auto outcome = readText(write(card, version) + write(card, version));
        RC_ASSERT(outcome.problems == std::vector<std::string>());
        RC_ASSERT(outcome.cards == std::vector<Card>({card, card}));
    }));
}

TEST(VCardRoundTrip, theEarlyVersionReadsWhatItWrote) { expectRoundTrip(Version::v21); }
TEST(VCardRoundTrip, theUsualVersionReadsWhatItWrote) { expectRoundTrip(Version::v30); }
TEST(VCardRoundTrip, theLatestVersionReadsWhatItWrote) { expectRoundTrip(Version::v40); }

TEST(VCardRoundTrip, noLineIsLongerThan75BytesAndNoCharacterIsTorn) {
    EXPECT_TRUE(rc::check([] {
        Card card;
        card.properties.push_back(someProperty(Version::v30));
        card.properties.back().parameters.clear();
        std::istringstream lines(write(card, Version::v30));
        for (std::string line; std::getline(lines, line);) {
            RC_ASSERT(line.ends_with('\r'));
            RC_ASSERT(line.size() <= 76U);
            const auto second = line.starts_with(' ') ? static_cast<unsigned char>(line[1]) : 0U;
            RC_ASSERT((second & 0xC0) != 0x80);
        }
    }));
}

TEST(VCardRoundTrip, contentLinesAreReadAgain) {
    EXPECT_TRUE(rc::check([] {
        const Property property = someProperty(Version::v30);
        RC_ASSERT(propertyOf(contentLine(property), Version::v30) == property);
    }));
}

TEST(VCardRoundTrip, everySampleIsTheSameAfterWriting) {
    for (const char* name :
         {"ez-vcard/John_Doe_EVOLUTION.vcf", "ez-vcard/outlook-2007.vcf", "ez-vcard/rfc6350-example.vcf",
          "msgvault/v4-registry-smoke.vcf", "ez-vcard/John_Doe_MAC_ADDRESS_BOOK.vcf", "ez-vcard/issue114.vcf"}) {
        const auto first = readSample(name);
        std::string written;
        for (const Card& card : first.cards) written += write(card, Version::v30);
        const auto second = readText(written);
        ASSERT_EQ(second.cards.size(), first.cards.size()) << name;
        for (std::size_t i = 0; i < first.cards.size(); ++i)
            EXPECT_EQ(second.cards[i].properties, first.cards[i].properties) << name;
    }
}

TEST(VCardRoundTrip, inTheEarlyVersionABlankPartsABackslashFromASemicolon) {
    Card card;
    card.properties.push_back({"", "N", {}, "a\\\\;b"});
    const auto outcome = readText(write(card, Version::v21));
    EXPECT_EQ(split(outcome.cards[0].properties[0].value, ';'), (std::vector<std::string>{"a\\ ", "b"}));
}

TEST(VCardRoundTrip, aPropertyWithoutAUsableNameIsNotWritten) {
    Card card;
    card.properties.push_back({"", "A:B", {}, "x"});
    card.properties.push_back({"a b", "N", {}, "x"});
    card.properties.push_back({"", "", {}, "x"});
    EXPECT_EQ(write(card, Version::v30), "BEGIN:VCARD\r\nVERSION:3.0\r\nEND:VCARD\r\n");
}

}  // namespace
}  // namespace vcard::test
