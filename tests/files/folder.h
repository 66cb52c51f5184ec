// A folder of the test's own.
#pragma once

#include <sys/stat.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>

namespace files_tests {

class Folder {
  public:
    Folder() {
        std::string name = (std::filesystem::temp_directory_path() / "files-XXXXXX").string();
        if (!mkdtemp(name.data())) throw std::runtime_error("no folder for the test");
        path_ = name;
    }
    ~Folder() {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }
    Folder(const Folder&) = delete;
    Folder& operator=(const Folder&) = delete;

    const std::filesystem::path& path() const { return path_; }
    std::filesystem::path file(const std::string& name) const { return path_ / name; }
    std::filesystem::path write(const std::string& name, const std::string& content) const {
        std::ofstream(file(name), std::ios::binary) << content;
        return file(name);
    }

  private:
    std::filesystem::path path_;
};

inline std::string contentOf(const std::filesystem::path& file) {
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

/// The bits of the mode; -1 where there is nothing.
inline int modeOf(const std::filesystem::path& file) {
    struct stat about {};
    return lstat(file.c_str(), &about) == 0 ? static_cast<int>(about.st_mode & 07777) : -1;
}

}  // namespace files_tests
