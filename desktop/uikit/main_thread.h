// Work on views that is asked for on any thread.
#pragma once

#include "platform/dispatch.h"

namespace uikit {

/// Runs the function at once on the main thread; asked for on another, it runs on the main queue, later.
template <class Function>
void onMainThread(Function function) {
    if (objc::sendClass<"NSThread", "isMainThread", bool>())
        function();
    else
        dispatch::asyncOnMain(std::move(function));
}

}  // namespace uikit
