// The program `phone` run on a script, in a data directory of its own. The environment variable QUORVEL_TEST_PLUGIN
// names another image of the plug-in than the built one.
#pragma once

#include <sys/types.h>

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
    /// The same with settings of the environment, "NAME=VALUE ...", and no data directory but what they or the options
    /// name.
    Outcome runIn(const std::string& environment, const std::string& script, const std::string& options = {}) const;
    std::filesystem::path file(const std::string& name) const { return directory_ / name; }

    /// The same with another copy of the program, whose files beside it may be missing.
    Outcome runCopy(const std::filesystem::path& program, const std::string& script) const;

  private:
    Outcome carryOut(const std::string& script, const std::string& phone) const;

    std::filesystem::path directory_;
};

/// A Phone that lives while the test talks to it, so that the test is the other process.
class LivePhone {
  public:
    /// Started on the handset's directory; the reaper ends it after ten minutes.
    explicit LivePhone(const Handset& handset);
    ~LivePhone();
    LivePhone(const LivePhone&) = delete;
    LivePhone& operator=(const LivePhone&) = delete;

    /// One line of script; does not wait for it to be carried out.
    void say(const std::string& line);
    /// What the screen shows once everything has settled. Throws with what the Phone said when it has ended.
    Outcome show();
    /// Ends the script and answers its status and errors.
    Outcome finish();

  private:
    bool readLine(std::string& line);
    [[noreturn]] void fail();

    std::filesystem::path errors_;
    pid_t process_ = -1;
    int input_ = -1;
    int output_ = -1;
    std::string pending_;
};

}  // namespace scenarios
