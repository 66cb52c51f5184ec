// What rows say of numbers is worked out while their calls are read, and never while they scroll by.
#include "desktop/addressbook/numbers.h"
#include "desktop/graphics/canvas.h"
#include "desktop/phone/screen_probe.h"
#include "desktop/uikit/application.h"
#include "desktop/uikit/table_view.h"
#include "tests/screens/fixture.h"

namespace screens {
namespace {

using contacts::numbersWorkedOut;

class Scrolling : public ScreenTest {
  protected:
    explicit Scrolling(const char* name = "") {
        setSetting("region", "DE");
        std::vector<Call> calls;
        for (int i = 0; i < 120; ++i) addresses_.push_back("+49301234" + std::to_string(1000 + i));
        for (int i = 0; i < 120; ++i)
            calls.push_back(
                {.address = addresses_[static_cast<std::size_t>(i)].c_str(), .date = noon + i * 60, .name = name});
        fill(calls);
    }
    /// Draws every row from that one up to the other, a few at a time.
    static void scrollAcross(long first, long last) {
        graphics::Image image(uikit::screenSize(), 1);
        auto* table = phone::frontTable();
        for (long row = first; row < last; row += 5) {
            table->scrollToRow(uikit::indexPath({0, row}), uikit::TableView::scrollTop, false);
            graphics::Canvas canvas(image);
            uikit::Application::shared()->keyWindow()->renderScreen(canvas);
            for (const auto& each : table->visibleRows()) shown_ += each.cell->drawnTexts().size();
        }
    }
    static std::size_t rows() { return static_cast<std::size_t>(phone::frontTable()->numberOfRowsInSection(0)); }

    static inline std::size_t shown_ = 0;

  private:
    std::vector<std::string> addresses_;
};

TEST_F(Scrolling, worksOutNothingOfTheRowsThatWereRead) {
    const auto before = numbersWorkedOut();
    start();
    ASSERT_EQ(rows(), 51U);
    // Form and place of fifty numbers.
    EXPECT_EQ(numbersWorkedOut(), before + 100);
    scrollAcross(0, 40);
    EXPECT_GT(shown_, 0U);
    EXPECT_EQ(numbersWorkedOut(), before + 100);
}

TEST_F(Scrolling, worksOutNothingOfAPageThatCameWhileScrolling) {
    start();
    const auto before = numbersWorkedOut();
    scrollAcross(40, 51);
    settle();
    ASSERT_EQ(rows(), 101U);
    EXPECT_EQ(numbersWorkedOut(), before + 100);
    scrollAcross(45, 90);
    EXPECT_EQ(numbersWorkedOut(), before + 100);
}

/// Their initials stand on a colour that follows the number.
class ScrollingNamedCallers : public Scrolling {
  protected:
    ScrollingNamedCallers() : Scrolling("Harbour Office") {}
};

TEST_F(ScrollingNamedCallers, worksOutNothingOfTheRowsThatWereRead) {
    start();
    const auto before = numbersWorkedOut();
    scrollAcross(0, 40);
    EXPECT_GT(shown_, 0U);
    EXPECT_EQ(numbersWorkedOut(), before);
}

TEST_F(Scrolling, showsThePlaceOfANumberWhoseCallNamesNone) {
    start();
    const auto rows = phone::frontTable()->visibleRows();
    ASSERT_FALSE(rows.empty());
    EXPECT_THAT(rows[0].cell->drawnTexts(), testing::Contains("Berlin"));
}

}  // namespace
}  // namespace screens
