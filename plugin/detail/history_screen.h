// QVLogViewController: every call of one contact or number, filtered by four segments, with deletion of one and of all.
#pragma once

#include "objc/class.h"
#include "objc/strong_slot.h"
#include "plugin/companion/entry.h"
#include "plugin/companion/filter.h"
#include "plugin/companion/visual.h"
#include "plugin/rows/relaxed.h"

namespace history {

/// Whether a call is of the filter's list in a history. Any other filter takes every call.
bool isOfFilter(QVCallEntry call, Filter filter);

/// The screen, and its state: each has its own. Main thread, but for the deletion of all calls, which runs under the
/// progress indicator on a thread of its own and touches the two lists.
class HistoryScreen : public objc::PeerBase {
  public:
    using Super = objc::Foreign<"QVBaseTableViewController">;
    static constexpr objc::Name className{"QVLogViewController"};
    static void define(objc::ClassDefinition<HistoryScreen>& definition);

    // Set by who presents it, before it is pushed.
    objc::Strong<QVCallEntry> entry() const { return entry_.load(); }
    void setEntry(QVCallEntry entry) { entry_.store(objc::Strong(entry)); }
    objc::Object delegate() const { return objc::Object{delegate_}; }
    /// Not retained. It takes `entryDeleted:`.
    void setDelegate(objc::Object delegate) { delegate_ = delegate.self; }

    objc::Strong<NSMutableArray> logInfoList() const { return logInfoList_.load(); }
    void setLogInfoList(NSMutableArray list) { logInfoList_.store(objc::Strong(list)); }
    objc::Strong<NSMutableArray> historyList() const { return history_.load(); }
    void setHistoryList(NSMutableArray list) { history_.store(objc::Strong(list)); }
    objc::Strong<NSString> footerInfo() const { return footerInfo_.load(); }
    void setFooterInfo(NSString text) { footerInfo_.store(objc::Strong(text)); }
    std::int64_t filterType() const { return filterType_; }
    void setFilterType(std::int64_t code) { filterType_ = code; }
    bool isLogEditing() const { return isLogEditing_; }
    void setIsLogEditing(bool editing) { isLogEditing_ = editing; }

    // Life.
    void viewDidLoad();
    /// Reads the history again. The base class is not sent it, on purpose.
    void viewWillAppear(bool animated);
    /// Tells the delegate, then the companion, what remains after deletions.
    void viewWillDisappear(bool animated);
    /// Lets the lists go. The base class is not sent it, on purpose.
    void viewDidDisappear(bool animated);
    void didReceiveMemoryWarning();

    // Data.
    void initializeData();
    void initDetails();
    void reloadLogTableData();
    void showLogSegmentAction(UISegmentedControl control);

    // Table.
    NSInteger numberOfSections(UITableView) { return 1; }
    NSInteger numberOfRows(UITableView, NSInteger) { return static_cast<NSInteger>(logRowCount_.get()); }
    CGFloat heightForRow(UITableView, NSIndexPath);
    CGFloat heightOfSectionEdge(UITableView, NSInteger);
    NSString titleForHeader(UITableView, NSInteger);
    objc::Strong<NSString> titleForFooter(UITableView, NSInteger);
    UITableViewCell cellForRow(UITableView table, NSIndexPath path);
    bool canEditRow(UITableView, NSIndexPath) { return true; }
    NSInteger editingStyleForRow(UITableView, NSIndexPath);
    NSIndexPath willSelectRow(UITableView, NSIndexPath path);
    void didSelectRow(UITableView, NSIndexPath path);
    void willBeginEditingRow(UITableView, NSIndexPath);
    void didEndEditingRow(UITableView, NSIndexPath);
    void commitEditingStyle(UITableView table, NSInteger style, NSIndexPath path);

    // Editing and deletion.
    void showLogDeleteAction(objc::Object sender);
    void updateNavigationBarButtonItems(bool editing, bool groupEdit);
    void removeLogRowData(QVCallEntry call);
    void checkAndShowLogCloseTheView();
    void showLogDeleteAllAction(objc::Object sender);
    NSString deleteAllButtonText();
    void showLogDeleteAllRecordsFromDB(NSString label);
    /// On the indicator's thread.
    void showLogDeleteAllRecordsAction();
    void hudWasHidden(objc::Object indicator);

  private:
    QVBaseTableViewController screen() const { return objc::as<QVBaseTableViewController>(self); }
    Filter filter() const { return static_cast<Filter>(filterType_.get()); }
    /// The call of the row; null beyond the list's end.
    objc::Strong<QVCallEntry> callOfRow(NSIndexPath path) const;
    /// Whether a deletion is to be reported, by the companion's flag or by the screen's own memory, which is cleared.
    bool takeDeletionToReport();
    /// Deletes the calls of `shown`, a list of what the screen shows that nobody changes meanwhile.
    bool deleteCalls(NSArray shown);
    void bringDaysInStep(NSArray deleted);

    objc::StrongSlot<UISegmentedControl> segmentControl_;
    objc::StrongSlot<UIBarButtonItem> trashButton_;
    objc::StrongSlot<QVCallEntry> entry_;
    objc::StrongSlot<NSMutableArray> logInfoList_;  // the rows: what passes the filter, in the history's order
    objc::StrongSlot<NSMutableArray> history_;
    objc::StrongSlot<NSString> footerInfo_;
    rows::Relaxed<id> delegate_{nullptr};
    rows::Relaxed<std::int64_t> logRowCount_;
    rows::Relaxed<std::int64_t> logCallsDuration_;  // seconds
    rows::Relaxed<std::int64_t> filterType_;
    rows::Relaxed<bool> isLogEditing_;
    rows::Relaxed<bool> hasDeleted_;  // and has not reported it yet
};

}  // namespace history
