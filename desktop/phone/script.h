// Scripts: the commands that drive the Phone without a window.
#pragma once

#include <functional>
#include <string>

namespace phone {

/// What the commands need of the program.
struct ScriptHost {
    /// Prints a line to the caller's standard output.
    std::function<void(const std::string& line)> print;
    /// Writes what the screen shows; answers what went wrong, or nothing.
    std::function<std::string(const std::string& file)> writePicture;
    /// Writes a setting to the store; answers what went wrong, or nothing.
    std::function<std::string(const std::string& key, const std::string& value)> writeSetting;
};

/// Runs one line: settles after it unless it begins with `now`. Answers what was wrong; empty when all went well. Main
/// thread.
std::string runScriptLine(const std::string& line, const ScriptHost& host);

}  // namespace phone
