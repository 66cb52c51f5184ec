// The screen of one day over the companion of call_companion.h, on top of a Recents screen.
#pragma once

#include "tests/messages/recents_screen.h"

namespace recentsmessages {

class DayMessages : public RecentsMessages {
  protected:
    void TearDown() override;

    /// Opens the day of which the companion holds the calls, with an empty log. The day counts 4 dialled calls, 5
    /// received and 6 missed ones.
    void openDay();
    template <objc::Name name, class R = void, class... Arguments>
    R sendDay(Arguments... arguments) const {
        return objc::send<name, R>(day_.get(), arguments...);
    }
    objc::Object day() const { return day_; }
    QVCallEntry dayEntry() const { return entry_; }
    void pickOfDay(int segment);
    uikit::TableView* tableOfDay() const { return sendDay<"table", uikit::TableView*>(); }
    long rowsOfDay() const { return sendDay<"tableView:numberOfRowsInSection:", long>(tableOfDay()->object(), 0L); }
    std::string headerOfDay() const;
    std::string footerOfDay() const;
    /// The screen's list; null where it has let it go.
    objc::Strong<NSMutableArray> listOfDay() const;
    uikit::NavigationController* navigation() const;

  private:
    objc::Strong<> day_;
    objc::Strong<QVCallEntry> entry_;
};

}  // namespace recentsmessages
