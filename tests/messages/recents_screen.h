// The plug-in's Recents screen in the test's own process: the host's screen with a real table and a real search bar,
// over the companion of call_companion.h. Its messages are written into the same log.
#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "desktop/uikit/bar_items.h"
#include "desktop/uikit/navigation_controller.h"
#include "desktop/uikit/search_display_controller.h"
#include "desktop/uikit/table_view.h"
#include "tests/messages/call_companion.h"

namespace recentsmessages {

using callcompanion::Call;
using callcompanion::companion;
using callcompanion::log;
using testing::AllOf;
using testing::Contains;
using testing::Each;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

/// Calls 1 to `count`, each of a person of its own.
std::vector<Call> people(int count);

/// Registers what the plug-in's own screens are made from; see day_screen.h.
void registerDayBase();

class RecentsMessages : public testing::Test {
  protected:
    void SetUp() override;
    void TearDown() override;

    /// A screen whose view has loaded and whose first load is done, with an empty log.
    void open();
    /// Runs queues and main queue until nothing is left.
    static void settle();
    /// Writes down the screen's own messages from now on, but for plain questions; or those of the classes named.
    static void trace(const std::vector<std::string>& classes = {"PHRecentsViewController"});
    static void endTrace();

    objc::Object screen() const { return screen_; }
    template <objc::Name name, class R = void, class... Arguments>
    R send(Arguments... arguments) const {
        return objc::send<name, R>(screen_.get(), arguments...);
    }
    uikit::TableView* table() const { return send<"table", uikit::TableView*>(); }
    uikit::TableView* results() const;
    uikit::SearchDisplayController* search() const;
    uikit::NavigationItem* bar() const;
    std::string left() const;
    std::string right() const;
    /// A button of the scope area.
    uikit::Button* button(long tag) const;
    uikit::SegmentedControl* segments() const;

    /// Begins a search and types.
    void type(const char* text);
    void pick(int segment);
    void swipe(long row);
    /// Takes the destructive button of the sheet that was made last.
    static void confirm();
    /// Whether any sheet was made in this process.
    static bool hasMadeSheets();
    /// The view that the sheet was shown in last.
    static uikit::View* viewOfSheet();
    /// The colour that the images of the button were tinted with; null for none.
    static objc::Object imageTintOf(uikit::Button* button);
    std::vector<int> found() const;

    /// The table's rows, as its data source says.
    long rows() const { return send<"tableView:numberOfRowsInSection:", long>(table()->object(), 0L); }
    /// "3 shown", "of 5, 90 s"; empty for none.
    std::string header() const;
    std::string footer() const;
    /// The entry that the row shows; 0 for none or the load-more row.
    int shownAt(long row) const;

  private:
    objc::AutoreleasePool pool_;
    objc::Strong<> screen_;
    objc::Ref<uikit::NavigationController> navigation_;
};

}  // namespace recentsmessages
