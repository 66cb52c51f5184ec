// The system's two screens of a person: the card of a contact, and the card of a number that is nobody's yet.
#pragma once

#include "platform/addressbook.h"
#include "platform/uikit_screens.h"

/// What both screens take.
struct ABContactScreen : UIViewController {
    UIView personHeaderView() const { return objc::send<"personHeaderView", UIView>(*this); }
    /// The view above the card.
    void setPersonHeaderView(UIView view) const { objc::send<"setPersonHeaderView:">(*this, view); }
    void setDisplayedPerson(ABPerson person) const { objc::send<"setDisplayedPerson:">(*this, person); }
    /// Sending a message, sharing the card and the like.
    void setAllowsActions(bool allows) const { objc::send<"setAllowsActions:">(*this, allows); }
    void setAllowsSharing(bool allows) const { objc::send<"setAllowsSharing:">(*this, allows); }
    void setAllowsContactBlocking(bool allows) const { objc::send<"setAllowsContactBlocking:">(*this, allows); }
};

struct ABPersonViewController : ABContactScreen {
    static constexpr objc::Name className{"ABPersonViewController_Modern"};

    static objc::Strong<ABPersonViewController> makeWithStyle(NSInteger style) {
        return objc::make<ABPersonViewController, "initWithNibName:bundle:addressBook:style:">(
            objc::classNamed<className>(), objc::Object{}, objc::Object{}, objc::Object{}, style);
    }
    /// Not retained. It is asked `personViewController:shouldPerformDefaultActionForPerson:property:identifier:`.
    void setPersonViewDelegate(Object delegate) const { objc::send<"setPersonViewDelegate:">(*this, delegate); }
    void setAddressBook(ABAddressBook book) const { objc::send<"setAddressBook:">(*this, book); }
    void setAllowsEditing(bool allows) const { objc::send<"setAllowsEditing:">(*this, allows); }
    void setAllowsDeletion(bool allows) const { objc::send<"setAllowsDeletion:">(*this, allows); }
    void setAllowsAddToFavorites(bool allows) const { objc::send<"setAllowsAddToFavorites:">(*this, allows); }
    void setAllowsCancel(bool allows) const { objc::send<"setAllowsCancel:">(*this, allows); }
    void setShouldShowLinkedPeople(bool show) const { objc::send<"setShouldShowLinkedPeople:">(*this, show); }
    /// A negative identifier highlights nothing.
    void highlight(ABPropertyID property, ABMultiValueIdentifier identifier) const {
        objc::send<"setHighlightedItemForProperty:withIdentifier:">(*this, property, identifier);
    }
    /// The same in the colour of what must not be overlooked.
    void highlightImportant(ABPropertyID property, ABMultiValueIdentifier identifier) const {
        objc::send<"setHighlightedItemForProperty:withIdentifier:important:">(*this, property, identifier, true);
    }
};

struct ABUnknownPersonViewController : ABContactScreen {
    static constexpr objc::Name className{"ABUnknownPersonViewController_Modern"};

    static objc::Strong<ABUnknownPersonViewController> make() {
        return objc::make<ABUnknownPersonViewController>(objc::classNamed<className>());
    }
    /// Not retained. It is sent `unknownPersonViewController:didResolveToPerson:`, with null after a cancel.
    void setUnknownPersonViewDelegate(Object delegate) const {
        objc::send<"setUnknownPersonViewDelegate:">(*this, delegate);
    }
    /// The property that the card is about.
    void setPrimaryProperty(ABPropertyID property) const { objc::send<"setPrimaryProperty:">(*this, property); }
    void setAllowsSendingTextMessage(bool allows) const { objc::send<"setAllowsSendingTextMessage:">(*this, allows); }
    void setAllowsOnlyPhoneActions(bool only) const { objc::send<"setAllowsOnlyPhoneActions:">(*this, only); }
    /// Shown in place of the person's name.
    void setAlternateName(NSString name) const { objc::send<"setAlternateName:">(*this, name); }
    /// Shown below the name.
    void setMessage(NSString message) const { objc::send<"setMessage:">(*this, message); }
};
