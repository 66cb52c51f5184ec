// The application: launching, leaving and coming back, addresses, and values.
#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>

#include "tests/uikit/fixture.h"

namespace uikit::test {
namespace {

using Names = std::vector<std::string>;

class Delegate : public objc::PeerBase {
  public:
    using Super = objc::Foreign<"NSObject">;
    static constexpr objc::Name className{"TestDelegate"};
    static void define(objc::ClassDefinition<Delegate>& definition) {
        definition.method<"applicationDidFinishLaunching:", &Delegate::launched>()
            .method<"applicationDidBecomeActive:", &Delegate::active>()
            .method<"applicationWillResignActive:", &Delegate::resigned>()
            .method<"applicationDidEnterBackground:", &Delegate::background>()
            .method<"applicationWillEnterForeground:", &Delegate::foreground>()
            .method<"heard:", &Delegate::notified>();
    }
    void launched(objc::Object) { heard.push_back("launched"); }
    void active(objc::Object) { heard.push_back("active"); }
    void resigned(objc::Object) { heard.push_back("resigned"); }
    void background(objc::Object) { heard.push_back("background"); }
    void foreground(objc::Object) { heard.push_back("foreground"); }
    void notified(objc::Object notification) { heard.push_back(utf8(objc::send<"name", objc::Object>(notification))); }
    static inline Names heard;
};

class ApplicationTest : public ToolkitTest {
  protected:
    ApplicationTest() { Delegate::heard.clear(); }
    static objc::Object centre() { return objc::sendClass<"NSNotificationCenter", "defaultCenter", objc::Object>(); }
};

TEST_F(ApplicationTest, theSharedApplicationIsOfTheClassThatWasAskedFor) {
    EXPECT_EQ((objc::sendClass<"UIApplication", "sharedApplication", objc::Object>()), Application::shared()->object());
}

TEST_F(ApplicationTest, launchingMakesTheDelegateAndTellsIt) {
    Application::shared()->launch(objc::classOf<Delegate>());
    EXPECT_EQ(Delegate::heard, (Names{"launched", "active"}));
    EXPECT_TRUE(objc::isKindOf(Application::shared()->delegate(), objc::classOf<Delegate>()));
}

TEST_F(ApplicationTest, theDelegateHearsOfTheBackgroundBeforeTheObservers) {
    auto* application = Application::shared();
    application->launch(objc::classOf<Delegate>());
    Delegate::heard.clear();
    objc::send<"addObserver:selector:name:object:">(centre(), application->delegate(), objc::selector<"heard:">(),
                                                    nsString("UIApplicationDidEnterBackgroundNotification"),
                                                    objc::Object{});
    objc::send<"addObserver:selector:name:object:">(centre(), application->delegate(), objc::selector<"heard:">(),
                                                    nsString("UIApplicationWillEnterForegroundNotification"),
                                                    objc::Object{});
    application->enterBackground();
    application->enterBackground();
    EXPECT_EQ(Delegate::heard, (Names{"resigned", "background", "UIApplicationDidEnterBackgroundNotification"}));
    EXPECT_EQ(application->applicationState(), 2);
    Delegate::heard.clear();
    application->enterForeground();
    application->enterForeground();
    EXPECT_EQ(Delegate::heard, (Names{"foreground", "UIApplicationWillEnterForegroundNotification", "active"}));
    EXPECT_EQ(application->applicationState(), 0);
    objc::send<"removeObserver:">(centre(), application->delegate());
}

TEST_F(ApplicationTest, addressesGoToTheOpenerAndNowhereWithoutOne) {
    auto url = objc::sendClass<"NSURL", "URLWithString:", objc::Object>(nsString("tel://+4930123456"));
    EXPECT_FALSE(Application::shared()->openURL(url));
    std::string opened;
    Application::shared()->setUrlOpener([&](const std::string& address) {
        opened = address;
        return true;
    });
    EXPECT_TRUE((objc::send<"openURL:", bool>(Application::shared()->object(), url)));
    EXPECT_EQ(opened, "tel://+4930123456");
    EXPECT_FALSE(Application::shared()->openURL({}));
}

TEST_F(ApplicationTest, numbersWithAPlusAreAddressesAndBrokenTextIsNone) {
    auto address = [](const char* text) {
        return objc::sendClass<"NSURL", "URLWithString:", objc::Object>(nsString(text));
    };
    EXPECT_EQ(utf8(objc::send<"absoluteString", objc::Object>(address("tel://+4930123456"))), "tel://+4930123456");
    EXPECT_EQ(utf8(objc::send<"scheme", objc::Object>(address("facetime-audio://+4930"))), "facetime-audio");
    EXPECT_EQ(utf8(objc::send<"absoluteString", objc::Object>(address("tel://0049"))), "tel://0049");
    EXPECT_FALSE(address("tel://+49 30"));
    EXPECT_FALSE(address("tel://49 30"));
}

TEST_F(ApplicationTest, theNetworkIndicatorTurnsWithoutKeepingAnybodyFromSettling) {
    auto* application = Application::shared();
    objc::send<"setNetworkActivityIndicatorVisible:">(application->object(), true);
    EXPECT_TRUE(framesWanted());
    EXPECT_FALSE(animationsRunning());
    application->setNetworkActivityIndicatorVisible(false);
    advance(0.1);
    EXPECT_FALSE(framesWanted());
}

TEST_F(ApplicationTest, theScreenAnswersItsSizeInPoints) {
    auto screen = objc::sendClass<"UIScreen", "mainScreen", objc::Object>();
    EXPECT_EQ((objc::send<"bounds", Rect>(screen)), (Rect{{}, {320, 568}}));
    EXPECT_EQ((objc::send<"applicationFrame", Rect>(screen)), (Rect{{0, 20}, {320, 548}}));
    EXPECT_EQ((objc::send<"scale", double>(screen)), 2);
}

TEST_F(ApplicationTest, coloursFontsAndImagesAreValues) {
    auto color = objc::sendClass<"UIColor", "colorWithRed:green:blue:alpha:", objc::Object>(1.0, 0.5, 0.0, 1.0);
    EXPECT_EQ(colorOf(color), (Color{1, 0.5, 0, 1}));
    EXPECT_TRUE((objc::send<"isEqual:", bool>(color, uiColor({1, 0.5, 0, 1}))));
    EXPECT_FALSE((objc::send<"isEqual:", bool>(color, nsString("red"))));
    EXPECT_EQ((objc::send<"pointSize", double>(objc::sendClass<"UIFont", "boldSystemFontOfSize:", objc::Object>(13.0))),
              13);
    EXPECT_FALSE((objc::sendClass<"UIImage", "imageWithContentsOfFile:", objc::Object>(nsString("/missing.png"))));
    EXPECT_EQ(colorOf({}), Color::clear());
    EXPECT_EQ(fontOf({}).size, 17);
}

TEST_F(ApplicationTest, aProductImageThatCannotBeReadIsDrawnAndSaidOnce) {
    char folder[] = "/tmp/broken-images-XXXXXX";
    ASSERT_NE(::mkdtemp(folder), nullptr);
    const std::string file = std::string(folder) + "/missed_icon.png";
    std::ofstream(file) << "no picture";
    testing::internal::CaptureStderr();
    for (int i = 0; i < 2; ++i) {
        const auto image = objc::sendClass<"UIImage", "imageWithContentsOfFile:", objc::Object>(nsString(file));
        ASSERT_TRUE(image);
        EXPECT_TRUE(imageOf(image));
        EXPECT_EQ(imageName(image), "missed_icon");
    }
    const std::string said = testing::internal::GetCapturedStderr();
    EXPECT_NE(said.find(file), std::string::npos) << said;
    EXPECT_EQ(std::count(said.begin(), said.end(), '\n'), 1) << said;
    std::filesystem::remove_all(folder);
}

TEST_F(ApplicationTest, textThatIsNotUtf8IsReplacedAndNeverRefused) {
    EXPECT_EQ(utf8(nsString("caf\xC3\xA9")), "caf\xC3\xA9");
    EXPECT_EQ(utf8(nsString("a\xFFz")), "a\xEF\xBF\xBDz");
    EXPECT_EQ(utf8({}), "");
}

TEST_F(ApplicationTest, thereIsOneFirstResponderAtMost) {
    const auto first = add({{}, {10, 10}});
    const auto second = add({{}, {10, 10}});
    EXPECT_TRUE(first->becomeFirstResponder());
    EXPECT_TRUE(second->becomeFirstResponder());
    EXPECT_FALSE(first->isFirstResponder());
    EXPECT_EQ(firstResponder(), second.get());
    second->removeFromSuperview();
    EXPECT_EQ(firstResponder(), nullptr);
}

}  // namespace
}  // namespace uikit::test
