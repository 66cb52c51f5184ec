// A directory in which processes exchange names. Each name has one small file; a post writes a stamp into it that no
// other post has, and inotify tells everybody who watches. So a post needs no lock, files do not grow, and a process
// that ends anywhere leaves nothing that others would have to repair.
#pragma once

#include <cstddef>
#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "desktop/notify/failure.h"

namespace notify {

class Rendezvous {
  public:
    /// Makes the directory where it is missing, watches it, and removes files of names that nobody has posted for a
    /// day. Or answers why that cannot be.
    static std::variant<Rendezvous, Failure> open(const std::filesystem::path& directory);

    Rendezvous(Rendezvous&& other) noexcept;
    Rendezvous& operator=(Rendezvous&& other) noexcept;
    ~Rendezvous();

    const std::filesystem::path& directory() const { return directory_; }
    /// Readable when collect() may answer something.
    int descriptor() const { return watch_; }

    /// The names posted since the last call, this object's own among them, each once, in the order of their first
    /// post. Files that are no posts are ignored. Never waits.
    std::vector<std::string> collect();

  private:
    Rendezvous(std::filesystem::path directory, int watch) : directory_(std::move(directory)), watch_(watch) {}

    void learnPresentStamps();
    void take(const std::string& file, std::vector<std::string>& names);
    void takeAllChanged(std::vector<std::string>& names);
    void removeForgotten() const;

    std::filesystem::path directory_;
    int watch_ = -1;
    std::map<std::string, std::string> stamps_;  // the last one seen, by file name
};

/// Posts the name to every Rendezvous open on that directory, in any process. Any thread.
[[nodiscard]] std::optional<Failure> postInto(const std::filesystem::path& directory, std::string_view name);

}  // namespace notify
