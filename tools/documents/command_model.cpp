// The parser's tree, copied.
#include "tools/documents/command_model.h"

#include "desktop/quorvel/settings/setting_table.h"

namespace tools {
namespace {

OptionModel optionOf(const CLI::Option& option) {
    OptionModel model;
    model.isPositional = option.get_positional();
    model.isRequired = option.get_required();
    model.takesSeveral = option.get_expected_max() > 1;
    model.description = option.get_description();
    const auto& longNames = option.get_lnames();
    // The parser puts the bounds of a number behind the word.
    const std::string type = option.get_type_name().substr(0, option.get_type_name().find(':'));
    // Where nothing else is said, the parser calls a value by its C++ type.
    const bool isNamed = type != "TEXT" && type != "INT" && type != "UINT" && type != "FLOAT";
    if (model.isPositional) {
        model.name = isNamed && !type.empty() ? type : option.get_name(true, false);
        model.value = model.name;
    } else {
        model.name = longNames.empty() ? "-" + option.get_snames().front() : "--" + longNames.front();
        if (option.get_items_expected_max() > 0) model.value = type.empty() ? "TEXT" : type;
    }
    return model;
}

CommandModel commandOf(CLI::App& app, const std::string& above) {
    CommandModel model;
    model.name = app.get_name();
    model.path = above.empty() ? model.name : above + ' ' + model.name;
    model.description = app.get_description();
    model.footer = app.get_footer();
    for (const auto* option : app.get_options()) model.options.push_back(optionOf(*option));
    for (auto* command : app.get_subcommands({})) model.commands.push_back(commandOf(*command, model.path));
    return model;
}

}  // namespace

CommandModel modelOf(CLI::App& program) { return commandOf(program, ""); }

std::vector<std::string> valuesOf(const std::string& word) {
    if (word == "KIND") return {"all", "dialled", "received", "missed"};
    if (word == "FORMAT") return {"csv", "json", "db", "vcf"};
    if (word == "VERSION") return {"2.1", "3.0", "4.0"};
    if (word != "KEY") return {};
    std::vector<std::string> keys;
    for (const auto& setting : quorvel::settingDescriptions()) keys.emplace_back(setting.key);
    return keys;
}

Completed completedBy(const std::string& word) {
    if (word == "DIR") return Completed::folders;
    return word.starts_with("FILE") ? Completed::files : Completed::nothing;
}

}  // namespace tools
