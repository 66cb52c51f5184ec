// A history screen on top of Recents.
#pragma once

#include "tests/screens/fixture.h"

namespace screens {

struct HistoryScreen : UIViewController {
    UITableView tableView() const { return objc::send<"tableView", UITableView>(*this); }
    NSMutableArray history() const { return objc::send<"history", NSMutableArray>(*this); }
    NSMutableArray logInfoList() const { return objc::send<"logInfoList", NSMutableArray>(*this); }
    NSString footerInfo() const { return objc::send<"footerInfo", NSString>(*this); }
    std::int64_t filterType() const { return objc::send<"filterType", std::int64_t>(*this); }
    bool isLogEditing() const { return objc::send<"isLogEditing", bool>(*this); }
    NSInteger rows() const { return objc::send<"tableView:numberOfRowsInSection:", NSInteger>(*this, tableView(), 0L); }
    double headerHeight() const {
        return objc::send<"tableView:heightForHeaderInSection:", double>(*this, tableView(), 0L);
    }
    double footerHeight() const {
        return objc::send<"tableView:heightForFooterInSection:", double>(*this, tableView(), 0L);
    }
    NSString header() const {
        return objc::send<"tableView:titleForHeaderInSection:", NSString>(*this, tableView(), 0L);
    }
    NSString footer() const {
        return objc::send<"tableView:titleForFooterInSection:", NSString>(*this, tableView(), 0L);
    }
    void chooseSegment(NSInteger index) const {
        auto control = objc::send<"titleView", UISegmentedControl>(navigationItem());
        control.setSelectedSegmentIndex(index);
        objc::send<"showLogSegmentAction:">(*this, control);
    }
    void commitDeletion(long row) const {
        objc::send<"tableView:commitEditingStyle:forRowAtIndexPath:">(*this, tableView(), 1L, rowPath(row));
    }
    objc::Object leftItem() const { return objc::send<"leftBarButtonItem", objc::Object>(navigationItem()); }
    objc::Object rightItem() const { return objc::send<"rightBarButtonItem", objc::Object>(navigationItem()); }
    bool hidesBack() const { return objc::send<"hidesBackButton", bool>(navigationItem()); }
};

class HistoryTest : public ScreenTest {
  protected:
    /// Makes the screen as the presenting screens do, without pushing it.
    void make(QVCallEntry entry) {
        screen_ = objc::make<HistoryScreen>(objc::classNamed<"QVLogViewController">());
        ASSERT_TRUE(screen_);
        objc::send<"setEntry:">(screen_.get(), entry);
        objc::send<"setDelegate:">(screen_.get(), objc::Object{delegate_->self});
    }
    /// Starts the application and opens the history of that row of Recents.
    void open(NSUInteger row = 0) {
        start();
        make(service().callList().objectAtIndex<QVCallEntry>(row));
        navigation().pushViewController(screen_.get(), true);
        settle();
    }
    QVCallEntry entry() const { return objc::send<"entry", QVCallEntry>(screen_.get()); }

    objc::Strong<HistoryScreen> screen_;
    objc::Ref<Delegate> delegate_ = objc::Ref<Delegate>::make();
};

/// One of each kind at one number, newest first: missed, received, dialled, cancelled; and a call of somebody else.
inline std::vector<Call> oneOfEach() {
    return {{.address = "+4930100", .date = noon - 3 * day, .flags = outgoing, .duration = 0},
            {.address = "+4930100", .date = noon - 2 * day, .flags = outgoing, .duration = 60},
            {.address = "+4930200", .date = noon - 2 * day + 60, .flags = incoming, .duration = 7},
            {.address = "+4930100", .date = noon - day, .flags = incoming, .duration = 30},
            {.address = "+4930100", .date = noon, .flags = incoming, .duration = 0}};
}

}  // namespace screens
