// Each shell's script finds the subcommand among the words so far, and offers what can follow it there.
#include "tools/documents/completions.h"

#include <functional>
#include <map>
#include <set>

namespace tools {
namespace {

void eachCommand(const CommandModel& model, const std::function<void(const CommandModel&)>& see) {
    see(model);
    for (const auto& command : model.commands) eachCommand(command, see);
}

std::string joined(const std::vector<std::string>& words) {
    std::string text;
    for (const auto& word : words) text += (text.empty() ? "" : " ") + word;
    return text;
}

/// Subcommands and options that may follow, those of the program too.
std::vector<std::string> wordsAfter(const CommandModel& command, const CommandModel& program) {
    std::vector<std::string> words;
    for (const auto& each : command.commands) words.push_back(each.name);
    std::set<std::string> known;
    for (const auto* of : {&command, &program})
        for (const auto& option : of->options)
            if (!option.isPositional && known.insert(option.name).second) words.push_back(option.name);
    return words;
}

const OptionModel* positionalOf(const CommandModel& command) {
    for (const auto& option : command.options)
        if (option.isPositional) return &option;
    return nullptr;
}

/// Every option that takes a value, with the word for it. The same option has the same kind of value everywhere.
std::map<std::string, std::string> valuedOptions(const CommandModel& program) {
    std::map<std::string, std::string> words;
    eachCommand(program, [&](const CommandModel& command) {
        for (const auto& option : command.options)
            if (!option.isPositional && !option.value.empty()) words.emplace(option.name, option.value);
    });
    return words;
}

std::string keysOf(const std::map<std::string, std::string>& words, const char* between) {
    std::string keys;
    for (const auto& [name, value] : words) keys += (keys.empty() ? "" : between) + name;
    return keys;
}

/// What bash runs for a value of that word.
std::string bashValue(const std::string& word) {
    if (const auto values = valuesOf(word); !values.empty())
        return "COMPREPLY=($(compgen -W '" + joined(values) + "' -- \"$current\"))";
    switch (completedBy(word)) {
        case Completed::files:
            return "compopt -o filenames 2>/dev/null; COMPREPLY=($(compgen -f -- \"$current\"))";
        case Completed::folders:
            return "compopt -o filenames 2>/dev/null; COMPREPLY=($(compgen -d -- \"$current\"))";
        case Completed::nothing:
            break;
    }
    return ":";
}

/// The loop that finds the subcommand; bash and zsh write it alike.
std::string findPath(const CommandModel& program, const std::string& words, const std::string& first,
                     const std::string& present) {
    std::string paths;
    eachCommand(program, [&](const CommandModel& command) {
        if (command.path != program.name) paths += (paths.empty() ? "'" : "|'") + command.path + '\'';
    });
    const auto valued = keysOf(valuedOptions(program), "|");
    std::string text = "    local command=" + program.name + " word i\n    for ((i = " + first + "; i < " + present +
                       "; ++i)); do\n        word=${" + words + "[i]}\n";
    if (!valued.empty()) text += "        case $word in " + valued + ") ((++i)); continue ;; esac\n";
    if (!paths.empty())
        text += "        case \"$command $word\" in " + paths + ") command=\"$command $word\" ;; esac\n";
    return text + "    done\n";
}

std::string quotedForZsh(std::string text) {
    for (std::size_t at = 0; (at = text.find_first_of("'[]:", at)) != std::string::npos;) {
        const std::string instead = text[at] == '\'' ? "'\\''" : std::string("\\") + text[at];
        text.replace(at, 1, instead);
        at += instead.size();
    }
    return text;
}

std::string zshAction(const std::string& word) {
    if (const auto values = valuesOf(word); !values.empty()) return "(" + joined(values) + ")";
    switch (completedBy(word)) {
        case Completed::files:
            return "_files";
        case Completed::folders:
            return "_directories";
        case Completed::nothing:
            break;
    }
    return " ";
}

std::string quotedForFish(std::string text) {
    for (std::size_t at = 0; (at = text.find_first_of("'\\", at)) != std::string::npos; at += 2) text.insert(at, "\\");
    return '\'' + text + '\'';
}

std::string fishArguments(const std::string& word) {
    if (const auto values = valuesOf(word); !values.empty()) return " -a '" + joined(values) + "'";
    if (completedBy(word) == Completed::folders) return " -a '(__fish_complete_directories)'";
    return completedBy(word) == Completed::files ? " -F" : "";
}

}  // namespace

std::string bashCompletion(const CommandModel& program) {
    std::string text = "# Completion of " + program.name + " for bash.\n_" + program.name +
                       "() {\n    local current=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD - 1]}\n"
                       "    COMPREPLY=()\n";
    text += findPath(program, "COMP_WORDS", "1", "COMP_CWORD");
    text += "    case $previous in\n";
    for (const auto& [name, word] : valuedOptions(program))
        text += "        " + name + ") " + bashValue(word) + "; return ;;\n";
    text += "    esac\n    case $command in\n";
    eachCommand(program, [&](const CommandModel& command) {
        text += "        '" + command.path + "')\n";
        const auto* positional = positionalOf(command);
        if (positional)
            text += "            [[ $current == -* ]] || { " + bashValue(positional->value) + "; return; }\n";
        text +=
            "            COMPREPLY=($(compgen -W '" + joined(wordsAfter(command, program)) + "' -- \"$current\")) ;;\n";
    });
    return text + "    esac\n}\ncomplete -F _" + program.name + ' ' + program.name + '\n';
}

std::string zshCompletion(const CommandModel& program) {
    std::string text = "#compdef " + program.name + "\n# Completion of " + program.name + " for zsh.\n_" +
                       program.name + "() {\n    setopt local_options ksh_arrays\n";
    text += findPath(program, "words", "1", "CURRENT - 1");
    text += "    unsetopt ksh_arrays\n    case $command in\n";
    eachCommand(program, [&](const CommandModel& command) {
        text += "        '" + command.path + "')\n            _arguments";
        std::set<std::string> known;
        for (const auto* of : {&command, &program})
            for (const auto& option : of->options) {
                if (option.isPositional || !known.insert(option.name).second) continue;
                text += " \\\n                '" + option.name + "[" + quotedForZsh(option.description) + "]";
                if (!option.value.empty()) text += ":" + option.value + ":" + zshAction(option.value);
                text += '\'';
            }
        if (const auto* positional = positionalOf(command))
            text += " \\\n                '*:" + positional->value + ":" + zshAction(positional->value) + '\'';
        // The subcommand's own name is among the words.
        if (!positionalOf(command) && command.commands.empty()) text += " \\\n                '*: : '";
        if (!command.commands.empty()) {
            std::string commands;
            for (const auto& each : command.commands)
                commands += (commands.empty() ? "" : " ") + each.name + "\\:\"" + quotedForZsh(each.description) + '"';
            text += " \\\n                '*:command:((" + commands + "))'";
        }
        text += " ;;\n";
    });
    return text + "    esac\n}\n_" + program.name + " \"$@\"\n";
}

std::string fishCompletion(const CommandModel& program) {
    std::string text = "# Completion of " + program.name + " for fish.\ncomplete -c " + program.name + " -f\n";
    const auto add = [&](const std::string& condition, const CommandModel& command) {
        const std::string begin = "complete -c " + program.name + condition;
        for (const auto& option : command.options) {
            if (option.isPositional) {
                if (const auto arguments = fishArguments(option.value); !arguments.empty())
                    text += begin + arguments + '\n';
                continue;
            }
            text += begin +
                    (option.name.starts_with("--") ? " -l " + option.name.substr(2) : " -s " + option.name.substr(1));
            if (!option.value.empty()) text += " -r" + fishArguments(option.value);
            text += " -d " + quotedForFish(option.description) + '\n';
        }
    };
    add("", program);
    eachCommand(program, [&](const CommandModel& command) {
        const bool isProgram = command.path == program.name;
        std::string others;
        for (const auto& each : command.commands) others += ' ' + each.name;
        const std::string seen = "__fish_seen_subcommand_from " + command.name;
        const std::string condition =
            isProgram ? "__fish_use_subcommand" : seen + "; and not __fish_seen_subcommand_from" + others;
        for (const auto& each : command.commands)
            text += "complete -c " + program.name + " -n '" + condition + "' -a " + each.name + " -d " +
                    quotedForFish(each.description) + '\n';
        if (isProgram) return;
        // The last two words of the path: "import" is a command of the program and one of its contacts.
        const auto above = command.path.substr(program.name.size() + 1);
        const auto space = above.find(' ');
        const std::string inside =
            space == std::string::npos
                ? seen + (command.name == "contacts" ? "" : "; and not __fish_seen_subcommand_from contacts")
                : seen + "; and __fish_seen_subcommand_from " + above.substr(0, space);
        add(" -n '" + inside + '\'', command);
    });
    return text;
}

}  // namespace tools
