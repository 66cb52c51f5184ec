// Reading the header of a content line and decoding its value.
#include "desktop/addressbook/vcard_property.h"

#include <algorithm>

#include "desktop/addressbook/vcard_encoding.h"
#include "desktop/addressbook/vcard_reader.h"
#include "desktop/files/utf8.h"

namespace vcard {
namespace {

/// More than any program writes. Each parameter is looked for among those before it.
constexpr std::size_t mostParameters = 100;

bool isName(std::string_view text) {
    return !text.empty() && std::ranges::all_of(text, [](char letter) {
        return (letter >= 'A' && letter <= 'Z') || (letter >= 'a' && letter <= 'z') ||
               (letter >= '0' && letter <= '9') || letter == '-' || letter == '_';
    });
}

std::string_view trimmed(std::string_view text) {
    const auto begin = text.find_first_not_of(" \t");
    if (begin == std::string_view::npos) return {};
    return text.substr(begin, text.find_last_not_of(" \t") - begin + 1);
}

/// The pieces between separators outside quotes; a quote that is never closed is an ordinary character.
std::vector<std::string_view> splitOutsideQuotes(std::string_view text, char separator) {
    const bool hasQuotes = std::ranges::count(text, '"') % 2 == 0;
    std::vector<std::string_view> pieces;
    std::size_t begin = 0;
    bool isQuoted = false;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == '"') isQuoted = hasQuotes && !isQuoted;
        if (text[i] != separator || isQuoted) continue;
        pieces.push_back(text.substr(begin, i - begin));
        begin = i + 1;
    }
    pieces.push_back(text.substr(begin));
    return pieces;
}

/// "^n", "^'" and "^^" of parameters.
std::string withoutCarets(std::string_view text) {
    std::string plain;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char next = text[i] == '^' && i + 1 < text.size() ? text[i + 1] : '\0';
        const char meaning = next == 'n' ? '\n' : next == '\'' ? '"' : next == '^' ? '^' : '\0';
        if (meaning != '\0') ++i;
        plain += meaning != '\0' ? meaning : text[i];
    }
    return plain;
}

std::string parameterValue(std::string_view text, Version version) {
    text = trimmed(text);
    if (text.size() >= 2 && text.front() == '"' && text.back() == '"') text = text.substr(1, text.size() - 2);
    return version == Version::v21 ? std::string(text) : withoutCarets(text);
}

/// The name of the parameter that a bare word of version 2.1 belongs to.
std::string_view nameOfBareWord(std::string_view word) {
    for (const std::string_view encoding : {"QUOTED-PRINTABLE", "BASE64", "B", "8BIT", "7BIT"})
        if (equalsIgnoringCase(word, encoding)) return "ENCODING";
    for (const std::string_view place : {"INLINE", "CONTENT-ID", "CID", "URL"})
        if (equalsIgnoringCase(word, place)) return "VALUE";
    return "TYPE";
}

struct Header {
    Property property;
    std::string encoding;  // capitals
    std::string charset;
};

/// Those of a name that is one too many are left out.
void addParameter(Header& header, std::string_view text, Version version) {
    const auto equals = text.find('=');
    std::string name;
    if (equals == std::string_view::npos)
        name = nameOfBareWord(trimmed(text));
    else
        name = upperCase(trimmed(text.substr(0, equals)));
    const bool isFull = header.property.parameters.size() >= mostParameters;
    if (isFull && header.property.parameter(name).empty()) return;
    const std::string_view values = equals == std::string_view::npos ? text : text.substr(equals + 1);
    for (const auto each : splitOutsideQuotes(values, ',')) {
        const std::string value = parameterValue(each, version);
        if (value.empty() || name.empty()) continue;
        if (name == "ENCODING") {
            header.encoding = upperCase(value);
        } else if (name == "CHARSET") {
            header.charset = value;
        } else if (name == "TYPE") {
            // "work,voice" in quotes are two types.
            for (const auto type : splitOutsideQuotes(value, ','))
                if (!trimmed(type).empty()) header.property.add(name, trimmed(type));
        } else {
            header.property.add(name, value);
        }
    }
}

std::optional<Header> readHeader(const std::string& text, Version version) {
    Header header;
    const auto pieces = splitOutsideQuotes(text, ';');
    std::string_view name = trimmed(pieces.front());
    if (const auto dot = name.find('.'); dot != std::string_view::npos) {
        if (!isName(name.substr(0, dot))) return std::nullopt;
        header.property.group = name.substr(0, dot);
        name.remove_prefix(dot + 1);
    }
    if (!isName(name)) return std::nullopt;
    header.property.name = upperCase(name);
    for (std::size_t i = 1; i < pieces.size(); ++i) addParameter(header, pieces[i], version);
    return header;
}

/// UTF-8 of a text: from the charset it names, else as it is, else from the usual charset.
std::string decoded(std::string bytes, const std::string& named, const std::string& usual,
                    const std::function<void(const std::string&)>& complain) {
    if (!named.empty() && !equalsIgnoringCase(named, "UTF-8")) {
        if (auto text = fromCharset(bytes, named)) return *std::move(text);
        complain("the charset " + named + " is not known; the text is read as UTF-8 or " + usual);
    }
    if (files::isUtf8(bytes)) return bytes;
    if (auto text = fromCharset(bytes, usual)) return *std::move(text);
    return fromCharset(bytes, "windows-1252").value_or("");
}

/// The escapes of version 3.0 for a text of version 2.1, where a backslash escapes a semicolon alone and, in
/// quoted-printable, new lines are bytes. Plain texts are often escaped the later way.
std::string withLaterEscapes(std::string_view text, bool isPlain) {
    std::string value;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char next = text[i] == '\\' && i + 1 < text.size() ? text[i + 1] : '\0';
        const bool isEscape =
            next == ';' || (isPlain && (next == 'n' || next == 'N' || next == ',' || next == ':' || next == '\\'));
        if (isEscape) {
            value += {'\\', next};
            ++i;
        } else if (text[i] == ',' || text[i] == '\\') {
            value += {'\\', text[i]};
        } else {
            value += text[i];
        }
    }
    return value;
}

/// One "\n" for every spelling of a new line within the text; a null character is no text.
std::string withEscapedLines(std::string_view text) {
    std::string value;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == '\r' && i + 1 < text.size() && text[i + 1] == '\n') continue;
        if (text[i] == '\r' || text[i] == '\n')
            value += "\\n";
        else if (text[i] != '\0')
            value += text[i];
    }
    return value;
}

/// A "data:" address with base64, the way of version 4.0, holds the bytes themselves.
bool takeDataAddress(Property& property) {
    constexpr std::string_view mark = ";base64,";
    if (!equalsIgnoringCase(std::string_view(property.value).substr(0, 5), "data:")) return false;
    const std::string address = unescaped(property.value);
    const auto at = address.find(mark);
    if (at == std::string::npos) return false;
    auto bytes = fromBase64(std::string_view(address).substr(at + mark.size()));
    if (!bytes) return false;
    const std::string media = address.substr(5, at - 5);
    if (upperCase(media).starts_with("IMAGE/"))
        property.add("TYPE", upperCase(std::string_view(media).substr(6)));
    else if (!media.empty())
        property.add("MEDIATYPE", media);
    property.value = *std::move(bytes);
    property.isBinary = true;
    return true;
}

}  // namespace

std::optional<Property> readProperty(const ContentLine& line, Version version, const std::string& charset,
                                     const Complaint& complain) {
    const auto colon = endOfHeader(line.text);
    if (colon == std::string::npos) {
        complain(0, "the line has no colon and is passed over");
        return std::nullopt;
    }
    const auto inCharset = [&](std::string bytes, const std::string& named) {
        return decoded(std::move(bytes), named, charset, [&](const std::string& text) { complain(0, text); });
    };
    auto header = readHeader(withEscapedLines(inCharset(line.text.substr(0, colon), "")), version);
    if (!header) {
        complain(0, "the line does not begin with the name of a property and is passed over");
        return std::nullopt;
    }
    Property property = std::move(header->property);
    property.position = line.position(0);
    std::string value = line.text.substr(colon + 1);
    if (header->encoding == "BASE64" || header->encoding == "B") {
        if (auto bytes = fromBase64(value)) {
            property.value = *std::move(bytes);
            property.isBinary = true;
            return property;
        }
        complain(colon + 1, "the value is not base64, as its header says, and is kept as text");
    }
    const bool isQuotedPrintable = header->encoding == "QUOTED-PRINTABLE";
    if (isQuotedPrintable) value = fromQuotedPrintable(value);
    property.value = inCharset(std::move(value), header->charset);
    if (takeDataAddress(property)) return property;
    if (version == Version::v21) property.value = withLaterEscapes(property.value, !isQuotedPrintable);
    property.value = withEscapedLines(property.value);
    return property;
}

std::optional<Property> propertyOf(std::string_view line, Version version) {
    ContentLine content;
    content.text = line;
    return readProperty(content, version, "windows-1252", [](std::size_t, const std::string&) {});
}

}  // namespace vcard
