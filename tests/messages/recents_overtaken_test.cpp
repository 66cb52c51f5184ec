// Results that come too late: what was asked for before a text, filter, reload or deletion is dropped, at whatever
// moment it arrives.
#include <chrono>
#include <future>
#include <thread>

#include "desktop/dispatch/main_loop.h"
#include "tests/messages/recents_screen.h"

namespace recentsmessages {
namespace {

constexpr std::chrono::seconds bound{30};

/// Called by the plug-in's own lists each time that one has been emptied, on the thread that emptied it.
std::function<void()> whenAListIsEmptied;
IMP removeAllObjects = nullptr;
void removeAllObjectsAndTell(id self, SEL selector) {
    objc::detail::typed<void (*)(id, SEL)>(removeAllObjects)(self, selector);
    if (whenAListIsEmptied) whenAListIsEmptied();
}

class RecentsOvertaken : public RecentsMessages {
  protected:
    void TearDown() override {
        whenAListIsEmptied = nullptr;
        RecentsMessages::TearDown();
    }
    /// A search of 45 calls whose first page of 20 was found, and whose rest, the calls 21 to 45, can be loaded.
    void searchAll() {
        companion().setRows(1, people(45));
        companion().setRows(4, people(45));
        companion().counts[0] = 45;
        companion().pageSize = 20;
        open();
        type("person");
        settle();
        for (const auto& call : people(45)) companion().matches.push_back(callcompanion::entryOf(call));
        static const bool once = [] {
            const auto method =
                class_getInstanceMethod(objc::classNamed<"QVSnapshotList">(), objc::selector<"removeAllObjects">());
            removeAllObjects =
                method_setImplementation(const_cast<Method>(method), objc::implementation(&removeAllObjectsAndTell));
            return true;
        }();
        ASSERT_TRUE(once);
    }
    /// Carries `work` out on this thread. A load-more that the database has been asked for before arrives in it at the
    /// worst moment: when the results have just been emptied.
    template <class Work>
    void whileALoadMoreArrives(const Work& work) {
        std::promise<void> asked;
        std::promise<void> answered;
        companion().duringSearch = [&] {
            companion().duringSearch = nullptr;
            asked.set_value();
            EXPECT_EQ(answered.get_future().wait_for(bound), std::future_status::ready);
        };
        std::thread loading([this] {
            const dispatch::AutoreleaseScope scope;
            send<"loadMoreSearchedRecords">();
        });
        EXPECT_EQ(asked.get_future().wait_for(bound), std::future_status::ready);
        bool hasArrived = false;
        whenAListIsEmptied = [&] {
            if (std::exchange(hasArrived, true)) return;
            answered.set_value();
            loading.join();
        };
        work();
        EXPECT_TRUE(hasArrived);
        whenAListIsEmptied = nullptr;
        settle();
    }
};

TEST_F(RecentsOvertaken, aLoadMoreOfTheFormerTextThatArrivesBetweenTheEmptyingAndTheSearchIsDropped) {
    searchAll();
    whileALoadMoreArrives([this] { search()->searchBar()->type("person 1003"); });
    EXPECT_THAT(found(), ElementsAre(3));
}

TEST_F(RecentsOvertaken, aLoadMoreOfTheFormerScopeThatArrivesBetweenTheEmptyingAndTheSearchIsDropped) {
    searchAll();
    companion().setRows(4, {{7, "Person Seven", "1"}});
    companion().lists[3].store(callcompanion::arrayOf({{7, "Person Seven", "1"}}));
    constexpr long missed = 3;
    whileALoadMoreArrives([this] {
        send<"searchDisplayController:shouldReloadTableForSearchScope:", bool>(
            send<"searchDisplayController", objc::Object>(), missed);
    });
    EXPECT_THAT(found(), ElementsAre(7));
    EXPECT_EQ(rows(), 2) << "the rest of the scope is offered";
}

TEST_F(RecentsOvertaken, aLoadMoreThatArrivesWhileTheSearchEndsLeavesTheListsRows) {
    searchAll();
    whileALoadMoreArrives([this] { search()->setActive(false); });
    EXPECT_EQ(rows(), 21);
    EXPECT_EQ(found().size(), 20U);
    type("person");
    settle();
    EXPECT_EQ(found().size(), 20U) << "the next search begins with nothing found";
}

TEST_F(RecentsOvertaken, aLoadMoreThatArrivesWhileAReloadEmptiesTheResultsIsDropped) {
    searchAll();
    companion().setRows(1, people(3));
    whileALoadMoreArrives([this] { send<"handleReloadDataAction">(); });
    EXPECT_EQ(found().size(), 0U);
    EXPECT_EQ(rows(), 1) << "the load-more row alone";
    send<"loadCallRecsFromDBInBackGround">();
    settle();
    EXPECT_THAT(found(), ElementsAre(1, 2, 3));
}

TEST_F(RecentsOvertaken, aLoadMoreThatArrivesWhileTheResultsAreDeletedBringsNoneOfThemBack) {
    searchAll();
    whileALoadMoreArrives([this] { send<"removeSearchedRecords">(); });
    EXPECT_EQ(found().front(), 21) << "what was not shown stays";
}

TEST_F(RecentsOvertaken, aPageThatIsReadWhileTheListsAreEmptiedIsNotShown) {
    companion().setRows(1, people(45));
    companion().pageSize = 20;
    open();
    companion().duringReading = [this] {
        companion().duringReading = nullptr;
        send<"handleReloadDataAction">();
    };
    send<"loadMoreRecordsAction">();
    EXPECT_EQ(rows(), 0) << "the load that follows the reload shows the rows";
    send<"initializeCallList">();
    EXPECT_EQ(rows(), 21) << "and nobody has paged";
}

TEST_F(RecentsOvertaken, aFirstPageThatIsReadWhileTheListsAreEmptiedIsNotShown) {
    companion().setRows(1, people(45));
    companion().pageSize = 20;
    open();
    send<"handleReloadDataAction">();
    companion().duringReading = [this] {
        companion().duringReading = nullptr;
        send<"handleReloadDataAction">();
    };
    send<"initializeCallList">();
    EXPECT_EQ(rows(), 0);
}

TEST_F(RecentsOvertaken, aPageThatIsReadWhileAnotherFilterIsPickedIsNotShownUnderIt) {
    companion().setRows(1, people(45));
    companion().setRows(4, people(7));
    companion().pageSize = 20;
    open();
    long shown = 0;
    companion().duringReading = [&] {
        companion().duringReading = nullptr;
        pick(3);
    };
    send<"loadMoreRecordsAction">();
    shown = rows();
    EXPECT_LE(shown, 8);
    settle();
    EXPECT_EQ(rows(), 7);
    pick(0);
    settle();
    EXPECT_EQ(rows(), 21) << "the page was not remembered as reached";
}

TEST_F(RecentsOvertaken, aRowSwipedAwayWhileALoadIsUnderWayStaysAway) {
    companion().setRows(1, people(45));
    companion().counts[0] = 45;
    companion().pageSize = 20;
    open();
    companion().pageSize = 30;
    companion().duringReading = [this] {
        companion().duringReading = nullptr;
        swipe(0);
    };
    send<"initializeCallList">();
    settle();
    EXPECT_THAT(found(), Not(Contains(1)));
    EXPECT_EQ(found().size(), static_cast<std::size_t>(rows() - 1)) << "a call for every row but the load-more row";
}

}  // namespace
}  // namespace recentsmessages
