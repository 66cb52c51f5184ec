// An address book of the test's own: its functions stand before the library's, and write down what they are asked.
#pragma once

#include "platform/addressbook.h"

namespace rowsmessages {

/// A person with that record and composite name (null: none), in the book from then on unless it is hidden.
objc::Strong<ABPerson> addPerson(int record, const char* name);
/// A person that the book does not find again.
objc::Strong<ABPerson> makePersonOutsideTheBook(int record, const char* name);
/// How many persons that ABPersonCreate made are alive.
int createdPersonsAlive();
/// The value and its label that a person was given, as "+4930100 _$!<Mobile>!$_".
std::string valueOf(ABPerson person);

void registerAddressBook();
void resetAddressBook();

}  // namespace rowsmessages
