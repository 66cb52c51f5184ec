// A bar that shows how far long work is: on a terminal alone.
#pragma once

#include <string>

namespace tools {

/// Draws itself on standard error, at most ten times a second, and wipes itself away in the end.
class ProgressBar {
  public:
    explicit ProgressBar(std::string label);
    ~ProgressBar();
    ProgressBar(const ProgressBar&) = delete;
    ProgressBar& operator=(const ProgressBar&) = delete;

    /// From 0 to 1. Cheap: most calls only look at the clock.
    void show(double share);
    /// Makes room for a line of text; the next `show` draws the bar below it.
    void wipe();

  private:
    std::string label_;
    bool isTerminal_;
    bool isDrawn_ = false;
    double drawnAt_ = 0;
    unsigned calls_ = 0;
};

}  // namespace tools
