// The screen in words.
#pragma once

#include <string>
#include <vector>

namespace phone {

/// A line for each thing that a person sees, in a fixed order, without what is not there. Main thread, after settling.
std::vector<std::string> describeScreen();
/// The addresses handed to the system since the last call of describeScreen(); `noteUrl` adds one.
void noteUrl(const std::string& address);

/// The text in double quotes, with \" and \\ and \n for what would break the line.
std::string quoted(const std::string& text);

}  // namespace phone
