// The telephone application with the plug-in in it, in the benchmark's own process, on a log of a size.
#pragma once

#include <cstdint>
#include <filesystem>

#include "platform/uikit_screens.h"
#include "plugin/companion/data_controller.h"

namespace bench {

/// Who is in a log: people called with skew, theNumber in every call, or theNumber in every tenth and people in the
/// rest.
enum class Callers { many, one, oneInTen };
constexpr const char* theNumber = "+493012345678";

/// The log of that many calls.
std::filesystem::path logOf(std::int64_t calls, Callers callers = Callers::many);
/// The Recents screen with the first page of that log, at rest. The application is launched at the first call.
UIViewController recentsOn(std::int64_t calls, Callers callers = Callers::many);
/// The same on a copy of that log, which may be changed. The copy goes when the next screen is asked for.
UIViewController recentsOnACopy(std::int64_t calls);
/// Gives the lists up; the next load reads the first page again.
void forgetLists();
/// Loads more until that many rows are shown, as the load-more row does.
void loadMoreTo(UIViewController recents, std::int64_t rows, Filter filter = Filter::All);
/// Shows the filter's calls, as its segment does.
void switchTo(UIViewController recents, Filter filter);
/// What the main queue holds is done.
void drain();
/// Begins a search, or goes on with it, by what is typed.
void type(const char* text);
void endSearch();
/// Entries of the list of all calls that are loaded.
std::int64_t loadedEntries();

inline QVDataController service() { return QVDataController::sharedInstance(); }

}  // namespace bench
