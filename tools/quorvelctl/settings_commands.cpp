// get, set and notify: the settings, and what other processes are told.
#include <cstdio>
#include <memory>

#include "desktop/quorvel/settings/settings_store.h"
#include "tools/quorvelctl/session.h"

namespace tools {
namespace {

using quorvel::describeSetting;
using quorvel::settingDescriptions;
using quorvel::SettingsStore;

std::string knownKeys() {
    std::string keys;
    for (const auto& each : settingDescriptions()) keys += (keys.empty() ? "" : ", ") + std::string(each.key);
    return keys;
}

/// Prints what holds, even where the file is damaged; the status tells.
int get(Session& session, const std::string& key) {
    SettingsStore settings(session.directory().settings());
    int status = succeeded;
    if (const auto trouble = settings.load()) status = complain(*trouble);
    for (const auto& objection : settings.objections()) status = complain(objection);
    if (key.empty()) {
        for (const auto& each : settingDescriptions())
            std::printf("%s %s\n", each.key, settings.text(each.key).c_str());
        return status;
    }
    if (!describeSetting(key)) return complain("There is no setting " + key + ". There are " + knownKeys() + '.');
    std::printf("%s\n", settings.text(key).c_str());
    return status;
}

int set(Session& session, const std::string& key, const std::string& value) {
    SettingsStore settings(session.directory().settings());
    if (const auto trouble = settings.set(key, value)) return complain(*trouble);
    return session.announceChange(settingsChanged);
}

}  // namespace

void addGet(CLI::App& program, Session& session) {
    auto key = std::make_shared<std::string>();
    auto* command = program.add_subcommand("get", "Prints a setting, or all of them");
    command->add_option("KEY", *key, "The setting's name");
    command->footer("Examples:\n  quorvelctl get\n  quorvelctl get minRec_Call");
    command->callback([&session, key] { session.chosen = [&session, key] { return get(session, *key); }; });
}

void addSet(CLI::App& program, Session& session) {
    struct Options {
        std::string key;
        std::string value;
    };
    auto options = std::make_shared<Options>();
    auto* command = program.add_subcommand("set", "Changes a setting; a Phone that is open follows");
    command->add_option("KEY", options->key, "The setting's name")->required();
    command->add_option("VALUE", options->value, "on or off, a number, a language or a region")->required();
    command->footer("Examples:\n  quorvelctl set isGroupByDate on\n  quorvelctl set minRec_Call 20");
    command->callback([&session, options] {
        session.chosen = [&session, options] { return set(session, options->key, options->value); };
    });
}

void addNotify(CLI::App& program, Session& session) {
    auto name = std::make_shared<std::string>();
    auto* command = program.add_subcommand("notify", "Posts a system-wide notification");
    command->add_option("NAME", *name, "The notification's name")->required();
    command->footer("Example:\n  quorvelctl notify QuorvelReloadSettingsReplaceRecents");
    command->callback([&session, name] { session.chosen = [&session, name] { return session.announce(*name); }; });
}

}  // namespace tools
