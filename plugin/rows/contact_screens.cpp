// The list screen as the delegate of the cards: the way to the history, and an unknown number that becomes a contact's.
#include "plugin/rows/contact_screens.h"

#include "platform/dispatch.h"
#include "plugin/companion/settings.h"
#include "plugin/companion/utilities.h"
#include "plugin/companion/visual.h"
#include "plugin/rows/navigation_stack.h"
#include "plugin/rows/own_screens.h"
#include "plugin/rows/selection_rule.h"

namespace rows {
namespace {

Class personCard() { return objc::classNamed<ABPersonViewController::className>(); }
Class unknownPersonCard() { return objc::classNamed<ABUnknownPersonViewController::className>(); }

/// Gives the stored calls of the number to the contact and loads its picture, on the queue. Entry and contact are those
/// of the moment when it runs.
void linkStoredCalls(const CallList& list) {
    dispatch::async(dispatch::globalQueue(dispatch::Priority::Default),
                    [screen = objc::Strong(list.screen), &state = list.state] {
                        auto entry = state.selEntry.load();
                        QuorvelUtils::updateQuorvelCallsHistory(state.selContact.load(), entry->abRecID());
                        if (entry->abRecID() >= 1) QuorvelUtils::getContactImage(entry->abRecID());
                    });
}

/// Puts the card in the place that the unknown person's has on the stack.
void replaceUnknownPerson(UINavigationController navigation, NSUInteger place, ABPersonViewController card) {
    if (!card) return;
    auto controllers = navigation.viewControllers().mutableCopy();
    controllers->removeObjectAtIndex(QuorvelUtils::isPreIOS_4() ? controllers->count() - 1 : place);
    controllers->insertObject(card, place);
    navigation.setViewControllers(controllers);
}

}  // namespace

void showLogAction(CallList list, objc::Object) {
    auto history = QVLogViewController::make();
    if (!history) return;
    history->setEntry(list.state.selEntry.load());
    history->setDelegate(list.screen);
    push(list.screen, history);
}

void detailsButtonClicked(CallList list) { objc::send<"showLogAction:">(list.screen, objc::Object{}); }

bool shouldPerformDefaultAction(CallList, objc::Object, ABPerson, ABPropertyID, ABMultiValueIdentifier) { return true; }

void unknownPersonResolved(CallList list, objc::Object, ABPerson person) {
    if (!person) return;
    auto found = QuorvelUtils::getAddressBook().personWithRecordID(person.recordID());
    list.state.selContact.store(found);
    if (found) objc::send<"updateCallEntry:">(list.screen, found);
    objc::send<"saveNewContactAndPresentABPersonViewController">(list.screen);
}

void updateCallEntry(CallList list, ABPerson person) {
    auto entry = list.state.selEntry.load();
    objc::Strong<NSString> name;
    if (person) {
        entry->setAbRecID(person.recordID());
        name = person.compositeName();
    } else {
        entry->setAbRecID(noContact);
        name = QuorvelUtils::getFormattedPhoneNumber(entry->phoneNumber());
        entry->setPhoneLabel(localized<"UNKNOWN">());
    }
    if (!name) name = QuorvelUtils::getFormattedPhoneNumber(entry->phoneNumber());
    entry->setName(name);
}

void presentSavedContact(CallList list) { presentSavedContactIn(list, {}); }

void presentSavedContactIn(const CallList& list, ABAddressBook book) {
    QVSettingsDataController::sharedInstance().setIsNeedToLoadData(true);
    linkStoredCalls(list);
    auto navigation = list.screen.navigationController();
    const NSUInteger place = topmostOf(navigation.viewControllers(), unknownPersonCard());
    if (place == nowhere) return;
    const bool isPersonKnown = static_cast<bool>(list.state.selContact.load());
    if (cardOf(list.state.selEntry.load()->abRecID(), isPersonKnown) == Card::UnknownPerson) return;
    replaceUnknownPerson(navigation, place, makePersonScreen(list, Deletion::NotOffered, book));
}

void entryDeleted(CallList list, QVCallEntry entry) {
    auto isCard = [](UIViewController screen) {
        return objc::isKindOf(screen, personCard()) || objc::isKindOf(screen, unknownPersonCard());
    };
    auto card = objc::as<ABContactScreen>(firstControllerThat(list.screen.navigationController(), isCard));
    if (!card) return;
    auto header = objc::as<QVRecentsPersonPhoneHeaderView>(card.personHeaderView());
    header.setCallRecords(objc::send<"callListForSelectedCall:", NSMutableArray>(list.screen, entry));
}

}  // namespace rows
