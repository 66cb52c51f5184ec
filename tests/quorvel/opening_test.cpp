// Opening: damaged and foreign files; a new call announced.
#include <signal.h>
#include <sys/resource.h>

#include <fstream>

#include "desktop/dispatch/main_loop.h"
#include "desktop/quorvel/services/guarded.h"
#include "fixture.h"

namespace quorvel::test {
namespace {

class OpeningTest : public CompanionTest {
  protected:
    static void write(const std::filesystem::path& file, const std::string& content) {
        std::ofstream(file, std::ios::binary) << content;
    }
    static std::string contentOf(const std::filesystem::path& file) {
        std::ifstream stream(file, std::ios::binary);
        return {std::istreambuf_iterator<char>(stream), {}};
    }
};

/// Hears of new calls.
class Listener : public objc::PeerBase {
  public:
    using Super = objc::Foreign<"NSObject">;
    static constexpr objc::Name className{"TestCallListener"};
    static void define(objc::ClassDefinition<Listener>& definition) { definition.method<"heard:", &Listener::heard>(); }
    void heard(objc::Object) { ++times; }
    int times = 0;
};

TEST_F(OpeningTest, aForeignFileIsRefusedByNameAndStaysAsItIs) {
    closeCompanion();
    for (const auto& old : std::filesystem::directory_iterator(folder()))
        if (old.path().filename().string().starts_with("calls.db")) std::filesystem::remove(old.path());
    const std::string content(5000, 'x');
    write(directory().calls(), content);
    const auto trouble = openCompanion(directory(), TEXTS_FOLDER);
    ASSERT_TRUE(trouble.has_value());
    EXPECT_NE(trouble->find("calls.db"), std::string::npos) << *trouble;
    EXPECT_EQ(contentOf(directory().calls()), content);
    EXPECT_EQ(callStore(), nullptr);
}

TEST_F(OpeningTest, withoutRoomForAnythingTheLogIsReadAndTheUserIsTold) {
    add({{"100", noon}, {"101", noon + 60}});
    closeCompanion();
    rlimit usual{};
    ASSERT_EQ(getrlimit(RLIMIT_FSIZE, &usual), 0);
    const auto former = signal(SIGXFSZ, SIG_IGN);
    const rlimit none{0, usual.rlim_max};
    ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &none), 0);
    const auto trouble = openCompanion(directory(), TEXTS_FOLDER);
    std::int64_t found = 0;
    bool isDeleted = true;
    if (!trouble) {
        read(10, 0, all);
        found = static_cast<std::int64_t>(list(all).count());
        isDeleted = objc::send<"removeCallsFromDB:date:", bool>(object(), all, objc::Object{});
    }
    setrlimit(RLIMIT_FSIZE, &usual);
    signal(SIGXFSZ, former);
    EXPECT_EQ(trouble, std::nullopt);
    EXPECT_EQ(found, 2);
    EXPECT_FALSE(isDeleted);
    EXPECT_GT(dispatch::drainMainQueue(), 0U) << "nothing was to be shown";
}

class Thrower {
  public:
    std::int64_t number(std::int64_t of) {
        if (of > 0) throw std::length_error("too long");
        return of + 1;
    }
    bool succeeds() const { throw 7; }
    objc::Strong<> list() { throw std::bad_alloc(); }
};

TEST_F(OpeningTest, whatAnOperationThrowsIsItsFailure) {
    Thrower thrower;
    EXPECT_EQ(guarded<&Thrower::number>(&thrower, -4), -3);
    EXPECT_EQ(guarded<&Thrower::number>(&thrower, 4), 0);
    EXPECT_FALSE(guarded<&Thrower::succeeds>(&thrower));
    const auto list = guarded<&Thrower::list>(&thrower);
    EXPECT_EQ(objc::as<NSArray>(list).count(), 0U);
    EXPECT_NE(list.get(), objc::Object{});
}

TEST_F(OpeningTest, damagedSettingsAreSetAsideAndTheUsualOnesHold) {
    write(directory().settings(), "{ minRec_Call = ");
    testing::internal::CaptureStderr();
    SettingsService::shared()->reloadSettings();
    const std::string said = testing::internal::GetCapturedStderr();
    EXPECT_NE(said.find("settings.plist"), std::string::npos) << said;
    EXPECT_EQ(SettingsService::shared()->value("minRec_Call"), 50);
    EXPECT_EQ(contentOf(directory().settings().string() + ".damaged-1"), "{ minRec_Call = ");
}

TEST_F(OpeningTest, aRecordedCallIsStoredAndThenAnnouncedOnTheMainThread) {
    const auto listener = objc::Ref<Listener>::make();
    const auto name = text<"com.velmarin.QuorvelNewRecordAddedNotification">();
    NSNotificationCenter::defaultCenter().addObserver(objc::Object{listener.self()}, objc::selector<"heard:">(), name,
                                                      {});
    store::NewCall call;
    call.address = "100";
    call.date = noon;
    const auto stored = recordCall(call);
    ASSERT_TRUE(stored.ok());
    EXPECT_EQ(listener->times, 0);
    dispatch::drainMainQueue();
    EXPECT_EQ(listener->times, 1);
    EXPECT_EQ((*callStore()->totals(store::Filter::missed, {})).calls, 1);
    objc::send<"removeObserver:">(NSNotificationCenter::defaultCenter(), objc::Object{listener.self()});
}

TEST_F(OpeningTest, aCallThatMakesNoSenseIsNotAnnounced) {
    store::NewCall call;
    call.date = -5;
    EXPECT_FALSE(recordCall(call).ok());
    EXPECT_EQ(dispatch::drainMainQueue(), 0U);
}

}  // namespace
}  // namespace quorvel::test
