// Where the list stands after a call far down in it was deleted.
#include "desktop/phone/main_loop.h"
#include "desktop/phone/screen_probe.h"
#include "desktop/uikit/table_view.h"
#include "tests/screens/fixture.h"

namespace screens {
namespace {

class KeepingPlace : public ScreenTest {
  protected:
    KeepingPlace() {
        std::vector<std::string> addresses;
        for (int i = 0; i < 130; ++i) addresses.push_back("+49301234" + std::to_string(1000 + i));
        std::vector<Call> calls;
        for (int i = 0; i < 130; ++i) calls.push_back({addresses[static_cast<std::size_t>(i)].c_str(), noon + i * 60});
        fill(calls);
    }
    static uikit::TableView& table() { return *phone::frontTable(); }
    static void deleteRow(long row) {
        const auto screen = objc::Object{phone::frontScreen()->self};
        constexpr long deleteStyle = 1;
        objc::send<"tableView:commitEditingStyle:forRowAtIndexPath:">(screen, table().object(), deleteStyle,
                                                                      rowPath(row));
    }
};

TEST_F(KeepingPlace, aDeletionFarDownLeavesTheListWhereItStands) {
    start();
    constexpr double place = 1500;
    table().setContentOffset({0, place});
    settle();
    for (int i = 0; i < 60; ++i) {
        deleteRow(35);
        settle();
        ASSERT_EQ(table().contentOffset().y, place) << "after deletion " << i + 1;
    }
    EXPECT_EQ(log().size(), 70U);
}

/// The reload forgets what was loaded beyond the first page, so that there is nothing to show there.
TEST_F(KeepingPlace, aDeletionBelowTheFirstPageLeavesTheListAtThatPagesEnd) {
    start();
    const double endOfFirstPage = table().greatestOffset();
    table().setContentOffset({0, endOfFirstPage});
    settle();
    ASSERT_EQ(table().numberOfRowsInSection(0), 101);
    table().setContentOffset({0, 3500});
    deleteRow(75);
    settle();
    EXPECT_EQ(table().contentOffset().y, endOfFirstPage);
}

}  // namespace
}  // namespace screens
