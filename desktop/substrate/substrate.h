// The substrate: replaces methods of classes that exist, and loads plug-ins into the processes that they ask for.
#pragma once

#include <cstddef>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "objc/layer.h"

extern "C" {

/// Makes `replacement` the method of that name in the class (a metaclass for class methods), and stores what a message
/// would have run until now in *previous, unless `previous` is null. The class's own method is replaced; one that it
/// only inherits is added to it, with the inherited type string, and the superclass keeps its own. When the class is
/// null or has no such method nothing is installed and *previous stays as it is. *previous is written before the
/// replacement can run. Any thread.
__attribute__((visibility("default"))) void MSHookMessageEx(Class cls, SEL name, IMP replacement, IMP* previous);
}

namespace substrate {

/// Takes one line of text: which file, what is wrong with it, what to do.
using ErrorHandler = std::function<void(const std::string& line)>;

/// Loads one image, whatever its filter says, for the rest of the process's life. Answers what went wrong, in one line,
/// or nothing. The image's initialisers run before this returns, on this thread.
std::optional<std::string> loadPlugin(const std::filesystem::path& image);

/// Loads every plug-in of the directory that asks for that bundle, in the order of their names, and answers how many.
/// A plug-in is an image NAME.so or NAME.dylib (the first, where both are there) with a filter NAME.plist beside it: a
/// property list whose Filter.Bundles lists the bundle identifiers that the plug-in wants to be in. Without a filter it
/// is loaded into every process. What cannot be read or loaded is reported and passed over. A directory that does not
/// exist holds no plug-ins.
std::size_t loadPlugins(const std::filesystem::path& directory, std::string_view bundleIdentifier,
                        const ErrorHandler& report);

}  // namespace substrate
