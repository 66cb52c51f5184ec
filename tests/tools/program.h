// The program quorvelctl, run on a data directory of the test's own.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace tools_tests {

// What the program's status says.
constexpr int succeeded = 0;
constexpr int failed = 1;
constexpr int unusable = 2;

/// The heads of files of calls that tests write: what must be there, and the same with a name.
inline const std::string header = "date,address,kind,duration\n";
inline const std::string headerWithName = "date,address,kind,duration,name\n";

struct Outcome {
    int status = -1;
    std::string output;
    std::string errors;
    std::vector<std::string> lines() const;
};

/// A data directory, gone with the object.
class Directory {
  public:
    Directory();
    ~Directory();
    Directory(const Directory&) = delete;
    Directory& operator=(const Directory&) = delete;

    std::filesystem::path file(const std::string& name) const { return path_ / name; }
    std::filesystem::path data() const { return path_ / "data"; }
    /// Writes a file beside the data and answers its path.
    std::filesystem::path write(const std::string& name, const std::string& content) const;
    /// Runs `quorvelctl --data DIRECTORY ARGUMENTS`, as a shell reads them; ended after a minute.
    Outcome run(const std::string& arguments) const { return run(arguments, file("output")); }
    Outcome run(const std::string& arguments, const std::filesystem::path& output) const;
    /// The same on a terminal, the whole of whose text is answered as output.
    Outcome runOnTerminal(const std::vector<std::string>& arguments) const;

  private:
    std::filesystem::path path_;
};

std::string contentOf(const std::filesystem::path& file);

}  // namespace tools_tests
