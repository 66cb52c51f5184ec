// The address book's functions over objects of the test's own; its constants are the library's.
#include <map>
#include <string>

#include "desktop/uikit/text.h"
#include "tests/messages/rows_address_book.h"
#include "tests/messages/rows_companion.h"

namespace rowsmessages {
namespace {

int alive = 0;

class Person : public objc::PeerBase {
  public:
    using Super = objc::Foreign<"NSObject">;
    static constexpr objc::Name className{"RowsTestPerson"};
    static void define(objc::ClassDefinition<Person>&) {}
    ~Person() {
        if (isCreated) --alive;
    }

    bool isCreated = false;
    int record = -1;
    objc::Strong<> name;
    std::string value;
};

class Values : public objc::PeerBase {
  public:
    using Super = objc::Foreign<"NSObject">;
    static constexpr objc::Name className{"RowsTestValues"};
    static void define(objc::ClassDefinition<Values>&) {}

    std::string value;
};

std::map<int, objc::Strong<ABPerson>>& people() {
    static auto* const all = new std::map<int, objc::Strong<ABPerson>>();
    return *all;
}

template <class T>
T& peer(const void* object) {
    return *objc::peerOf<T>(static_cast<id>(const_cast<void*>(object)));
}

objc::Object textOf(const void* text) { return addressbook::handleOf<NSString>(text); }

}  // namespace

objc::Strong<ABPerson> makePersonOutsideTheBook(int record, const char* name) {
    auto made = objc::Ref<Person>::make();
    made->record = record;
    if (name) made->name = objc::Strong<>(uikit::nsString(name));
    return objc::Strong<ABPerson>(objc::as<ABPerson>(made.self()));
}

objc::Strong<ABPerson> addPerson(int record, const char* name) {
    return people()[record] = makePersonOutsideTheBook(record, name);
}

int createdPersonsAlive() { return alive; }

std::string valueOf(ABPerson person) { return peer<Person>(person.self).value; }

void registerAddressBook() { objc::registerClasses<Person, Values>(); }

void resetAddressBook() { people().clear(); }

}  // namespace rowsmessages

using rowsmessages::events;

extern "C" {

ABRecordRef ABAddressBookGetPersonWithRecordID(ABAddressBookRef book, ABRecordID record) {
    events().push_back("ABAddressBookGetPersonWithRecordID " + std::to_string(record));
    const auto found = rowsmessages::people().find(record);
    return book && found != rowsmessages::people().end() ? found->second.self() : nullptr;
}

ABRecordRef ABPersonCreate() {
    events().push_back("ABPersonCreate");
    auto made = objc::Ref<rowsmessages::Person>::make();
    made->isCreated = true;
    ++rowsmessages::alive;
    return made.takeOwner().take().self;
}

ABRecordID ABRecordGetRecordID(ABRecordRef record) { return rowsmessages::peer<rowsmessages::Person>(record).record; }

const void* ABRecordCopyCompositeName(ABRecordRef record) {
    return objc::Strong<>(rowsmessages::peer<rowsmessages::Person>(record).name).take().self;
}

bool ABRecordSetValue(ABRecordRef record, ABPropertyID property, const void* value, const void**) {
    events().push_back("ABRecordSetValue " + std::to_string(property));
    rowsmessages::peer<rowsmessages::Person>(record).value = rowsmessages::peer<rowsmessages::Values>(value).value;
    return true;
}

ABMutableMultiValueRef ABMultiValueCreateMutable(ABPropertyType type) {
    events().push_back("ABMultiValueCreateMutable " + std::to_string(type));
    return objc::Ref<rowsmessages::Values>::make().takeOwner().take().self;
}

bool ABMultiValueAddValueAndLabel(ABMutableMultiValueRef values, const void* value, const void* label,
                                  ABMultiValueIdentifier* identifier) {
    auto& into = rowsmessages::peer<rowsmessages::Values>(values).value;
    into = rowsmessages::utf8(rowsmessages::textOf(value)) + " " + rowsmessages::utf8(rowsmessages::textOf(label));
    events().push_back("ABMultiValueAddValueAndLabel " + into + (identifier ? " with an identifier" : ""));
    return true;
}
}
