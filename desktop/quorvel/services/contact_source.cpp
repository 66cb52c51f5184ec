// The address book, asked and followed.
#include "desktop/quorvel/services/contact_source.h"

#include <atomic>
#include <cstdio>
#include <mutex>

#include "desktop/addressbook/address_book.h"
#include "desktop/addressbook/book.h"
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
    const auto contact = record->contact();
    for (const auto& value : contact.list(property)) texts.push_back(value.text);
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

void followContacts() {
    if (following().isDue.exchange(true)) return;
    dispatch::async(dispatch::globalQueue(dispatch::Priority::Background), [] { linkInBackground(); });
}

}  // namespace quorvel
