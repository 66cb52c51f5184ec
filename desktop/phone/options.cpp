// The Phone's command line.
#include "desktop/phone/options.h"

#include <CLI/CLI.hpp>

namespace phone {

void describeProgram(CLI::App& app, Options& options) {
    app.description("A telephone whose Recents screen is a call log: in a window, by a script, or as a picture.");
    app.name("phone");
    app.option_defaults()->take_last();  // so that a caller can put its own behind those of a script
    app.add_option("--data", options.dataDirectory,
                   "Folder of one handset: calls, settings, contacts (default: the user's own)")
        ->type_name("DIR");
    auto* without = app.add_flag("!--no-plugin", options.plugin, "The telephone's own screens alone");
    app.add_option("--plugin", options.pluginImage, "Another image of the plug-in in place of the built one")
        ->type_name("FILE")
        ->excludes(without);
    app.add_option("--script", options.script, "Runs the commands of the file (-: standard input) and leaves")
        ->type_name("FILE");
    app.add_option("--picture", options.picture, "Writes what the screen shows, and leaves")->type_name("FILE.png");
    app.add_option("--scale", options.scale, "Pixels a point")->type_name("N")->check(CLI::Range(0.5, 8.0));
    app.add_flag("--open-urls", options.openUrls, "Hands addresses that are opened to the desktop");
    app.footer(
        "Examples:\n"
        "  phone                                 opens the window\n"
        "  phone --picture recents.png --scale 3 draws the first screen\n"
        "  echo show | phone --script -          prints what the first screen shows");
}

ParsedOptions parseOptions(int argumentCount, char** arguments) {
    ParsedOptions parsed;
    CLI::App app;
    describeProgram(app, parsed.options);
    try {
        app.parse(argumentCount, arguments);
    } catch (const CLI::ParseError& error) {
        constexpr int unusableCommandLine = 2;
        parsed.exitStatus = app.exit(error) == 0 ? 0 : unusableCommandLine;
    }
    return parsed;
}

}  // namespace phone
