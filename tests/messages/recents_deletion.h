// What the tests of both deletions share: asking, and the log's lines about the work.
#pragma once

#include "desktop/notify/notify.h"
#include "tests/messages/recents_screen.h"

namespace recentsmessages {

class RecentsDeletion : public RecentsMessages {
  protected:
    void openWith(int rows) {
        companion().setRows(1, people(rows));
        open();
    }
    void ask() const { send<"deleteAllAction:">(objc::Object{}); }
    /// The log's lines about the database and the lists.
    static std::vector<std::string> work() {
        auto lines = log().lines();
        std::erase_if(lines, [](const std::string& line) {
            return line.find("HUD:") != std::string::npos || line.find("indicator") != std::string::npos;
        });
        return lines;
    }
};

}  // namespace recentsmessages
