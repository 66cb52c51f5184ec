// The folder that holds everything one handset owns.
#pragma once

#include <filesystem>
#include <string>
#include <variant>

namespace quorvel {

class DataDirectory {
  public:
    /// Opens the folder, or the user's own where `path` is empty ($XDG_DATA_HOME/quorvel), and makes what is missing.
    /// Answers a sentence when it cannot be made or written.
    static std::variant<DataDirectory, std::string> open(const std::filesystem::path& path);

    const std::filesystem::path& path() const { return path_; }
    std::filesystem::path calls() const { return path_ / "calls.db"; }
    std::filesystem::path settings() const { return path_ / "settings.plist"; }
    std::filesystem::path contacts() const { return path_ / "contacts"; }
    std::filesystem::path notifications() const { return path_ / "notifications"; }
    /// Whether no log of calls is there yet: the handset is used for the first time.
    bool isNew() const { return !std::filesystem::exists(calls()); }

  private:
    explicit DataDirectory(std::filesystem::path path) : path_(std::move(path)) {}
    std::filesystem::path path_;
};

}  // namespace quorvel
