// Books as objects: what was changed since the last save, and who is told of the changes of others.
#include <algorithm>

#include "desktop/addressbook/objects.h"
#include "platform/corefoundation.h"
#include "platform/dispatch.h"

namespace addressbook {
namespace {

using contacts::Book;
using contacts::Contact;

/// Who wants to hear of changes by others. A book's callbacks go with it.
struct Registrations {
    struct Each {
        const AddressBook* book;
        AddressBook::Callback callback;
        bool operator==(const Each&) const = default;
    };
    std::mutex mutex;
    std::vector<Each> all;

    bool has(const Each& each) {
        const std::lock_guard lock(mutex);
        return std::ranges::find(all, each) != all.end();
    }
};
Registrations& registrations() {
    static auto* const one = new Registrations();
    return *one;
}

/// The book that this thread is saving: what it tells of itself is no change by others.
thread_local const AddressBook* saving = nullptr;

}  // namespace

AddressBook::~AddressBook() {
    const std::lock_guard lock(registrations().mutex);
    std::erase_if(registrations().all, [this](const auto& each) { return each.book == this; });
}

Record* AddressBook::known(const Contact& contact) {
    auto& record = known_[contact.record];
    if (record)
        record->takeSaved(contact);
    else
        record = Record::of(contact);
    return record;
}

Record* AddressBook::person(int record) {
    const auto contact = Book::shared().contact(record);
    const std::lock_guard lock(mutex_);
    if (contact) return known(*contact);
    known_.erase(record);
    return nullptr;
}

objc::Ref<Record> AddressBook::personOf(const Contact& contact) {
    const std::lock_guard lock(mutex_);
    return known(contact);
}

bool AddressBook::add(Record* record) {
    const std::lock_guard lock(mutex_);
    const bool isHere = std::ranges::any_of(added_, [record](const auto& each) { return each.get() == record; });
    if (isHere || record->identifier() != kABRecordInvalidID) return false;
    added_.emplace_back(record);
    return true;
}

bool AddressBook::remove(Record* record) {
    const std::lock_guard lock(mutex_);
    const auto isThis = [record](const auto& each) { return each.get() == record; };
    if (std::erase_if(added_, isThis) > 0) return true;
    if (record->identifier() == kABRecordInvalidID || std::ranges::any_of(removed_, isThis)) return false;
    if (!Book::shared().contact(record->identifier())) return false;
    removed_.emplace_back(record);
    return true;
}

std::optional<std::string> AddressBook::save() {
    std::vector<objc::Ref<Record>> records;
    std::vector<objc::Ref<Record>> removed;
    {
        const std::lock_guard lock(mutex_);
        removed = removed_;
        records = added_;
        for (const auto& [identifier, record] : known_) {
            const bool isRemoved =
                std::ranges::any_of(removed, [&](const auto& each) { return each->identifier() == identifier; });
            if (record->isChanged() && !isRemoved) records.push_back(record);
        }
    }
    if (records.empty() && removed.empty()) return std::nullopt;
    std::vector<Contact> contacts;
    for (const auto& record : records) contacts.push_back(record->contact());
    std::vector<int> removedRecords;
    for (const auto& record : removed) removedRecords.push_back(record->identifier());
    saving = this;
    const auto written = Book::shared().write(contacts, removedRecords);
    saving = nullptr;
    if (!written) return written.error().message;
    const std::lock_guard lock(mutex_);
    for (std::size_t i = 0; i < records.size(); ++i) {
        if (const auto saved = Book::shared().contact((*written)[i])) records[i]->revert(*saved);
        known_[(*written)[i]] = records[i];
    }
    for (const int record : removedRecords) known_.erase(record);
    const auto isDone = [&](const auto& each) {
        return std::ranges::find(records, each.get(), &objc::Ref<Record>::get) != records.end();
    };
    std::erase_if(added_, isDone);
    std::erase_if(removed_, [&](const auto& each) {
        return std::ranges::find(removed, each.get(), &objc::Ref<Record>::get) != removed.end();
    });
    return std::nullopt;
}

bool AddressBook::hasUnsavedChanges() {
    const std::lock_guard lock(mutex_);
    return !added_.empty() || !removed_.empty() ||
           std::ranges::any_of(known_, [](const auto& each) { return each.second->isChanged(); });
}

void AddressBook::revert() {
    const std::lock_guard lock(mutex_);
    added_.clear();
    removed_.clear();
    for (const auto& [identifier, record] : known_)
        if (const auto saved = Book::shared().contact(identifier)) record->revert(*saved);
}

void AddressBook::addCallback(const Callback& callback) {
    const std::lock_guard lock(registrations().mutex);
    registrations().all.push_back({this, callback});
}

void AddressBook::removeCallback(const Callback& callback) {
    const std::lock_guard lock(registrations().mutex);
    std::erase(registrations().all, Registrations::Each{this, callback});
}

void AddressBook::tellAll() {
    dispatch::asyncOnMain([own = saving] {
        std::vector<Registrations::Each> all;
        {
            const std::lock_guard lock(registrations().mutex);
            all = registrations().all;
        }
        // A callback may remove others.
        for (const auto& each : all)
            if (each.book != own && registrations().has(each))
                each.callback.function(each.book->self, nullptr, each.callback.context);
    });
}

namespace {

[[gnu::constructor]] void registerAtLoad() {
    const objc::AutoreleasePool pool;
    objc::registerClasses<MultiValue, Record, AddressBook>();
    Book::shared().observe(&AddressBook::tellAll);
    darwin::observe(
        text<"__ABDataBaseChangedByOtherProcessNotification">(),
        [](void*, void*, const void*, const void*, const void*) { Book::shared().refresh(); },
        darwin::Suspension::DeliverImmediately);
}

}  // namespace
}  // namespace addressbook
