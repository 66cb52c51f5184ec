// A command line as its manual page and its completions need it, read off the parser itself.
#pragma once

#include <CLI/CLI.hpp>
#include <string>
#include <vector>

namespace tools {

struct OptionModel {
    std::string name;         ///< "--since", the longest one; for a positional one its word, "FILE".
    std::string value;        ///< The word for its value, "DAY"; empty for a flag.
    std::string description;  ///< One line.
    bool isPositional = false;
    bool isRequired = false;
    bool takesSeveral = false;
};

struct CommandModel {
    std::string path;  ///< "quorvelctl contacts import"
    std::string name;
    std::string description;
    std::string footer;  ///< What it says below its options, with the examples.
    std::vector<OptionModel> options;
    std::vector<CommandModel> commands;
};

/// The program with all of its subcommands.
CommandModel modelOf(CLI::App& program);

/// The values that a word for one stands for, where they are few: "KIND" is all, dialled, received or missed.
std::vector<std::string> valuesOf(const std::string& word);
enum class Completed { nothing, files, folders };
/// What completes a value that is none of a few.
Completed completedBy(const std::string& word);

}  // namespace tools
