// Which image of the plug-in a test loads.
#pragma once

#include <cstdlib>

/// The built one, or the one that the environment variable QUORVEL_TEST_PLUGIN names.
inline const char* pluginImage() {
    const char* const other = std::getenv("QUORVEL_TEST_PLUGIN");
    return other && *other ? other : PLUGIN_IMAGE;
}
