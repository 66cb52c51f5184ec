// The C library's functions that open files, as an image for the handset calls them: a path of the handset's file tree
// is looked up in the desktop's.
#pragma once

#include <cstdio>
#include <filesystem>

extern "C" {

/// As fopen and freopen. A path below "/tmp" means the same name below the temporary folder; before one was set it does
/// not exist (ENOENT). Other paths are taken as they are. The plug-in's ELF image is linked so that its calls come
/// here, and the loader binds a Mach-O image's to them. Any thread.
__attribute__((visibility("default"))) FILE* __wrap_fopen(const char* path, const char* mode);
__attribute__((visibility("default"))) FILE* __wrap_freopen(const char* path, const char* mode, FILE* stream);
}

namespace substrate {

/// Where the handset's "/tmp" lies. Before any image is loaded.
void setTemporaryFolder(const std::filesystem::path& folder);

}  // namespace substrate
