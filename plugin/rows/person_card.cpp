// Making the two cards: every flag, in the order in which the system's screens have always been given them.
#include "plugin/companion/utilities.h"
#include "plugin/companion/visual.h"
#include "plugin/rows/contact_screens.h"
#include "plugin/rows/highlight_rule.h"
#include "plugin/rows/navigation_stack.h"

namespace rows {
namespace {

constexpr NSInteger personScreenStyle = 3;

objc::Strong<QVRecentsPersonPhoneHeaderView> makeHeader(const CallList& list) {
    auto header = QVRecentsPersonPhoneHeaderView::makeWithFrame({});
    auto entry = list.state.selEntry.load();
    header->setCallRecords(objc::send<"callListForSelectedCall:", NSMutableArray>(list.screen, entry.get()));
    header->setDelegate(list.screen);
    return header;
}

/// A person with nothing but the address, which becomes what the card is about.
objc::Strong<ABPerson> personOfAddress(NSString address, ABUnknownPersonViewController card) {
    auto person = ABPerson::make();
    auto values = ABMultiValue::makeOfTexts();
    const bool isEmail = QuorvelUtils::isEmailAddress(address);
    values->add(address, isEmail ? addressbook::homeLabel() : addressbook::mobileLabel());
    const ABPropertyID property = isEmail ? kABPersonEmailProperty : kABPersonPhoneProperty;
    person->setValue(property, values);
    card.setPrimaryProperty(property);
    return person;
}

void highlightValue(ABPersonViewController card, ABPerson person, QVCallEntry entry) {
    const NSInteger number = QuorvelUtils::highlightedPhoneNumber(person, entry);
    const bool isEmail = isEmailHighlighted(number);
    const auto property = isEmail ? kABPersonEmailProperty : kABPersonPhoneProperty;
    const auto value =
        static_cast<ABMultiValueIdentifier>(isEmail ? QuorvelUtils::highlightedEmail(person, entry) : number);
    if (entry.isMissed())
        card.highlightImportant(property, value);
    else
        card.highlight(property, value);
}

}  // namespace

objc::Strong<ABPersonViewController> makePersonScreen(const CallList& list, Deletion deletion, ABAddressBook book) {
    auto header = makeHeader(list);
    auto person = list.state.selContact.load();
    auto card = ABPersonViewController::makeWithStyle(personScreenStyle);
    card->setDisplayedPerson(person);
    card->setPersonHeaderView(header);
    card->setPersonViewDelegate(list.screen);
    card->setAllowsEditing(true);
    card->setAllowsActions(true);
    if (!QuorvelUtils::isPreIOS_4()) {
        card->setAllowsSharing(true);
        card->setShouldShowLinkedPeople(true);
    }
    if (QuorvelUtils::isIOS_7_0()) {
        card->setAllowsContactBlocking(true);
        if (deletion == Deletion::Offered) card->setAllowsDeletion(true);
    }
    card->setAllowsAddToFavorites(true);
    card->setAllowsCancel(true);
    if (book) card->setAddressBook(book);
    highlightValue(card, person, list.state.selEntry.load());
    return card;
}

void openPerson(const CallList& list) { push(list.screen, makePersonScreen(list, Deletion::Offered, {})); }

void openUnknownPerson(const CallList& list) {
    auto entry = list.state.selEntry.load();
    auto number = entry->phoneNumber();
    auto header = makeHeader(list);
    auto card = ABUnknownPersonViewController::make();
    card->setPersonHeaderView(header);
    card->setUnknownPersonViewDelegate(list.screen);
    if (!QuorvelUtils::isPreIOS_4() && !QuorvelUtils::isIOS_7_0()) card->setAllowsSharing(number.length() > 0);
    auto person = personOfAddress(number, card);
    card->setDisplayedPerson(person);
    card->setAllowsSendingTextMessage(false);
    card->setAlternateName(entry->name());
    auto location = entry->location();
    card->setMessage(location ? location : localized<"UNKNOWN">());
    card->setAllowsActions(true);
    if (QuorvelUtils::isIOS_7_0()) {
        card->setAllowsContactBlocking(true);
        card->setAllowsOnlyPhoneActions(true);
    }
    push(list.screen, card);
}

}  // namespace rows
