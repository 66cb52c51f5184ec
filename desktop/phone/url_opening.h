// Addresses that are opened: shown on the calling screen, or handed to the desktop.
#pragma once

#include <optional>
#include <string>
#include <vector>

namespace phone {

/// Starts the program with the arguments, without a shell and apart from this process: it may outlive the Phone. Its
/// standard output is this process's standard error. Answers why it could not be started, or nothing.
std::optional<std::string> startProgram(const std::vector<std::string>& programAndArguments);

/// What the application does with an address: with `handsOver` the desktop's opener gets it, else the calling screen
/// shows it. Answers whether somebody took it.
bool takeAddress(const std::string& address, bool handsOver);

}  // namespace phone
