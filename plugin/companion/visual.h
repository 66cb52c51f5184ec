// The companion's visual classes: table cells, the progress indicator, the action sheet, the base of the plug-in's own
// screens.
#pragma once

#include "platform/uikit_screens.h"
#include "plugin/companion/entry.h"

struct QVUITableViewCell : UITableViewCell {
    static constexpr objc::Name className{"QVUITableViewCell"};

    void setCallEntry(QVCallEntry entry) const { objc::send<"setCallEntry:">(*this, entry); }
    /// Draws the entry as a day with its counts.
    void setShowGroupByDateCell(bool show) const { objc::send<"setShowGroupByDateCell:">(*this, show); }
    /// Draws the row of a call history.
    void setShowLogCell(bool show) const { objc::send<"setShowLogCell:">(*this, show); }
    /// Draws how many calls the entry folds.
    void setShowGroupCount(bool show) const { objc::send<"setShowGroupCount:">(*this, show); }
};

struct QVLoadMoreRecordsCell : UITableViewCell {
    static constexpr objc::Name className{"QVLoadMoreRecordsCell"};
};

/// Above a person's card: the calls of the day, and the way to all of them.
struct QVRecentsPersonPhoneHeaderView : UIView {
    static constexpr objc::Name className{"QVRecentsPersonPhoneHeaderView"};

    static objc::Strong<QVRecentsPersonPhoneHeaderView> makeWithFrame(CGRect frame) {
        return objc::make<QVRecentsPersonPhoneHeaderView, "initWithFrame:">(objc::classNamed<className>(), frame);
    }
    /// Entries, newest first.
    void setCallRecords(NSArray entries) const { objc::send<"setCallRecords:">(*this, entries); }
    /// Not retained. It is sent `showLogAction:` and `detailsButotnClicked` by the view's buttons.
    void setDelegate(Object delegate) const { objc::send<"setDelegate:">(*this, delegate); }
};

struct MBProgressHUD : UIView {
    static constexpr objc::Name className{"MBProgressHUD"};

    static MBProgressHUD showHUDAddedTo(UIView view, bool animated) {
        return objc::send<"showHUDAddedTo:animated:", MBProgressHUD>(cls<MBProgressHUD>(), view, animated);
    }
    void setColor(UIColor color) const { objc::send<"setColor:">(*this, color); }
    void setLabelColor(UIColor color) const { objc::send<"setLabelColor:">(*this, color); }
    void setDetailsLabelColor(UIColor color) const { objc::send<"setDetailsLabelColor:">(*this, color); }
    void setLabelText(NSString text) const { objc::send<"setLabelText:">(*this, text); }
    void setDetailsLabelText(NSString text) const { objc::send<"setDetailsLabelText:">(*this, text); }
    Object delegate() const { return objc::send<"delegate", Object>(*this); }
    void setDelegate(Object delegate) const { objc::send<"setDelegate:">(*this, delegate); }
    void setMode(int mode) const { objc::send<"setMode:">(*this, mode); }
    void setOpacity(float opacity) const { objc::send<"setOpacity:">(*this, opacity); }
    void setActivityIndicatorTintColor(UIColor color) const {
        objc::send<"setActivityIndicatorTintColor:">(*this, color);
    }
    /// Runs the selector on a thread of its own while it shows, and hides when it returns.
    void showWhileExecuting(SEL selector, Object target, Object object, bool animated) const {
        objc::send<"showWhileExecuting:onTarget:withObject:animated:">(*this, selector, target, object, animated);
    }
    void hide(bool animated) const { objc::send<"hide:">(*this, animated); }
    void hide(bool animated, double delay) const { objc::send<"hide:afterDelay:">(*this, animated, delay); }
};

struct BlockActionSheet : NSObject {
    static constexpr objc::Name className{"BlockActionSheet"};

    static objc::Strong<BlockActionSheet> makeWithTitle(NSString title) {
        return objc::make<BlockActionSheet, "initWithTitle:">(objc::classNamed<"BlockActionSheet">(), title);
    }
    void setDestructiveButton(NSString title, const objc::Block<void()>& block) const {
        objc::send<"setDestructiveButtonWithTitle:block:">(*this, title, block.get());
    }
    /// Without a block: it only ends the sheet.
    void setCancelButton(NSString title) const {
        objc::send<"setCancelButtonWithTitle:block:">(*this, title, static_cast<const void*>(nullptr));
    }
    void showInView(UIView view) const { objc::send<"showInView:">(*this, view); }

    void dismissWithClickedButtonIndex(NSInteger index, bool animated) const {
        objc::send<"dismissWithClickedButtonIndex:animated:">(*this, index, animated);
    }
};

/// A table view controller with a search display controller.
struct QVBaseTableViewController : UIViewController {
    static constexpr objc::Name className{"QVBaseTableViewController"};

    UITableView tableView() const { return objc::send<"tableView", UITableView>(*this); }
    BlockActionSheet actionSheet() const { return objc::send<"actionSheet", BlockActionSheet>(*this); }
    void setActionSheet(BlockActionSheet sheet) const { objc::send<"setActionSheet:">(*this, sheet); }
};
