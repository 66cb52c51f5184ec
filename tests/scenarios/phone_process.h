// The program `phone` run on a script, in a data directory of its own.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "desktop/quorvel/store/call.h"

namespace scenarios {

struct Outcome {
    int status = -1;
    std::string output;
    std::string errors;

    /// The lines of the output that begin so.
    std::vector<std::string> linesOf(const std::string& beginning) const;
};

/// A handset's data directory, gone with the object.
class Handset {
  public:
    Handset();
    ~Handset();
    Handset(const Handset&) = delete;
    Handset& operator=(const Handset&) = delete;

    /// Writes the calls into the log.
    void fill(const std::vector<quorvel::store::NewCall>& calls) const;
    /// Runs the Phone; the reaper ends it after a minute.
    Outcome run(const std::string& script, const std::string& options = {}) const;
    std::filesystem::path file(const std::string& name) const { return directory_ / name; }

  private:
    std::filesystem::path directory_;
};

}  // namespace scenarios
