// Makes a thread fit for Objective-C: Foundation knows it, and an autorelease pool is open.
#include "desktop/dispatch/main_loop.h"
#include "objc/send.h"

extern "C" BOOL GSRegisterCurrentThread();
extern "C" void GSUnregisterCurrentThread();

namespace dispatch {
namespace {

/// Known to Foundation from the first use to the thread's end, unless somebody else has seen to it already.
class ThreadRegistration {
  public:
    ThreadRegistration() : ours_(GSRegisterCurrentThread() != 0) {}
    ThreadRegistration(const ThreadRegistration&) = delete;
    ThreadRegistration& operator=(const ThreadRegistration&) = delete;
    ~ThreadRegistration() {
        if (ours_) GSUnregisterCurrentThread();
    }

  private:
    bool ours_;
};

}  // namespace

AutoreleaseScope::AutoreleaseScope() {
    thread_local ThreadRegistration registration;
    pool_ = objc::sendClass<"NSAutoreleasePool", "new", objc::Object>().self;
}

AutoreleaseScope::~AutoreleaseScope() { objc::send<"drain">(static_cast<id>(pool_)); }

}  // namespace dispatch
