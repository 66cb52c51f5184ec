// Why something of the notify centre could not be done.
#pragma once

#include <string>

namespace notify {

/// A sentence for the person who runs the program: what failed, where, and what to do.
struct Failure {
    std::string text;
};

}  // namespace notify
