// The bar.
#include "tools/quorvelctl/progress_bar.h"

#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdio>

namespace tools {
namespace {

constexpr int width = 40;
constexpr double secondsBetween = 0.1;
constexpr unsigned callsBetweenLooks = 256;

double now() { return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count(); }

}  // namespace

ProgressBar::ProgressBar(std::string label) : label_(std::move(label)), isTerminal_(isatty(STDERR_FILENO) != 0) {}

ProgressBar::~ProgressBar() { wipe(); }

void ProgressBar::wipe() {
    if (isDrawn_) std::fputs("\r\033[K", stderr);
    isDrawn_ = false;
}

void ProgressBar::show(double share) {
    if (!isTerminal_ || calls_++ % callsBetweenLooks != 0) return;
    const double time = now();
    if (time - drawnAt_ < secondsBetween) return;
    drawnAt_ = time;
    const int filled = static_cast<int>(std::clamp(share, 0.0, 1.0) * width);
    std::fprintf(stderr, "\r%s [%s%s] %3d %%", label_.c_str(),
                 std::string(static_cast<std::size_t>(filled), '#').c_str(),
                 std::string(static_cast<std::size_t>(width - filled), ' ').c_str(),
                 static_cast<int>(std::clamp(share, 0.0, 1.0) * 100));
    std::fflush(stderr);
    isDrawn_ = true;
}

}  // namespace tools
