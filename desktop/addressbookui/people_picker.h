// ABPeoplePickerNavigationController: everybody, with a search, to choose one.
#pragma once

#include <functional>
#include <vector>

#include "desktop/addressbook/objects.h"
#include "desktop/uikit/navigation_controller.h"
#include "desktop/uikit/search_display_controller.h"
#include "desktop/uikit/table_view_controller.h"
#include "desktop/weak/weak.h"

namespace addressbookui {

/// The list: everybody by name, or those whose name has a word that begins with what is searched for.
class PeopleList : public uikit::TableViewController {
  public:
    using Super = uikit::TableViewController;
    static constexpr objc::Name className{"ABMembersViewController"};
    static void define(objc::ClassDefinition<PeopleList>& definition);

    /// Called with the person's record, 0 for a cancel.
    void setChosen(std::function<void(int)> chosen) { chosen_ = std::move(chosen); }

    void viewDidLoad() override;
    void viewWillAppear(bool animated) override;
    void setEditingAnimated(bool editing, bool animated) override;

    // The data source and delegate of the list and of what was found.
    long numberOfRows(objc::Object table, long section);
    objc::Object cellForRow(objc::Object table, objc::Object path);
    void didSelectRow(objc::Object table, objc::Object path);
    bool searchFor(objc::Object controller, objc::Object text);

  private:
    void cancel();
    const std::vector<contacts::Contact>& people(objc::Object table);

    std::function<void(int)> chosen_;
    std::vector<contacts::Contact> everybody_;
    std::vector<contacts::Contact> found_;
    objc::Ref<uikit::SearchDisplayController> search_;
};

class PeoplePicker : public uikit::NavigationController {
  public:
    using Super = uikit::NavigationController;
    static constexpr objc::Name className{"ABPeoplePickerNavigationController"};
    static void define(objc::ClassDefinition<PeoplePicker>& definition);

    // Messages of the same names. The delegate is not retained. It is sent
    // `peoplePickerNavigationControllerDidCancel:` and asked
    // `peoplePickerNavigationController:shouldContinueAfterSelectingPerson:`: yes shows the person's card, whose values
    // then ask `peoplePickerNavigationController:shouldContinueAfterSelectingPerson:property:identifier:`.
    objc::Object init();
    objc::Strong<> peoplePickerDelegate() const { return delegate_.load(); }
    void setPeoplePickerDelegate(objc::Object delegate) { delegate_ = delegate; }
    /// In place of the delegate: called with the person, or with null after Cancel, after which the picker closes
    /// itself. It also closes itself after Cancel where the delegate is gone or does not answer the message.
    void setChosen(std::function<void(addressbook::Record*)> chosen) { chosen_ = std::move(chosen); }

  private:
    void choose(int record);
    void cancelled();
    bool shouldPerform(objc::Object screen, const void* person, int property, int identifier);

    weak::Object delegate_;
    bool isClosing_ = false;
    std::function<void(addressbook::Record*)> chosen_;
};

}  // namespace addressbookui
