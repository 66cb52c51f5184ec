// ABNewPersonViewController: the form in which a contact is made or changed.
#pragma once

#include <functional>

#include "desktop/addressbook/objects.h"
#include "desktop/addressbookui/contact_edit.h"
#include "desktop/addressbookui/form_cell.h"
#include "desktop/uikit/table_view_controller.h"
#include "desktop/weak/weak.h"

namespace addressbookui {

/// Names, numbers and e-mail addresses; what the form does not show of a contact stays. Nothing is written before Done.
class ContactForm : public uikit::TableViewController {
  public:
    using Super = uikit::TableViewController;
    static constexpr objc::Name className{"ABNewPersonViewController"};
    static void define(objc::ClassDefinition<ContactForm>& definition);

    // Messages of the same names. The person is an ABRecordRef whose values fill the form; the delegate is not
    // retained, and is sent `newPersonViewController:didCompleteWithNewPerson:` with the saved person, or with null
    // after Cancel.
    objc::Object init();
    const void* displayedPerson() const { return person_.self(); }
    void setDisplayedPerson(const void* person);
    objc::Strong<> newPersonViewDelegate() const { return delegate_.load(); }
    void setNewPersonViewDelegate(objc::Object delegate) { delegate_ = delegate; }

    // For the other contact screens.
    struct Start {
        ContactEdit edit;
        addressbook::Record* person = nullptr;  ///< what is saved into
        std::string title;
        bool allowsCancel = true;
        bool allowsDeletion = false;
    };
    void begin(Start start);
    enum class Outcome { cancelled, saved, deleted };
    /// Called once, before the delegate is told; the form then closes itself. Without it the delegate closes the form,
    /// which closes itself only where the delegate is gone or does not answer the message.
    void setFinished(std::function<void(Outcome)> finished) { finished_ = std::move(finished); }
    const ContactEdit& edit() const { return edit_; }

    void viewDidLoad() override;

    // The table's data source and delegate.
    long numberOfSections(objc::Object table);
    long numberOfRows(objc::Object table, long section);
    objc::Object cellForRow(objc::Object table, objc::Object path);
    bool canEditRow(objc::Object table, objc::Object path);
    void commitEditing(objc::Object table, long style, objc::Object path);
    void didSelectRow(objc::Object table, objc::Object path);

  private:
    std::vector<std::vector<FormRow>> rows();
    FormRow valueRow(contacts::Property property, std::size_t index);
    FormRow nameRow(contacts::Property property);
    FormRow addRow(contacts::Property property);
    void chooseLabel(contacts::Property property, std::size_t index);
    void reload();
    void updateBar();
    FormCell* cellAt(uikit::RowPlace place);
    void focusAfter(uikit::RowPlace place);
    void cancel();
    void done();
    void askToDelete();
    void finish(Outcome outcome);

    ContactEdit edit_{contacts::Contact()};
    objc::Ref<addressbook::Record> person_;
    weak::Object delegate_;
    bool allowsCancel_ = true;
    bool allowsDeletion_ = false;
    bool canSave_ = false;
    bool isClosing_ = false;
    std::function<void(Outcome)> finished_;
    std::vector<std::vector<FormRow>> rows_;
};

}  // namespace addressbookui
