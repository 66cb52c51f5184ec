// The folder that holds everything one handset owns.
#pragma once

#include <filesystem>
#include <string>
#include <variant>

namespace quorvel {

/// Where the things of one handset are. What is here belongs to one user; two directories share nothing.
class DataDirectory {
  public:
    /// Opens the folder, or the user's own where `path` is empty ($XDG_DATA_HOME/quorvel, ~/.local/share/quorvel), and
    /// makes what is missing of the folders. What is there of it becomes its user's alone, as whatever is made in it
    /// is; the folder itself too, unless it is the user's home, holds it, or is one like /tmp. What killed processes
    /// left unfinished is removed. Answers a sentence that says what is wrong, where, and what to do, when it cannot be
    /// made, read or written.
    static std::variant<DataDirectory, std::string> open(const std::filesystem::path& path);

    /// Absolute.
    const std::filesystem::path& path() const { return path_; }
    /// The log of calls, a database.
    std::filesystem::path calls() const { return path_ / "calls.db"; }
    /// The settings, a property list.
    std::filesystem::path settings() const { return path_ / "settings.plist"; }
    /// The contacts: their database, and whether programs may see them.
    std::filesystem::path contacts() const { return path_ / "contacts"; }
    /// The rendezvous of the programs that have this directory open.
    std::filesystem::path notifications() const { return path_ / "notifications"; }
    /// What the handset has in its "/tmp": the plug-in's log of standard error.
    std::filesystem::path temporaryFiles() const { return path_ / "tmp"; }
    /// What a command line of quorvelctl needs to mean this directory, with a blank behind it: "--data 'PATH' ", or
    /// nothing for the user's own.
    std::string commandOption() const;
    /// The cards of contacts that were shared; made when the first one is.
    std::filesystem::path shared() const { return path_ / "shared"; }
    /// Whether no log of calls is there yet: the handset is used for the first time.
    bool isNew() const;

  private:
    explicit DataDirectory(std::filesystem::path path) : path_(std::move(path)) {}
    void makePrivate() const;

    std::filesystem::path path_;
};

}  // namespace quorvel
