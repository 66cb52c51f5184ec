// The screens of a person: the card of a contact, the card of a number that is nobody's, and what the list screen does
// as their delegate. Main thread.
#pragma once

#include "platform/addressbookui.h"
#include "plugin/rows/call_list.h"

namespace rows {

/// Pushes the card of the state's selContact, with the calls of its selEntry above it.
void openPerson(const CallList& list);
/// Pushes a card for the number or address of the state's selEntry, from which the user may make a contact.
void openUnknownPerson(const CallList& list);

/// Whether the card may offer to delete the contact.
enum class Deletion { Offered, NotOffered };
/// The card of the state's selContact, ready to be pushed. A book that is not null becomes the card's own.
objc::Strong<ABPersonViewController> makePersonScreen(const CallList& list, Deletion deletion, ABAddressBook book);

// What the cards and the header view above them ask for.
/// Opens the history of the entry that was opened last; `sender` is not looked at.
void showLogAction(CallList list, objc::Object sender);
/// The same, by `showLogAction:`.
void detailsButtonClicked(CallList list);
/// Always: the system calls, writes or mails as it does by itself.
bool shouldPerformDefaultAction(CallList list, objc::Object screen, ABPerson person, ABPropertyID property,
                                ABMultiValueIdentifier identifier);

/// The user made the number a contact's; after a cancel the person is null, and nothing happens.
void unknownPersonResolved(CallList list, objc::Object screen, ABPerson person);
/// Gives the entry that was opened last the person's record and name; without a person the record of nobody, and the
/// number as its name.
void updateCallEntry(CallList list, ABPerson person);
/// Has the stored calls given to the new contact, in the background, and puts its card in the place of the unknown
/// person's. Without a contact the unknown person's card stays.
void presentSavedContact(CallList list);
/// The same with a book for the card.
void presentSavedContactIn(const CallList& list, ABAddressBook book);

/// Shows the remaining calls of the entry above the lowest card on the stack, should there be one.
void entryDeleted(CallList list, QVCallEntry entry);

}  // namespace rows
