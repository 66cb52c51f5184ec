// Completions of a command line for three shells.
#pragma once

#include <string>

#include "tools/documents/command_model.h"

namespace tools {

std::string bashCompletion(const CommandModel& program);
std::string zshCompletion(const CommandModel& program);
std::string fishCompletion(const CommandModel& program);

}  // namespace tools
