// Content lines, folded.
#include "desktop/addressbook/vcard_writer.h"

#include <algorithm>

#include "desktop/addressbook/vcard_encoding.h"

namespace vcard {
namespace {

constexpr std::size_t longestLine = 75;

std::string_view numberOf(Version version) {
    switch (version) {
        case Version::v21:
            return "2.1";
        case Version::v30:
            return "3.0";
        default:
            return "4.0";
    }
}

bool isControl(char letter) { return static_cast<unsigned char>(letter) < 0x20 || letter == 0x7F; }

std::string parameterText(std::string_view value, Version version) {
    std::string text;
    bool needsQuotes = false;
    for (const char letter : value) {
        needsQuotes = needsQuotes || letter == ':' || letter == ';' || letter == ',';
        if (version == Version::v21) {
            if (!isControl(letter)) text += letter == '"' ? '\'' : letter;
        } else if (letter == '\n') {
            text += "^n";
        } else if (letter == '"') {
            text += "^'";
        } else if (letter == '^') {
            text += "^^";
        } else if (!isControl(letter)) {
            text += letter;
        }
    }
    needsQuotes = needsQuotes || text.starts_with(' ') || text.ends_with(' ');
    return needsQuotes ? '"' + text + '"' : text;
}

std::string headerOf(const Property& property, Version version) {
    std::string header = property.group.empty() ? property.name : property.group + '.' + property.name;
    for (const Parameter& parameter : property.parameters) {
        const bool isDataType =
            version == Version::v40 && property.isBinary && (parameter.name == "TYPE" || parameter.name == "MEDIATYPE");
        if (isDataType) continue;
        std::string values;
        for (const std::string& value : parameter.values) {
            // Version 2.1 repeats the parameter where the later ones list the values.
            if (version == Version::v21)
                header += ';' + parameter.name + '=' + parameterText(value, version);
            else
                values += (values.empty() ? "" : ",") + parameterText(value, version);
        }
        if (!values.empty()) header += ';' + parameter.name + '=' + values;
    }
    return header;
}

/// Lines of at most 75 bytes; characters stay whole, and so do the first bytes. The first byte of each further line is
/// a blank.
std::string folded(std::string_view line, std::size_t whole = 0) {
    std::string lines;
    for (std::size_t room = std::max(longestLine, whole); line.size() > room; room = longestLine - 1) {
        std::size_t end = room;
        while (end > room - 4 && (static_cast<unsigned char>(line[end]) & 0xC0) == 0x80) --end;
        lines += line.substr(0, end);
        lines += "\r\n ";
        line.remove_prefix(end);
    }
    lines += line;
    return lines + "\r\n";
}

/// A header and its value in quoted-printable, with soft line breaks. None of them tears a "=XX", and none stands
/// before a blank, which looks like a fold.
std::string softlyBroken(const std::string& header, std::string_view value) {
    std::string lines = header;
    std::size_t room = std::max(longestLine, header.size() + 8) - header.size();
    for (; value.size() > room; room = longestLine) {
        std::size_t end = room - 1;
        if (value[end] == ' ') --end;
        if (value[end - 1] == '=') end -= 1;
        if (value[end - 2] == '=') end -= 2;
        lines += value.substr(0, end);
        lines += "=\r\n";
        value.remove_prefix(end);
    }
    lines += value;
    return lines + "\r\n";
}

/// The text as version 2.1 has it: semicolons escaped, everything else itself.
std::string earlyText(std::string_view value) {
    std::string text;
    for (std::size_t i = 0; i < value.size(); ++i) {
        const char next = value[i] == '\\' && i + 1 < value.size() ? value[i + 1] : '\0';
        if (next == 'n' || next == 'N') {
            text += '\n';
        } else if (next == '\\') {
            text +=
                i + 2 < value.size() && (value[i + 2] == ';' || value.substr(i + 2).starts_with("\\;")) ? "\\ " : "\\";
        } else if (next == ',' || next == ':') {
            text += next;
        } else if (next == ';') {
            text += "\\;";
        } else {
            text += value[i];
            continue;
        }
        ++i;
    }
    return text;
}

bool isPlain(std::string_view text) {
    return std::ranges::all_of(text, [](char letter) { return letter >= 0x20 && letter < 0x7F && letter != '\\'; });
}

std::string earlyLine(const Property& property) {
    const std::string header = headerOf(property, Version::v21);
    if (property.isBinary) {
        const std::string early = header + ";ENCODING=BASE64:";
        return folded(early + toBase64(property.value), early.size()) + "\r\n";
    }
    const std::string text = earlyText(property.value);
    // A fold of this version stands before a blank only, so long lines are broken in the other way.
    if (isPlain(text) && header.size() + 1 + text.size() <= longestLine) return header + ':' + text + "\r\n";
    const std::string printable = toQuotedPrintable(text);
    std::string coded;
    for (std::size_t i = 0; i < printable.size(); ++i) {
        // Two blanks could be taken for a fold, and a line of its own that ends a card for just that.
        const bool isDouble = printable[i] == ' ' && coded.ends_with(' ');
        const bool isMark = printable[i] == ':' && equalsIgnoringCase(printable.substr(i + 1, 5), "VCARD");
        if (isDouble || isMark)
            coded += isMark ? "=3A" : "=20";
        else
            coded += printable[i];
    }
    if (coded.ends_with(' ')) coded.replace(coded.size() - 1, 1, "=20");
    return softlyBroken(header + ";CHARSET=UTF-8;ENCODING=QUOTED-PRINTABLE:", coded);
}

std::string dataAddress(const Property& property) {
    const auto& media = property.parameter("MEDIATYPE");
    const auto& types = property.parameter("TYPE");
    std::string name;
    if (!media.empty()) {
        name = media.front();
    } else if (!types.empty()) {
        name = "image/" + types.front();
        std::ranges::transform(name, name.begin(),
                               [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c; });
    }
    return "data:" + name + ";base64," + toBase64(property.value);
}

std::string laterLine(const Property& property, Version version) {
    const std::string header = headerOf(property, version);
    if (!property.isBinary) {
        std::string value;
        for (const char letter : property.value) {
            if (letter == '\n')
                value += "\\n";
            else if (letter != '\r')
                value += letter;
        }
        return header + ':' + value;
    }
    if (version == Version::v40) return header + ':' + dataAddress(property);
    return header + ";ENCODING=b:" + toBase64(property.value);
}

bool isUsable(const Property& property) {
    const auto isWord = [](std::string_view text) {
        return std::ranges::all_of(text, [](char letter) {
            return (letter >= 'A' && letter <= 'Z') || (letter >= 'a' && letter <= 'z') ||
                   (letter >= '0' && letter <= '9') || letter == '-' || letter == '_';
        });
    };
    return !property.name.empty() && isWord(property.name) && isWord(property.group);
}

}  // namespace

std::string contentLine(const Property& property) { return laterLine(property, Version::v30); }

std::string write(const Card& card, Version version) {
    std::string text = "BEGIN:VCARD\r\nVERSION:" + std::string(numberOf(version)) + "\r\n";
    for (const Property& property : card.properties) {
        if (!isUsable(property)) continue;
        text += version == Version::v21 ? earlyLine(property) : folded(laterLine(property, version));
    }
    return text + "END:VCARD\r\n";
}

}  // namespace vcard
