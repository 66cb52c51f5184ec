// The whole command line: what the program reads, and what its manual page and completions are made of.
#pragma once

#include "tools/quorvelctl/session.h"

namespace tools {

/// Adds every option and subcommand. The session must live as long as the program.
void describeProgram(CLI::App& program, Session& session);

}  // namespace tools
