// The address book's objects: books, records and multi-values.
#pragma once

#include <memory>
#include <mutex>
#include <unordered_map>
#include <vector>

#include "desktop/addressbook/address_book.h"
#include "desktop/addressbook/book.h"
#include "desktop/addressbook/values.h"

namespace addressbook {

/// Labelled values of one kind. Used by one thread at a time.
class MultiValue : public objc::PeerBase {
  public:
    using Super = objc::Foreign<"NSObject">;
    static constexpr objc::Name className{"AddressBookMultiValue"};
    static void define(objc::ClassDefinition<MultiValue>&) {}

    static objc::Ref<MultiValue> of(Kind kind, std::vector<contacts::LabelledValue> values);
    /// Whether the index is that of a value.
    bool has(long index) const { return index >= 0 && index < static_cast<long>(values.size()); }
    contacts::LabelledValue& at(long index) { return values[static_cast<std::size_t>(index)]; }
    /// An identifier that no value of it has had.
    int nextIdentifier();

    Kind kind = Kind::text;
    std::vector<contacts::LabelledValue> values;

  private:
    int next_ = 0;
};

/// A person. Any thread may read while another changes it.
class Record : public objc::PeerBase {
  public:
    using Super = objc::Foreign<"NSObject">;
    static constexpr objc::Name className{"AddressBookRecord"};
    static void define(objc::ClassDefinition<Record>&) {}

    static objc::Ref<Record> of(contacts::Contact contact);

    contacts::Contact contact() const;
    int identifier() const;
    bool isChanged() const;
    /// Changes the contact and remembers that it did.
    template <class Change>
    void change(const Change& work) {
        const std::lock_guard lock(mutex_);
        work(contact_);
        changed_ = true;
    }
    /// Takes over what is saved, unless something was changed here since.
    void takeSaved(const contacts::Contact& saved);
    /// Forgets the changes.
    void revert(const contacts::Contact& saved);

  private:
    mutable std::mutex mutex_;
    contacts::Contact contact_;
    bool changed_ = false;
};

class AddressBook : public objc::PeerBase {
  public:
    using Super = objc::Foreign<"NSObject">;
    static constexpr objc::Name className{"AddressBook"};
    static void define(objc::ClassDefinition<AddressBook>&) {}

    ~AddressBook();

    /// Null where there is no such person.
    Record* person(int record);
    objc::Ref<Record> personOf(const contacts::Contact& contact);
    bool add(Record* record);
    bool remove(Record* record);
    /// What went wrong, or nothing.
    std::optional<std::string> save();
    bool hasUnsavedChanges();
    void revert();

    struct Callback {
        ABExternalChangeCallback function;
        void* context;
        bool operator==(const Callback&) const = default;
    };
    void addCallback(const Callback& callback);
    void removeCallback(const Callback& callback);

    /// Has every book but the one that this thread is saving call back, on the main thread.
    static void tellAll();

  private:
    Record* known(const contacts::Contact& contact);

    std::mutex mutex_;
    std::unordered_map<int, objc::Ref<Record>> known_;
    std::vector<objc::Ref<Record>> added_;
    std::vector<objc::Ref<Record>> removed_;
};

inline objc::Object objectFrom(const void* reference) {
    return objc::Object{static_cast<id>(const_cast<void*>(reference))};
}
template <class Peer>
Peer* peerFrom(const void* reference) {
    return reference ? objc::peerIf<Peer>(objectFrom(reference)) : nullptr;
}
/// Gives the reference to the caller of a C function.
template <class Owner>
const void* given(Owner owner) {
    return owner.take().self;
}

}  // namespace addressbook
