// Messages performed on the main thread, from it and from others.
#include <thread>

#include "objc/class.h"
#include "tests/dispatch/recorder.h"

namespace dispatch_tests {
namespace {

Recorder* recorder = nullptr;
std::thread::id seenOn;

class Listener : public objc::PeerBase {
  public:
    using Super = objc::Foreign<"NSObject">;
    static constexpr objc::Name className{"MainThreadListener"};
    static void define(objc::ClassDefinition<Listener>& definition) {
        definition.method<"hear:", &Listener::hear>().method<"hear", &Listener::hearNothing>();
    }
    void hear(objc::Object word) { record(objc::send<"UTF8String", const char*>(word)); }
    void hearNothing() { record("nothing"); }

  private:
    static void record(const char* word) {
        seenOn = std::this_thread::get_id();
        recorder->add(word);
    }
};

class MainThreadMessages : public testing::Test {
  protected:
    void SetUp() override { recorder = &recorder_; }
    void perform(SEL selector, const char* word, bool wait) {
        auto argument = objc::sendClass<"NSString", "stringWithUTF8String:", objc::Object>(word);
        objc::send<"performSelectorOnMainThread:withObject:waitUntilDone:">(listener_->self, selector, argument, wait);
    }

    dispatch::AutoreleaseScope pool_;
    Recorder recorder_;
    objc::Ref<Listener> listener_ = objc::Ref<Listener>::make();
};

TEST_F(MainThreadMessages, comeAfterTheCurrentEvent) {
    perform(objc::selector<"hear:">(), "word", false);
    objc::send<"performSelectorOnMainThread:withObject:waitUntilDone:">(listener_->self, objc::selector<"hear">(),
                                                                        objc::Object{}, false);
    EXPECT_EQ(recorder_.events(), std::vector<std::string>());
    EXPECT_TRUE(settle());
    EXPECT_EQ(recorder_.events(), (std::vector<std::string>{"word", "nothing"}));
}

TEST_F(MainThreadMessages, ofTheMainThreadThatWaitsForThemComeAtOnce) {
    perform(objc::selector<"hear:">(), "word", true);
    EXPECT_EQ(recorder_.events(), (std::vector<std::string>{"word"}));
}

TEST_F(MainThreadMessages, ofAnotherThreadRunOnTheMainThreadWhileItWaits) {
    const dispatch::Activity underWay;
    std::atomic<bool> heard{false};
    std::thread other([&] {
        const dispatch::AutoreleaseScope pool;
        perform(objc::selector<"hear:">(), "word", true);
        heard = true;
        async(&_dispatch_main_q, [] {});
    });
    const double deadline = dispatch::steadyNow() + 60;
    while (!heard && dispatch::steadyNow() < deadline) {
        dispatch::waitForWork(deadline);
        dispatch::drainMainQueue();
    }
    other.join();
    EXPECT_TRUE(heard);
    EXPECT_EQ(recorder_.events(), (std::vector<std::string>{"word"}));
    EXPECT_EQ(seenOn, std::this_thread::get_id());
    dispatch::drainMainQueue();
}

}  // namespace
}  // namespace dispatch_tests
