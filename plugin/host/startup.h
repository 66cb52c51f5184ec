// What happens when the library is loaded: the log file and the observers of system-wide notifications.
#pragma once

namespace host {

/// In the telephone application: appends standard error to the log file and observes the eight system-wide names.
/// Elsewhere: nothing. Runs once, at load, on the main thread.
void start();

}  // namespace host
