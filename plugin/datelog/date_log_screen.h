// QVDateLogViewController: the calls of one day, as a call list with its own state.
#pragma once

#include "objc/class.h"
#include "plugin/companion/visual.h"
#include "plugin/rows/call_list.h"

namespace datelog {

/// The screen. Everything that it does as the Recents screen does is that screen's code on this state; what it does its
/// own way it answers here to the same selectors.
class DateLogScreen : public objc::PeerBase {
  public:
    using Super = objc::Foreign<"QVBaseTableViewController">;
    static constexpr objc::Name className{"QVDateLogViewController"};
    static void define(objc::ClassDefinition<DateLogScreen>& definition);

    /// The screen at work.
    rows::CallList list() { return {objc::as<CallListScreen>(self), state_}; }

    /// The table, which the functions that are the Recents screen's too know by this name.
    UITableView table() { return screen().tableView(); }

    // The day; set before the screen is pushed.
    objc::Strong<QVCallEntry> dateEntry() const { return dateEntry_.load(); }
    void setDateEntry(QVCallEntry entry) { dateEntry_.store(objc::Strong(entry)); }
    std::int64_t filterType() const { return state_.filterType; }
    void setFilterType(std::int64_t code) { state_.filterType = code; }
    objc::Strong<NSString> totalDuration() const { return state_.totalDuration.load(); }
    void setTotalDuration(NSString text) { state_.totalDuration.store(objc::Strong(text)); }
    objc::Strong<NSMutableArray> srcList() const { return state_.srcList.load(); }
    void setSrcList(NSMutableArray list) { state_.srcList.store(objc::Strong(list)); }

    // Life. Main thread.
    objc::Object initWithStyle(NSInteger style);
    void viewDidLoad();
    void viewWillAppear(bool animated);
    /// Goes back to the root from a day without calls.
    void viewDidAppear(bool animated);
    /// Takes a day without calls out of the list of days.
    void viewWillDisappear(bool animated);
    void viewDidDisappear(bool animated);
    void didReceiveMemoryWarning();
    void handleEnableDisableSearchAction(bool settle);
    void prepareSearchBarScopeTitlesAndTintColor();

    // The day's lists. Nothing is loaded while the address book may not be read.
    void initDatabase();
    void initializeCallList();
    /// The day's entry takes over its newest call.
    void updateDateEntry();
    void clearCallLists();
    void segMentBackGroundAction(UISegmentedControl control);
    void scrollViewDidEndDecelerating(UIScrollView scroll);
    bool shouldReloadForSearchScope(UISearchDisplayController controller, NSInteger scope);
    void handleLoadMoreRecordsAction(QVLoadMoreRecordsCell cell);
    void loadMoreRecordsAction();
    void loadMoreSearchedRecords();

    // Deletion.
    void deleteAllAction(objc::Object sender);
    void removeAllRecordsInBackGround();
    void removeAllRecords();
    /// Loads the lists again and deletes nothing. Kept so.
    void removeSearchedRecordsInBackGround();
    /// Deletes every call of the filter on the row's day, and shows what is left.
    void removeRowData(QVCallEntry entry, NSIndexPath path);

    // Table. Main thread.
    NSInteger numberOfSections(UITableView) { return 1; }
    UITableViewCell cellForRow(UITableView table, NSIndexPath path);
    bool canEditRow(UITableView, NSIndexPath) { return true; }
    void commitEditingStyle(UITableView table, NSInteger style, NSIndexPath path);
    CGFloat heightForRow(UITableView, NSIndexPath);
    NSString titleForHeader(UITableView, NSInteger);
    NSString titleForFooter(UITableView, NSInteger);
    CGFloat heightForHeader(UITableView, NSInteger);
    CGFloat heightForFooter(UITableView, NSInteger);

    /// The new contact's card gets the companion's book.
    void presentSavedContact();

  private:
    QVBaseTableViewController screen() const { return objc::as<QVBaseTableViewController>(self); }
    void showSegments();
    void emptyLists();
    bool isDayEmpty() const { return dateEntry_.load()->callsOfDay() < 1; }
    /// Lets the shown list and the companion's go, so that they are read again.
    void dropLists();
    void dropDeleted(Filter filter);
    void leaveEmptyDay();
    objc::Strong<NSString> day() const;
    bool hasHeader() const;
    bool hasFooter() const;
    bool hasEdges() const;

    rows::CallListState state_;
    objc::StrongSlot<QVCallEntry> dateEntry_;
    rows::Relaxed<float> allCallsOffSetY_;
    rows::Relaxed<float> dldCallsOffSetY_;
    rows::Relaxed<float> rcdCallsOffSetY_;
    rows::Relaxed<float> msdCallsOffSetY_;
};

/// A function of a call list as a method of this screen.
template <auto function>
struct OnDateLog;
template <class R, class... Arguments, R (*function)(rows::CallList, Arguments...)>
struct OnDateLog<function> {
    static R call(DateLogScreen* self, Arguments... arguments) { return function(self->list(), arguments...); }
};
template <auto function>
inline constexpr auto onDateLog = &OnDateLog<function>::call;

}  // namespace datelog
