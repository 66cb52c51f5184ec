// A manual page of section 1: what the parser knows, between what a person wrote.
#pragma once

#include <string>

#include "tools/documents/command_model.h"

namespace tools {

/// The page. In `written`, roff with the page's sections, the line `.\" COMMANDS` stands for the synopsis's lines,
/// options and subcommands of the program. The date is the version's.
std::string manualPage(const CommandModel& program, const std::string& written, const std::string& version,
                       const std::string& date);

}  // namespace tools
