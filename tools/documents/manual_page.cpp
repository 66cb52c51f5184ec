// Roff of the `man` macros.
#include "tools/documents/manual_page.h"

#include <algorithm>
#include <sstream>

namespace tools {
namespace {

/// The text as roff shows it, whatever it begins with.
std::string roff(const std::string& text) {
    std::string escaped = text.starts_with('.') || text.starts_with('\'') ? "\\&" : "";
    for (const char letter : text) {
        if (letter == '\\')
            escaped += "\\e";
        else if (letter == '-')
            escaped += "\\-";
        else
            escaped += letter;
    }
    return escaped;
}

std::string upperCase(std::string text) {
    std::transform(text.begin(), text.end(), text.begin(), [](char letter) {
        return letter >= 'a' && letter <= 'z' ? static_cast<char>(letter - 32) : letter;
    });
    return text;
}

std::string positionals(const CommandModel& command) {
    std::string words;
    for (const auto& option : command.options) {
        if (!option.isPositional) continue;
        const std::string word = "\\fI" + roff(option.name) + "\\fR" + (option.takesSeveral ? " ..." : "");
        words += option.isRequired ? ' ' + word : " [" + word + ']';
    }
    return words;
}

std::string options(const CommandModel& command) {
    std::string text;
    for (const auto& option : command.options) {
        text += ".TP\n";
        if (option.isPositional)
            text += "\\fI" + roff(option.name) + "\\fR\n";
        else
            text += "\\fB" + roff(option.name) + "\\fR" +
                    (option.value.empty() ? "" : " \\fI" + roff(option.value) + "\\fR") + '\n';
        text += roff(option.description) + ".\n";
    }
    return text;
}

/// Paragraphs, and examples as they stand.
std::string footer(const std::string& text) {
    std::string shown;
    std::istringstream lines(text);
    bool isFilled = true, isFirst = true;
    for (std::string line; std::getline(lines, line);) {
        if (line.empty()) {
            isFirst = true;
            continue;
        }
        const bool isExample = line.starts_with("  ");
        if (isExample && isFilled) shown += shown.empty() ? ".nf\n" : ".PP\n.nf\n";
        if (!isExample && !isFilled) shown += ".fi\n";
        if (!isExample && (isFirst || !isFilled)) shown += ".PP\n";
        isFilled = !isExample;
        isFirst = false;
        shown += roff(isExample ? line.substr(2) : line) + '\n';
    }
    return isFilled ? shown : shown + ".fi\n";
}

std::string command(const CommandModel& model, const std::string& program) {
    std::string text;
    if (model.commands.empty()) {
        text = ".SS " + roff(model.path.substr(program.size() + 1)) + positionals(model) + '\n' +
               roff(model.description) + ".\n" + options(model) + footer(model.footer);
    }
    for (const auto& each : model.commands) text += command(each, program);
    return text;
}

}  // namespace

std::string manualPage(const CommandModel& program, const std::string& written, const std::string& version,
                       const std::string& date) {
    std::string generated = ".SH OPTIONS\n" + options(program);
    if (!program.commands.empty()) {
        generated += ".SH COMMANDS\n";
        for (const auto& each : program.commands) generated += command(each, program.name);
    }
    generated += ".SH EXAMPLES\n" + footer(program.footer.substr(program.footer.find("Examples:\n") + 10));
    std::string page = ".TH " + upperCase(program.name) + " 1 " + date + " \"" + program.name + ' ' + version +
                       "\" \"User Commands\"\n" + written;
    const std::string mark = ".\\\" COMMANDS\n";
    if (const auto at = page.find(mark); at != std::string::npos) page.replace(at, mark.size(), generated);
    return page;
}

}  // namespace tools
