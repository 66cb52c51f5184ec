// One handset brought up: data, libraries, plug-in, application.
#pragma once

#include <optional>
#include <string>

#include "desktop/graphics/image.h"
#include "desktop/phone/options.h"

namespace phone {

/// The standard error of the program's caller: a duplicate, made at the first call, which comes before the plug-in
/// turns the process's own into its log. Main thread.
int callersError();
/// Prints a line to the standard error of whoever started the program, even after the plug-in has turned the process's
/// own into its log.
void reportLine(const std::string& line);

/// Brings everything up, to the launched application. Answers what makes the data directory or the named image
/// unusable. Main thread, once.
std::optional<std::string> startHandset(const Options& options, double scale);

/// What the screen shows now.
graphics::Image renderScreen(double scale);
/// Writes it; answers what went wrong, or nothing.
std::string writePicture(const std::string& file, double scale);
/// Writes a setting, as another process does, and tells nobody. Answers what went wrong, or nothing.
std::string writeSetting(const std::string& key, const std::string& value);

}  // namespace phone
