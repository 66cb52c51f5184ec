// What a program says before an exception that nothing catches ends it.
#pragma once

#include <string>

namespace uncaught {

/// From now on an uncaught exception, of C++ or of the object runtime, on any thread, ends the program by abort() after
/// a report: the program's name, the exception's class and text, the thread, and the stack of calls. It goes to
/// `descriptor`, and to the process's standard error where that is another file. Main thread, once, after which the
/// descriptor stays open.
void reportExceptions(const std::string& program, int descriptor);

/// Opens /dev/null for each of the three standard descriptors that the caller left closed, so that no file the program
/// opens later takes its place and is written over by messages. First thing in a program.
void openStandardDescriptors();

}  // namespace uncaught
