// The address book, asked and followed.
#include "desktop/quorvel/services/contact_source.h"

#include <atomic>
#include <cstdio>
#include <map>
#include <mutex>
#include <tuple>

#include "desktop/addressbook/address_book.h"
#include "desktop/addressbook/book.h"
#include "desktop/addressbook/labels.h"
#include "desktop/addressbook/names.h"
#include "desktop/addressbook/objects.h"
#include "desktop/quorvel/services/contact_pictures.h"
#include "desktop/quorvel/services/data_service.h"
#include "desktop/quorvel/services/settings_service.h"
#include "platform/dispatch.h"

namespace quorvel {
namespace {

using contacts::Book;
using contacts::Property;

/// Links are made by one thread at a time, and by none once the contacts are closed.
struct Following {
    std::mutex mutex;
    bool isOpen = false;
    std::atomic<bool> isDue{false};
};
Following& following() {
    static auto* const one = new Following();
    return *one;
}

/// The companion's own book, one for each opening.
struct OneBook {
    std::mutex mutex;
    objc::Ref<addressbook::AddressBook> book;
};
OneBook& oneBook() {
    static auto* const one = new OneBook();
    return *one;
}

std::vector<std::string> valuesOf(const void* person, Property property) {
    const auto* record = addressbook::peerFrom<addressbook::Record>(person);
    std::vector<std::string> texts;
    if (!record) return texts;
    for (const auto& value : record->contact().list(property)) texts.push_back(value.text);
    return texts;
}

void linkInBackground() {
    const objc::AutoreleasePool pool;
    Following& state = following();
    const std::lock_guard lock(state.mutex);
    state.isDue = false;
    store::CallStore* calls = state.isOpen ? DataService::shared()->store() : nullptr;
    if (!calls) return;
    if (const auto trouble = linkCalls(*calls)) std::fprintf(stderr, "libQuorvel: %s\n", trouble->c_str());
    SettingsService::shared()->setIsNeedToLoadData(true);
}

/// Whom calls are to be linked to, with all the addresses that are theirs.
using Links = std::map<std::tuple<int, std::string, std::string>, std::vector<std::string>>;

void noteLink(Links& links, const store::NamedAddress& known, const std::optional<Caller>& caller) {
    const auto& book = Book::shared();
    const bool wasContact = known.contactId > 0 && known.contactId <= book.newestRecord();
    if (!caller && !wasContact) return;
    const Caller wanted = caller.value_or(Caller());
    const bool isSame = known.contactId == wanted.record && known.name == wanted.name && known.label == wanted.label;
    if (!isSame) links[{wanted.record, wanted.name, wanted.label}].push_back(known.address);
}

std::optional<std::string> write(store::CallStore& calls, const Links& links) {
    std::optional<std::string> trouble;
    for (const auto& [caller, addresses] : links) {
        const auto& [record, name, label] = caller;
        const auto linked = calls.link(addresses, record, name, label);
        if (!linked) trouble = linked.error().message;
    }
    return trouble;
}

}  // namespace

void openContacts(const std::filesystem::path& folder) {
    if (const auto story = Book::shared().open(folder)) std::fprintf(stderr, "%s\n", story->c_str());
    ContactPictures::shared().forget();
    {
        const std::lock_guard lock(oneBook().mutex);
        oneBook().book = {};
    }
    {
        const std::lock_guard lock(following().mutex);
        following().isOpen = true;
    }
    static const bool isObserved = [] {
        Book::shared().observe([] {
            ContactPictures::shared().forget();
            followContacts();
        });
        return true;
    }();
    if (isObserved && Book::shared().newestRecord() > 0) followContacts();
}

void closeContacts() {
    {
        const std::lock_guard lock(following().mutex);
        following().isOpen = false;
    }
    Book::shared().close();
}

bool canSeeContacts() { return Book::shared().isAllowed(); }

const void* sharedAddressBook() {
    if (!canSeeContacts()) return nullptr;
    OneBook& one = oneBook();
    const std::lock_guard lock(one.mutex);
    if (!one.book) one.book = objc::Ref<addressbook::AddressBook>::make();
    return one.book.self();
}

const void* personOf(int record) { return ABAddressBookGetPersonWithRecordID(sharedAddressBook(), record); }

std::vector<std::string> numbersOf(const void* person) { return valuesOf(person, Property::phone); }
std::vector<std::string> emailsOf(const void* person) { return valuesOf(person, Property::email); }

std::optional<Caller> callerOf(const std::string& address) {
    const Book& book = Book::shared();
    const auto match = canSeeContacts() ? book.match(address) : std::nullopt;
    const auto contact = match ? book.contact(match->record) : std::nullopt;
    if (!contact) return std::nullopt;
    const auto& values = contact->list(match->property);
    const auto index = static_cast<std::size_t>(match->index);
    const std::string label = index < values.size() ? values[index].label : std::string();
    return Caller{match->record, contacts::compositeName(*contact),
                  contacts::label::forPeople(label, contacts::language())};
}

std::optional<std::string> linkCalls(store::CallStore& calls) {
    if (!canSeeContacts() || !Book::shared().isOpen()) return std::nullopt;
    const auto known = calls.addresses();
    if (!known) return known.error().message;
    Links links;
    for (const auto& each : *known) noteLink(links, each, callerOf(each.address));
    return write(calls, links);
}

std::optional<std::string> linkCallsOf(store::CallStore& calls, const void* person) {
    const int record = ABRecordGetRecordID(person);
    const auto known = calls.addresses();
    if (!known) return known.error().message;
    Links links;
    for (const auto& each : *known) {
        const auto caller = callerOf(each.address);
        if (caller && caller->record == record) noteLink(links, each, caller);
    }
    return write(calls, links);
}

void followContacts() {
    if (following().isDue.exchange(true)) return;
    dispatch::async(dispatch::globalQueue(dispatch::Priority::Background), [] { linkInBackground(); });
}

}  // namespace quorvel
