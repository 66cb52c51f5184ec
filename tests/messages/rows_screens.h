// The plug-in's Recents screen in a navigation controller, among stand-ins of the contact cards; the history and the
// day that rows open are the plug-in's own.
#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/addressbookui.h"
#include "tests/messages/rows_address_book.h"
#include "tests/messages/rows_companion.h"
#include "tests/messages/rows_queues.h"

namespace rowsmessages {

using testing::ElementsAre;
using testing::IsEmpty;

class RowsMessages : public testing::Test {
  protected:
    void SetUp() override;
    void TearDown() override;

    /// Gives the screen a list; as many of its entries are rows as a page has.
    void load(const std::vector<Call>& calls);
    NSArray calls() const { return companion().calls; }
    QVCallEntry call(NSUInteger index) const { return calls().objectAtIndex<QVCallEntry>(index); }

    template <objc::Name name, class R = void, class... Arguments>
    R send(Arguments... arguments) const {
        return objc::send<name, R>(screen_.get(), arguments...);
    }
    PHRecentsViewController screen() const { return screen_; }
    UITableView table() const { return table_; }
    static NSIndexPath path(long row);
    void tap(long row) const { send<"tableView:didSelectRowAtIndexPath:">(table(), path(row)); }
    void tapDetail(long row) const { send<"tableView:accessoryButtonTappedForRowWithIndexPath:">(table(), path(row)); }
    /// The contact of a call that has none is resolved to that person.
    void resolve(ABPerson person) const { send<"unknownPersonViewController:didResolveToPerson:">(top(), person); }

    UINavigationController navigation() const { return navigation_; }
    /// Class names on the stack above the Recents screen, lowest first.
    std::vector<std::string> opened() const;
    UIViewController top() const;
    ABContactScreen card() const { return objc::as<ABContactScreen>(top()); }
    /// The addresses that were opened.
    const std::vector<std::string>& addresses() const { return addresses_; }

    /// From now on, what the cards and their header are given, one event each.
    static void traceCards();
    /// What the getter of that object answers.
    template <objc::Name getter>
    static objc::Object ask(objc::Object of) {
        return objc::send<getter, objc::Object>(of);
    }
    /// The records that a card's header shows.
    static NSArray recordsAbove(ABContactScreen card);

  private:
    objc::AutoreleasePool pool_;
    objc::Strong<PHRecentsViewController> screen_;
    objc::Strong<UINavigationController> navigation_;
    objc::Strong<UITableView> table_;
    std::vector<std::string> addresses_;
};

}  // namespace rowsmessages
