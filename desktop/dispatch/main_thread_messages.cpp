// Messages to the main thread: Foundation would put them on its own run loop, which the desktop's main loop is not.
#include <future>
#include <thread>

#include "desktop/dispatch/queue.h"
#include "desktop/dispatch/work.h"
#include "objc/class.h"

namespace dispatch {
namespace {

const std::thread::id mainThread = std::this_thread::get_id();

struct Message {
    objc::Strong<> receiver;
    SEL selector;
    objc::Strong<> argument;
    std::promise<void>* done;  // null when nobody waits
};

void deliver(void* context) {
    const std::unique_ptr<Message> message(static_cast<Message*>(context));
    objc::sendSelector(message->receiver.get(), message->selector, message->argument.get());
    if (message->done) message->done->set_value();
}

/// `performSelectorOnMainThread:withObject:waitUntilDone:`. Whoever waits on the main thread itself is served at once.
void performOnMainThread(objc::Object self, SEL selector, objc::Object argument, bool wait) {
    if (wait && std::this_thread::get_id() == mainThread) {
        objc::sendSelector(self, selector, argument);
        return;
    }
    std::promise<void> done;
    auto* message = new Message{objc::Strong<>(self), selector, objc::Strong<>(argument), wait ? &done : nullptr};
    dispatch_async_f(&_dispatch_main_q, message, deliver);
    if (wait) done.get_future().wait();
}

[[gnu::constructor]] void replaceAtLoad() {
    using Thunk = objc::detail::FreeThunk<&performOnMainThread>;
    class_replaceMethod(objc::classNamed<"NSObject">(),
                        objc::selector<"performSelectorOnMainThread:withObject:waitUntilDone:">(),
                        objc::implementation(&Thunk::call), Thunk::types.text);
}

}  // namespace
}  // namespace dispatch
