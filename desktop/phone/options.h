// The Phone's command line.
#pragma once

#include <optional>
#include <string>

namespace CLI {
class App;
}

namespace phone {

struct Options {
    std::string dataDirectory;  // empty: the user's own
    bool plugin = true;
    std::string pluginImage;  // empty: what the loader's directory holds
    std::string script;       // empty for none, "-" for standard input
    std::string picture;      // empty for none
    double scale = 0;         // pixels a point; 0: 2 for pictures, the display's own for the window
    bool openUrls = false;
};

/// Adds every option, which fills `options` when the line is parsed.
void describeProgram(CLI::App& program, Options& options);

/// Parses the command line. Where the answer is a number, the program ends with that exit status: 0 after --help, 2
/// after a mistake, which was printed.
struct ParsedOptions {
    Options options;
    std::optional<int> exitStatus;
};
ParsedOptions parseOptions(int argumentCount, char** arguments);

}  // namespace phone
