// The program's arguments and variables, and what Foundation may see of them.
#pragma once

namespace foundation {

/// Gives the program back the arguments and variables that it was started with. Those that are not UTF-8 have been
/// hidden from Foundation until now, which would end the process at the first of them; it has read its own by the time
/// this returns. Main thread, before anything else of Foundation is used; `arguments` are those of main().
void takeArguments(char** arguments);

}  // namespace foundation
