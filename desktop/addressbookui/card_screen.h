// What the card of a contact and the card of a number that is nobody's have in common: header, values and actions.
#pragma once

#include <functional>

#include "desktop/addressbookui/card_cell.h"
#include "desktop/addressbookui/card_header.h"
#include "desktop/addressbookui/card_values.h"
#include "desktop/addressbookui/people.h"
#include "desktop/uikit/table_view_controller.h"

namespace addressbookui {

struct CardSection {
    std::string title;
    std::vector<CardRow> rows;
};

/// A table of sections that are made anew with each reload. Persons are ABRecordRef.
class CardScreen : public uikit::TableViewController {
  public:
    using Super = uikit::TableViewController;
    static constexpr objc::Name className{"ABContactCardViewController"};
    static void define(objc::ClassDefinition<CardScreen>& definition);

    // Messages of the same names. What is changed while the card shows is seen at once.
    objc::Object init();
    const void* displayedPerson() const { return person_.self(); }
    void setDisplayedPerson(const void* person);
    /// An NSArray of NSNumber; nil or an empty one for everything.
    objc::Object displayedProperties() const { return displayedProperties_; }
    void setDisplayedProperties(objc::Object properties);
    uikit::View* personHeaderView() const { return headerView_; }
    void setPersonHeaderView(uikit::View* view);
    /// In place of the name where the person has none of their own, else below it.
    objc::Object alternateName() const { return alternateName_; }
    void setAlternateName(objc::Object name);
    /// A line below the name. The product's word for what is not known is left out beside a name.
    objc::Object message() const { return message_; }
    void setMessage(objc::Object message);
    /// Sending messages, FaceTime, sharing and favourites.
    bool allowsActions() const { return actions_; }
    void setAllowsActions(bool allows) { set(actions_, allows); }
    bool allowsSharing() const { return sharing_; }
    void setAllowsSharing(bool allows) { set(sharing_, allows); }
    bool allowsSendingTextMessage() const { return textMessages_; }
    void setAllowsSendingTextMessage(bool allows) { set(textMessages_, allows); }
    /// Of the actions calls alone stay: telephone and FaceTime.
    bool allowsOnlyPhoneActions() const { return onlyPhone_; }
    void setAllowsOnlyPhoneActions(bool only) { set(onlyPhone_, only); }
    bool allowsContactBlocking() const { return blocking_; }
    void setAllowsContactBlocking(bool allows) { set(blocking_, allows); }
    /// Kept for the application that set it; persons are saved to the one book of the process.
    const void* addressBook() const { return book_.self(); }
    void setAddressBook(const void* book);

    void viewDidLoad() override;
    void viewWillAppear(bool animated) override;
    void viewDidLayoutSubviews() override;

    // The table's data source and delegate.
    long numberOfSections(objc::Object table);
    long numberOfRows(objc::Object table, long section);
    objc::Object titleForHeader(objc::Object table, long section);
    objc::Object cellForRow(objc::Object table, objc::Object path);
    double heightForRow(objc::Object table, objc::Object path);
    void didSelectRow(objc::Object table, objc::Object path);

  protected:
    /// The person as they are now.
    const contacts::Contact& contact() const { return contact_; }
    addressbook::Record* record() const;
    /// What stands in for the name of a person with neither a name nor an address.
    virtual std::string nobodysName() const;
    /// The product's word for a caller or a place that is not known.
    static std::string unknownText();
    virtual std::vector<CardSection> sections() { return {{{}, valueRows()}}; }
    virtual CardRow::Emphasis emphasisOf(const CardValue&) const { return CardRow::Emphasis::none; }
    /// Asks the delegate before a value is called or written to.
    virtual bool mayOpen(const CardValue&) { return true; }
    bool askDelegate(objc::Object delegate, SEL question, const CardValue& value);

    /// Reads the person again and shows what it finds.
    void reload();
    std::vector<CardRow> valueRows();
    /// Message, FaceTime and sharing, as far as they are allowed and the person can be reached.
    std::vector<CardRow> actionRows();
    /// Empty where blocking is not allowed or there is nothing to block.
    std::vector<CardRow> blockingRows();
    static CardRow button(std::string text, std::function<void()> chosen, CardRow::Look look = CardRow::Look::button);
    /// Calls back with an address of the person, after a question where there are several.
    void pickAddress(const std::string& title, const std::vector<contacts::Property>& properties,
                     std::function<void(const CardValue&)> picked);
    void report(const std::optional<std::string>& trouble);
    template <class T>
    void set(T& field, T value) {
        if (field == value) return;
        field = value;
        if (isViewLoaded()) reload();
    }

    bool actions_ = false;
    /// Whose values stand first.
    std::optional<contacts::Property> primary_;

  private:
    void open(const CardValue& value);
    void share();
    void toggleBlocking();
    void showHeader();

    objc::Ref<addressbook::Record> person_;
    contacts::Contact contact_;
    std::vector<contacts::Property> displayed_;
    objc::Strong<> displayedProperties_;
    objc::Ref<uikit::View> headerView_;
    objc::Strong<> alternateName_;
    objc::Strong<> message_;
    objc::Strong<> book_;
    bool sharing_ = false;
    bool textMessages_ = true;
    bool onlyPhone_ = false;
    bool blocking_ = false;
    objc::Ref<CardHeader> header_;
    std::vector<CardSection> sections_;
};

}  // namespace addressbookui
