// The program `phone`: a window, a script or a picture.
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iostream>

#include "desktop/dispatch/clock.h"
#include "desktop/files/private_files.h"
#include "desktop/foundation/process.h"
#include "desktop/graphics/window.h"
#include "desktop/phone/handset.h"
#include "desktop/phone/main_loop.h"
#include "desktop/phone/options.h"
#include "desktop/phone/script.h"
#include "desktop/phone/window_mode.h"
#include "desktop/uncaught/uncaught_exceptions.h"
#include "objc/layer.h"

namespace {

constexpr int commandFailed = 1;
constexpr int unusable = 2;
constexpr double pictureScale = 2;

/// Reads lines from a descriptor; the main loop runs while the next one has not come.
class LineReader {
  public:
    explicit LineReader(int descriptor) : descriptor_(descriptor) {}

    bool next(std::string& line) {
        for (;;) {
            if (const auto end = pending_.find('\n'); end != std::string::npos) {
                line = pending_.substr(0, end);
                pending_.erase(0, end + 1);
                return true;
            }
            constexpr double longWait = 1;
            phone::turnMainLoop();
            if (!phone::waitForEvents(descriptor_, longWait)) continue;
            char bytes[4096];
            const ssize_t count = ::read(descriptor_, bytes, sizeof bytes);
            if (count <= 0) {
                line = std::exchange(pending_, {});
                return !line.empty();
            }
            pending_.append(bytes, static_cast<std::size_t>(count));
        }
    }

  private:
    int descriptor_;
    std::string pending_;
};

int runScript(const phone::Options& options, double scale) {
    std::FILE* file = nullptr;
    if (options.script != "-" && !(file = std::fopen(options.script.c_str(), "re"))) {
        phone::reportLine("The script " + options.script + " cannot be read. Check its name and permissions.");
        return unusable;
    }
    const phone::ScriptHost host{[](const std::string& line) {
                                     std::printf("%s\n", line.c_str());
                                     std::fflush(stdout);
                                 },
                                 [scale](const std::string& name) { return phone::writePicture(name, scale); },
                                 phone::writeSetting};
    if (const auto trouble = phone::settle()) {
        phone::reportLine("start: " + *trouble);
        return commandFailed;
    }
    LineReader lines(file ? fileno(file) : STDIN_FILENO);
    std::string line;
    for (int number = 1; lines.next(line); ++number) {
        const objc::AutoreleasePool pool;
        if (const auto wrong = phone::runScriptLine(line, host); !wrong.empty()) {
            phone::reportLine("line " + std::to_string(number) + ": " + wrong);
            return commandFailed;
        }
    }
    return 0;
}

int drawPicture(const std::string& file, double scale) {
    auto trouble = phone::settle().value_or("");
    if (trouble.empty()) trouble = phone::writePicture(file, scale);
    if (trouble.empty()) return 0;
    phone::reportLine(trouble);
    return commandFailed;
}

int run(phone::Options options) {
    const objc::AutoreleasePool pool;
    std::unique_ptr<graphics::Window> window;
    const bool wantsWindow = options.script.empty() && options.picture.empty();
    if (wantsWindow) {
        auto opened = graphics::Window::open({"Phone", {320, 568}, options.scale});
        if (opened) {
            window = std::move(*opened);
        } else {
            options.picture = "phone.png";
            std::fprintf(stderr, "No window can be opened (%s); the screen is written to %s.\n", opened.error().c_str(),
                         options.picture.c_str());
        }
    }
    if (!window) dispatch::Clock::useVirtual();
    const double scale = window ? window->scale() : options.scale > 0 ? options.scale : pictureScale;
    if (const auto trouble = phone::startHandset(options, scale)) {
        phone::reportLine(*trouble);
        return unusable;
    }
    if (!options.script.empty()) {
        const int status = runScript(options, scale);
        return status != 0 || options.picture.empty() ? status : drawPicture(options.picture, scale);
    }
    if (!window) return drawPicture(options.picture, scale);
    const auto trouble = phone::runInWindow(*window);
    if (trouble.empty()) return 0;
    phone::reportLine(trouble);
    return commandFailed;
}

}  // namespace

int main(int argumentCount, char** arguments) {
    uncaught::openStandardDescriptors();
    uncaught::reportExceptions("phone", phone::callersError());
    files::makeNewFilesPrivate();
    foundation::takeArguments(arguments);
    const auto [options, exitStatus] = phone::parseOptions(argumentCount, arguments);
    if (exitStatus) return *exitStatus;
    const int status = run(options);
    std::fflush(stdout);
    std::fflush(stderr);
    // Queues and the log's services end with the process; their threads may still hold what destructors would take.
    _exit(status);
}
