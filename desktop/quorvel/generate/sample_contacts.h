// The contacts whom made-up calls are with, in an address book that may hold others.
#pragma once

#include <vector>

#include "desktop/addressbook/book.h"
#include "desktop/addressbook/call_links.h"
#include "desktop/quorvel/store/call.h"

namespace quorvel {

class SampleContacts {
  public:
    /// Adds those of madeUpPeople() whose address belongs to nobody, with pictures for some, and tells of the change.
    /// Contacts that are there stay as they are: whoever has such an address is whom its calls are with. Not by two
    /// programs at once, or people are added twice.
    static contacts::Result<SampleContacts> addTo(contacts::Book& book);

    /// Gives a call of generateCalls() the record, name and label that the book has for its person.
    void name(store::NewCall& call) const;

  private:
    std::vector<contacts::Caller> callers_;  // by the place among the people
};

}  // namespace quorvel
