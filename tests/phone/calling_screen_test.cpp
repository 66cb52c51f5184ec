// The calling screen: whom, how, how long, and hanging up.
#include "desktop/phone/calling_screen.h"

#include <gmock/gmock.h>

#include <filesystem>

#include "desktop/addressbook/book.h"
#include "desktop/addressbook/names.h"
#include "desktop/addressbook/numbers.h"
#include "desktop/dispatch/main_loop.h"
#include "desktop/phone/url_opening.h"
#include "tests/uikit/fixture.h"

namespace phone {
namespace {

using contacts::Book;
using contacts::Property;
using testing::ElementsAre;

class CallingScreenTest : public uikit::test::ToolkitTest {
  protected:
    CallingScreenTest() {
        objc::registerClasses<CallingScreen>();
        char name[] = "/tmp/calling-screen-XXXXXX";
        folder_ = ::mkdtemp(name);
        contacts::setLanguage("en");
        contacts::setHomeRegion("DE");
        EXPECT_EQ(Book::shared().open(folder_), std::nullopt);
        contacts::Contact anna;
        anna.setText(Property::firstName, "Anna");
        anna.lists[Property::phone] = {{0, "_$!<Work>!$_", "+49 30 123456", {}}};
        EXPECT_TRUE(Book::shared().write({anna}).ok());
        window().makeKeyAndVisible();
    }
    ~CallingScreenTest() override {
        Book::shared().close();
        dispatch::drainMainQueue();
        std::filesystem::remove_all(folder_);
    }

    CallingScreen* open(const std::string& address) {
        EXPECT_TRUE(takeAddress(address, false));
        advance(0.5);
        window().layoutIfNeeded();
        return CallingScreen::front();
    }

  private:
    std::filesystem::path folder_;
};

// Without the application's bundle a text is its key.
TEST_F(CallingScreenTest, namesTheContactHoweverTheNumberIsSpelt) {
    auto* screen = open("tel://030/123456");
    ASSERT_NE(screen, nullptr);
    EXPECT_THAT(screen->drawnTexts(), ElementsAre("Anna", "work  030 123456", "CALL_TELEPHONE", "0:00"));
}

TEST_F(CallingScreenTest, namesTheFormattedNumberOfSomebodyUnknown) {
    EXPECT_THAT(open("facetime://+442079460000")->drawnTexts(),
                ElementsAre("+44 20 7946 0000", "CALL_FACETIME", "0:00"));
    EXPECT_THAT(open("facetime-audio://")->drawnTexts(), ElementsAre("CALL_NOBODY", "CALL_FACETIME_AUDIO", "0:00"));
}

TEST_F(CallingScreenTest, saysHowLongTheCallHasRun) {
    auto* screen = open("tel://110");
    advance(61);
    EXPECT_EQ(screen->drawnTexts().back(), "1:01");
    advance(3600);
    EXPECT_EQ(screen->drawnTexts().back(), "1:01:01");
}

TEST_F(CallingScreenTest, isGoneOnceTheCallIsEnded) {
    auto* screen = open("tel://110");
    const objc::Ref<CallingScreen> kept(screen);
    auto* button = screen->subviews().front().get();
    tap(button->pointToWindow(button->bounds().centre()));
    EXPECT_EQ(CallingScreen::front(), nullptr);
    advance(1);
    EXPECT_EQ(kept->window(), nullptr);
}

TEST_F(CallingScreenTest, aNewCallTakesThePlaceOfTheOneBefore) {
    open("tel://110");
    EXPECT_THAT(open("tel://112")->drawnTexts(), ElementsAre("112", "CALL_TELEPHONE", "0:00"));
    EXPECT_EQ(window().subviews().size(), 1U);
}

TEST_F(CallingScreenTest, coversWhatIsBehindIt) {
    auto behind = add<uikit::Control>({{0, 100}, {320, 100}});
    objc::registerClasses<uikit::test::Recorder>();
    auto recorder = objc::Ref<uikit::test::Recorder>::make();
    behind->addTargetActionForControlEvents(recorder->object(), objc::selector<"pressed">(), uikit::touchUpInside);
    open("tel://110");
    tap({160, 150});
    EXPECT_TRUE(recorder->heard.empty());
}

TEST_F(CallingScreenTest, aMessageHasNoTimeAndSaysThatItIsNotSent) {
    EXPECT_THAT(open("sms:030123456")->drawnTexts(),
                ElementsAre("Anna", "work  030 123456", "CALL_MESSAGE", "CALL_NOT_SENT"));
}

TEST_F(CallingScreenTest, addressesOfOtherSchemesShowNone) { EXPECT_EQ(open("http://example.org"), nullptr); }

}  // namespace
}  // namespace phone
