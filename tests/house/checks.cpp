// The checks that look at one file at a time.
#include "tests/house/checks.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <functional>
#include <ostream>
#include <regex>

namespace house {

namespace {

constexpr std::size_t longestFile = 400;

bool isDigit(char character) { return std::isdigit(static_cast<unsigned char>(character)) != 0; }
bool isLetter(char character) { return std::isalpha(static_cast<unsigned char>(character)) != 0; }

// Adds a finding for each line that the predicate holds for.
Findings linesWhere(const SourceTree& tree, const std::string& what,
                    const std::function<bool(const std::string&)>& holds) {
    Findings findings;
    for (const SourceFile& file : tree.files) {
        for (std::size_t index = 0; index < file.lines.size(); ++index) {
            if (holds(file.lines[index])) findings.push_back({file.path, index + 1, what});
        }
    }
    return findings;
}

bool opensWithComment(const SourceFile& file) {
    std::size_t first = 0;
    if (!file.lines.empty() && file.lines.front().starts_with("#!")) first = 1;
    if (file.lines.size() <= first) return false;
    const std::string& line = file.lines[first];
    const bool isComment = file.isCpp() ? line.starts_with("//") || line.starts_with("/*") : line.starts_with("#");
    return isComment && std::ranges::any_of(line, isLetter);
}

// Whether "Part" or "Parts" stands here, followed by a number, a full stop and a digit.
bool refersByNumber(std::string_view text) {
    text.remove_prefix(4);
    if (text.starts_with('s')) text.remove_prefix(1);
    const auto number = text.find_first_not_of(' ');
    if (number == 0 || number == std::string_view::npos) return false;
    text.remove_prefix(number);
    const auto stop = std::ranges::find_if_not(text, isDigit) - text.begin();
    text.remove_prefix(static_cast<std::size_t>(stop));
    return stop > 0 && text.size() >= 2 && text[0] == '.' && isDigit(text[1]);
}

}  // namespace

std::ostream& operator<<(std::ostream& out, const Finding& finding) {
    return out << finding.path << ':' << finding.line << ": " << finding.what;
}

Findings overlongFiles(const SourceTree& tree) {
    Findings findings;
    for (const SourceFile& file : tree.files) {
        if (!file.isCpp() && !file.isScript()) continue;
        if (file.isUnder("tests") || file.lines.size() <= longestFile) continue;
        findings.push_back({file.path, file.lines.size(),
                            "the file is longer than " + std::to_string(longestFile) + " lines: what is it doing?"});
    }
    return findings;
}

Findings filesWithoutOpeningComment(const SourceTree& tree) {
    Findings findings;
    for (const SourceFile& file : tree.files) {
        if (!file.isCpp() && !file.isScript()) continue;
        if (!opensWithComment(file)) findings.push_back({file.path, 1, "the file does not open by saying what it is"});
    }
    return findings;
}

Findings trailingWhitespace(const SourceTree& tree) {
    return linesWhere(tree, "the line ends in white space", [](const std::string& line) {
        return !line.empty() && std::isspace(static_cast<unsigned char>(line.back())) != 0;
    });
}

Findings numberedReferences(const SourceTree& tree) {
    return linesWhere(tree, "the line points to a numbered part of another text", [](const std::string& line) {
        for (const std::string_view word : {"Part", "part"}) {
            for (auto at = line.find(word); at != std::string::npos; at = line.find(word, at + 1)) {
                const bool isWord = at == 0 || !isLetter(line[at - 1]);
                if (isWord && refersByNumber(std::string_view(line).substr(at))) return true;
            }
        }
        return false;
    });
}

Findings unheardProperties(const SourceTree& tree) {
    const std::string call = std::string("rc::") + "check(";
    return linesWhere(tree, "the property's verdict is not looked at: EXPECT_TRUE it", [&](const std::string& line) {
        const auto first = line.find_first_not_of(' ');
        return first != std::string::npos && line.compare(first, call.size(), call) == 0;
    });
}

Findings rawReferences(const SourceTree& tree) {
    static const std::regex handle(R"(\s+(mutable |const )*(id|objc::Object) \w+( = [^;(]*|\{[^;(]*\})?;.*)");
    static const std::regex pointer(R"(\s+(mutable |const )*([a-z]\w*::)*[A-Z]\w*\* \w+_( = [^;(]*|\{[^;(]*\})?;.*)");
    static const std::regex reason(R"(.*;\s*//.*(cleared|outlives).*)");
    const auto isScreens = [](const SourceFile& file) {
        return std::ranges::any_of(
            std::array{"desktop/uikit", "desktop/addressbookui", "desktop/quorvel/visual", "desktop/phone"},
            [&](const char* folder) { return file.isUnder(folder); });
    };
    Findings findings;
    for (const SourceFile& file : tree.files) {
        if (!file.isUnder("desktop") || !file.path.ends_with(".h")) continue;
        for (std::size_t index = 0; index < file.lines.size(); ++index) {
            const std::string& line = file.lines[index];
            const bool isPointer = isScreens(file) && std::regex_match(line, pointer);
            if ((!isPointer && !std::regex_match(line, handle)) || std::regex_match(line, reason)) continue;
            findings.push_back({file.path, index + 1, "the reference is neither strong nor weak"});
        }
    }
    return findings;
}

}  // namespace house
