// The C interface: books, records and multi-values as programs of the handset use them.
#include "desktop/addressbook/address_book.h"

#include <gmock/gmock.h>

#include <atomic>
#include <thread>

#include "desktop/addressbook/names.h"
#include "desktop/dispatch/main_loop.h"
#include "desktop/notify/notify.h"
#include "fixture.h"
#include "platform/foundation.h"

namespace contacts::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

/// What a Create or Copy call has answered, given back at the end of the statement's block.
class Owned {
  public:
    Owned(const void* reference) : object_(objc::Strong<>::adopt(of(reference))) {}  // NOLINT: as the call answers
    operator const void*() const { return object_.self(); }
    static objc::Object of(const void* reference) {
        return objc::Object{static_cast<id>(const_cast<void*>(reference))};
    }
    objc::Object get() const { return object_.get(); }

  private:
    objc::Strong<> object_;
};

std::string textOf(const void* string) {
    const char* bytes = objc::send<"UTF8String", const char*>(Owned::of(string));
    return bytes ? bytes : "(null)";
}
const void* string(const char* text) { return NSString::stringWithUTF8String(text).self; }

class AddressBookTest : public BookTest {
  protected:
    AddressBookTest() { setLanguage("en"); }
    ~AddressBookTest() override {
        drain();
        setLanguage("");
    }
    static void drain() {
        const double deadline = dispatch::steadyNow() + 60;
        while (!dispatch::idle() && dispatch::steadyNow() < deadline) {
            dispatch::waitForWork(deadline);
            dispatch::drainMainQueue();
        }
    }
    /// A new person with that first name and number.
    static Owned newPerson(const char* name, const char* number) {
        Owned person = ABPersonCreate();
        EXPECT_TRUE(ABRecordSetValue(person, kABPersonFirstNameProperty, string(name), nullptr));
        const Owned numbers = ABMultiValueCreateMutable(kABMultiStringPropertyType);
        EXPECT_TRUE(ABMultiValueAddValueAndLabel(numbers, string(number), kABPersonPhoneMobileLabel, nullptr));
        EXPECT_TRUE(ABRecordSetValue(person, kABPersonPhoneProperty, numbers, nullptr));
        return person;
    }
    static std::string name(ABRecordRef record) { return textOf(Owned(ABRecordCopyCompositeName(record))); }
    static std::vector<std::string> names(const Owned& people) {
        std::vector<std::string> all;
        const auto list = objc::as<NSArray>(people.get());
        for (unsigned long i = 0; i < list.count(); ++i) all.push_back(name(list.objectAtIndex(i).self));
        return all;
    }
    static std::string sentence(const void* error) {
        const Owned owned(error);
        return textOf(objc::send<"localizedDescription", objc::Object>(owned.get()).self);
    }

    const objc::AutoreleasePool pool_;
    const Owned book_{ABAddressBookCreate()};
};

TEST_F(AddressBookTest, anUnknownNumberBecomesAPersonOnTheScreen) {
    const Owned person = newPerson("Anna", "+16508870260");
    EXPECT_EQ(ABRecordGetRecordID(person), kABRecordInvalidID);
    EXPECT_EQ(name(person), "Anna");
    const Owned numbers = ABRecordCopyValue(person, kABPersonPhoneProperty);
    EXPECT_EQ(ABMultiValueGetCount(numbers), 1);
    EXPECT_EQ(textOf(Owned(ABMultiValueCopyValueAtIndex(numbers, 0))), "+16508870260");
    EXPECT_EQ(textOf(Owned(ABMultiValueCopyLabelAtIndex(numbers, 0))), "_$!<Mobile>!$_");
    EXPECT_EQ(kABMultiStringPropertyType, 257U);
}

TEST_F(AddressBookTest, aPersonWithoutAnyNameHasNoCompositeName) {
    EXPECT_EQ(ABRecordCopyCompositeName(Owned(ABPersonCreate())), nullptr);
}

TEST_F(AddressBookTest, aPersonIsThereForEverybodyOnceItIsSaved) {
    const Owned other = ABAddressBookCreate();
    const Owned person = newPerson("Anna", "1");
    ASSERT_TRUE(ABAddressBookAddRecord(book_, person, nullptr));
    EXPECT_TRUE(ABAddressBookHasUnsavedChanges(book_));
    EXPECT_EQ(ABAddressBookGetPersonCount(other), 0);
    ASSERT_TRUE(ABAddressBookSave(book_, nullptr));
    EXPECT_FALSE(ABAddressBookHasUnsavedChanges(book_));
    EXPECT_EQ(ABRecordGetRecordID(person), 1);
    EXPECT_EQ(ABAddressBookGetPersonWithRecordID(book_, 1), static_cast<const void*>(person));
    EXPECT_EQ(name(ABAddressBookGetPersonWithRecordID(other, 1)), "Anna");
    EXPECT_NE(Owned(ABRecordCopyValue(person, kABPersonCreationDateProperty)).get().self, nullptr);
    ASSERT_TRUE(ABAddressBookSave(book_, nullptr));
    EXPECT_EQ(ABAddressBookGetPersonCount(book_), 1);
}

TEST_F(AddressBookTest, aPersonIsAddedOnceAndOnlyWhenNew) {
    const Owned person = newPerson("Anna", "1");
    EXPECT_TRUE(ABAddressBookAddRecord(book_, person, nullptr));
    const void* error = nullptr;
    EXPECT_FALSE(ABAddressBookAddRecord(book_, person, &error));
    EXPECT_EQ(sentence(error), "Only a new person can be added, and only once; nothing was changed.");
    ASSERT_TRUE(ABAddressBookSave(book_, nullptr));
    EXPECT_FALSE(ABAddressBookAddRecord(book_, person, nullptr));
    EXPECT_FALSE(ABAddressBookAddRecord(book_, nullptr, nullptr));
    EXPECT_FALSE(ABAddressBookAddRecord(person, person, nullptr));
}

TEST_F(AddressBookTest, changesAreOnTheScreenAtOnceAndOnDiskWhenSaved) {
    add({person("Anna", {"1"})});
    ABRecordRef anna = ABAddressBookGetPersonWithRecordID(book_, 1);
    ASSERT_TRUE(ABRecordSetValue(anna, kABPersonFirstNameProperty, string("Anne"), nullptr));
    ASSERT_TRUE(ABRecordRemoveValue(anna, kABPersonPhoneProperty, nullptr));
    EXPECT_EQ(name(ABAddressBookGetPersonWithRecordID(book_, 1)), "Anne");
    EXPECT_EQ(compositeName(*book().contact(1)), "Anna");
    ASSERT_TRUE(ABAddressBookSave(book_, nullptr));
    EXPECT_EQ(compositeName(*book().contact(1)), "Anne");
    EXPECT_THAT(book().contact(1)->lists, IsEmpty());
}

TEST_F(AddressBookTest, revertingForgetsWhatWasNotSaved) {
    add({person("Anna", {"1"})});
    ABRecordRef anna = ABAddressBookGetPersonWithRecordID(book_, 1);
    ABRecordSetValue(anna, kABPersonFirstNameProperty, string("Anne"), nullptr);
    ABAddressBookAddRecord(book_, newPerson("Ben", "2"), nullptr);
    ABAddressBookRevert(book_);
    EXPECT_FALSE(ABAddressBookHasUnsavedChanges(book_));
    EXPECT_EQ(name(anna), "Anna");
    ASSERT_TRUE(ABAddressBookSave(book_, nullptr));
    EXPECT_EQ(ABAddressBookGetPersonCount(book_), 1);
}

TEST_F(AddressBookTest, aRemovedPersonIsGoneWhenSaved) {
    add({person("Anna"), person("Ben")});
    ABRecordRef anna = ABAddressBookGetPersonWithRecordID(book_, 1);
    ASSERT_TRUE(ABAddressBookRemoveRecord(book_, anna, nullptr));
    EXPECT_FALSE(ABAddressBookRemoveRecord(book_, anna, nullptr));
    EXPECT_EQ(ABAddressBookGetPersonCount(book_), 2);
    ASSERT_TRUE(ABAddressBookSave(book_, nullptr));
    EXPECT_EQ(ABAddressBookGetPersonWithRecordID(book_, 1), nullptr);
    EXPECT_EQ(ABAddressBookGetPersonCount(book_), 1);
    const Owned unsaved = newPerson("Carl", "3");
    EXPECT_FALSE(ABAddressBookRemoveRecord(book_, unsaved, nullptr));
    ABAddressBookAddRecord(book_, unsaved, nullptr);
    EXPECT_TRUE(ABAddressBookRemoveRecord(book_, unsaved, nullptr));
    EXPECT_FALSE(ABAddressBookHasUnsavedChanges(book_));
}

TEST_F(AddressBookTest, aPersonThatWasDeletedMeanwhileCannotBeSaved) {
    add({person("Anna")});
    ABRecordRef anna = ABAddressBookGetPersonWithRecordID(book_, 1);
    ABRecordSetValue(anna, kABPersonNoteProperty, string("x"), nullptr);
    ASSERT_TRUE(book().write({}, {1}));
    const void* error = nullptr;
    EXPECT_FALSE(ABAddressBookSave(book_, &error));
    EXPECT_EQ(sentence(error),
              "The contact has been deleted by another program. Add it anew to keep it; nothing was changed.");
}

TEST_F(AddressBookTest, withoutAccessThereIsNoBook) {
    ASSERT_EQ(book().setAllowed(false), std::nullopt);
    const void* error = nullptr;
    EXPECT_EQ(ABAddressBookCreateWithOptions(nullptr, &error), nullptr);
    EXPECT_EQ(sentence(error), "Access to contacts is denied. Allow it with: quorvelctl contacts allow");
    EXPECT_EQ(ABAddressBookGetAuthorizationStatus(), kABAuthorizationStatusDenied);
    ASSERT_EQ(book().setAllowed(true), std::nullopt);
    EXPECT_EQ(ABAddressBookGetAuthorizationStatus(), kABAuthorizationStatusAuthorized);
    book().close();
    EXPECT_EQ(ABAddressBookCreate(), nullptr);
}

TEST_F(AddressBookTest, valuesOfAnotherTypeThanThePropertysAreRefused) {
    const Owned person = newPerson("Anna", "1");
    const Owned strings = ABMultiValueCreateMutable(kABMultiStringPropertyType);
    const Owned dates = ABMultiValueCreateMutable(kABMultiDateTimePropertyType);
    const void* number = NSNumber::numberWithInt(5).self;
    EXPECT_FALSE(ABRecordSetValue(person, kABPersonFirstNameProperty, number, nullptr));
    EXPECT_FALSE(ABRecordSetValue(person, kABPersonFirstNameProperty, strings, nullptr));
    EXPECT_FALSE(ABRecordSetValue(person, kABPersonPhoneProperty, dates, nullptr));
    EXPECT_FALSE(ABRecordSetValue(person, kABPersonPhoneProperty, string("1"), nullptr));
    EXPECT_FALSE(ABRecordSetValue(person, kABPersonBirthdayProperty, string("today"), nullptr));
    EXPECT_FALSE(ABRecordSetValue(person, kABPersonCreationDateProperty, nullptr, nullptr));
    const void* error = nullptr;
    EXPECT_FALSE(ABRecordSetValue(person, 999, string("x"), &error));
    EXPECT_EQ(sentence(error), "Contacts have no property of that number; nothing was changed.");
    EXPECT_FALSE(ABMultiValueAddValueAndLabel(strings, number, nullptr, nullptr));
    EXPECT_FALSE(ABMultiValueAddValueAndLabel(strings, nullptr, nullptr, nullptr));
    EXPECT_EQ(name(person), "Anna");
}

TEST_F(AddressBookTest, nothingIsDoneToNull) {
    EXPECT_EQ(ABRecordGetRecordID(nullptr), kABRecordInvalidID);
    EXPECT_EQ(ABRecordCopyValue(nullptr, kABPersonPhoneProperty), nullptr);
    EXPECT_EQ(ABRecordCopyCompositeName(nullptr), nullptr);
    EXPECT_FALSE(ABRecordSetValue(nullptr, kABPersonPhoneProperty, nullptr, nullptr));
    EXPECT_EQ(ABAddressBookGetPersonWithRecordID(nullptr, 1), nullptr);
    EXPECT_EQ(ABAddressBookGetPersonCount(nullptr), 0);
    EXPECT_EQ(ABAddressBookCopyArrayOfAllPeople(nullptr), nullptr);
    EXPECT_FALSE(ABAddressBookSave(nullptr, nullptr));
    EXPECT_EQ(ABMultiValueGetCount(nullptr), 0);
    EXPECT_EQ(ABMultiValueCopyValueAtIndex(nullptr, 0), nullptr);
    EXPECT_FALSE(ABPersonHasImageData(nullptr));
    EXPECT_EQ(ABMultiValueCreateMutable(kABStringPropertyType), nullptr);
}

TEST_F(AddressBookTest, valuesKeepTheirIdentifiersThroughEveryChange) {
    const Owned values = ABMultiValueCreateMutable(kABMultiStringPropertyType);
    ABMultiValueIdentifier identifier = 7;
    ABMultiValueAddValueAndLabel(values, string("a"), kABHomeLabel, &identifier);
    EXPECT_EQ(identifier, 0);
    ABMultiValueAddValueAndLabel(values, string("b"), nullptr, &identifier);
    EXPECT_EQ(identifier, 1);
    ABMultiValueInsertValueAndLabelAtIndex(values, string("first"), nullptr, 0, &identifier);
    EXPECT_EQ(identifier, 2);
    EXPECT_EQ(ABMultiValueGetIndexForIdentifier(values, 1), 2);
    EXPECT_TRUE(ABMultiValueRemoveValueAndLabelAtIndex(values, 0));
    ABMultiValueAddValueAndLabel(values, string("c"), nullptr, &identifier);
    EXPECT_GT(identifier, 2);
    EXPECT_TRUE(ABMultiValueReplaceValueAtIndex(values, string("A"), 0));
    EXPECT_TRUE(ABMultiValueReplaceLabelAtIndex(values, string("Boot"), 0));
    EXPECT_EQ(ABMultiValueGetIdentifierAtIndex(values, 0), 0);
    EXPECT_EQ(textOf(Owned(ABMultiValueCopyLabelAtIndex(values, 0))), "Boot");
    EXPECT_EQ(ABMultiValueCopyLabelAtIndex(values, 1), nullptr);
    EXPECT_EQ(ABMultiValueGetFirstIndexOfValue(values, string("b")), 1);
    EXPECT_EQ(ABMultiValueGetFirstIndexOfValue(values, string("z")), -1);
    EXPECT_EQ(ABMultiValueGetIdentifierAtIndex(values, 3), kABMultiValueInvalidIdentifier);
    EXPECT_FALSE(ABMultiValueRemoveValueAndLabelAtIndex(values, -1));
    EXPECT_EQ(objc::as<NSArray>(Owned(ABMultiValueCopyArrayOfAllValues(values)).get()).count(), 3U);
    const Owned copy = ABMultiValueCreateMutableCopy(values);
    ABMultiValueRemoveValueAndLabelAtIndex(copy, 0);
    EXPECT_EQ(ABMultiValueGetCount(values), 3);
}

TEST_F(AddressBookTest, daysAreDatesAndAddressesDictionaries) {
    Contact contact = person("Anna");
    contact.setText(Property::birthday, "2000-02-29");
    contact.lists[Property::address] = {{0, "", "", {{"City", "Köln"}}}};
    Contact ageless = person("Ben");
    ageless.setText(Property::birthday, "--12-31");
    add({contact, ageless});
    const auto seconds = [&](ABRecordID record) {
        ABRecordRef found = ABAddressBookGetPersonWithRecordID(book_, record);
        return objc::send<"timeIntervalSince1970", double>(
            Owned(ABRecordCopyValue(found, kABPersonBirthdayProperty)).get());
    };
    EXPECT_EQ(seconds(1), 951825600);
    EXPECT_EQ(seconds(2), -11518286400);
    ABRecordRef anna = ABAddressBookGetPersonWithRecordID(book_, 1);
    const Owned addresses = ABRecordCopyValue(anna, kABPersonAddressProperty);
    EXPECT_EQ(ABMultiValueGetPropertyType(addresses), kABDictionaryPropertyType);
    const Owned first = ABMultiValueCopyValueAtIndex(addresses, 0);
    EXPECT_EQ(textOf(objc::send<"objectForKey:", objc::Object>(first.get(), Owned::of(kABPersonAddressCityKey)).self),
              "Köln");
    const Owned date = ABRecordCopyValue(ABAddressBookGetPersonWithRecordID(book_, 2), kABPersonBirthdayProperty);
    ASSERT_TRUE(ABRecordSetValue(anna, kABPersonBirthdayProperty, date, nullptr));
    ABMultiValueAddValueAndLabel(addresses, first, kABWorkLabel, nullptr);
    ASSERT_TRUE(ABRecordSetValue(anna, kABPersonAddressProperty, addresses, nullptr));
    ASSERT_TRUE(ABAddressBookSave(book_, nullptr));
    EXPECT_EQ(book().contact(1)->text(Property::birthday), "--12-31");
    EXPECT_EQ(book().contact(1)->list(Property::address)[1],
              (LabelledValue{1, "_$!<Work>!$_", "", {{"City", "Köln"}}}));
}

TEST_F(AddressBookTest, typesOfPropertiesAreThoseOfTheirValues) {
    EXPECT_EQ(ABPersonGetTypeOfProperty(kABPersonFirstNameProperty), kABStringPropertyType);
    EXPECT_EQ(ABPersonGetTypeOfProperty(kABPersonPhoneProperty), kABMultiStringPropertyType);
    EXPECT_EQ(ABPersonGetTypeOfProperty(kABPersonBirthdayProperty), kABDateTimePropertyType);
    EXPECT_EQ(ABPersonGetTypeOfProperty(kABPersonDateProperty), kABMultiDateTimePropertyType);
    EXPECT_EQ(ABPersonGetTypeOfProperty(kABPersonAddressProperty), kABMultiDictionaryPropertyType);
    EXPECT_EQ(ABPersonGetTypeOfProperty(999), kABInvalidPropertyType);
}

TEST_F(AddressBookTest, picturesAreSetSavedAndRemoved) {
    const Owned person = newPerson("Anna", "1");
    const auto data = [](const std::string& bytes) {
        return objc::sendClass<"NSData", "dataWithBytes:length:", objc::Object>(
                   static_cast<const void*>(bytes.data()), static_cast<unsigned long>(bytes.size()))
            .self;
    };
    EXPECT_FALSE(ABPersonHasImageData(person));
    EXPECT_FALSE(ABPersonSetImageData(person, data("GIF89a"), nullptr));
    EXPECT_FALSE(ABPersonSetImageData(person, string("x"), nullptr));
    ASSERT_TRUE(ABPersonSetImageData(person, data("\xFF\xD8\xFF..."), nullptr));
    EXPECT_TRUE(ABPersonHasImageData(person));
    ABAddressBookAddRecord(book_, person, nullptr);
    ASSERT_TRUE(ABAddressBookSave(book_, nullptr));
    EXPECT_EQ(book().picture(1), "\xFF\xD8\xFF...");
    EXPECT_TRUE(ABPersonHasImageData(person));
    EXPECT_EQ((objc::send<"length", unsigned long>(Owned(ABPersonCopyImageData(person)).get())), 6U);
    ASSERT_TRUE(ABPersonRemoveImageData(person, nullptr));
    EXPECT_FALSE(ABPersonHasImageData(person));
    ASSERT_TRUE(ABAddressBookSave(book_, nullptr));
    EXPECT_EQ(book().picture(1), std::nullopt);
}

TEST_F(AddressBookTest, peopleAreSortedAndFoundAsTheLanguageDoes) {
    Contact zoe = person("Zoë");
    zoe.setText(Property::lastName, "Ahrens");
    Contact emil = person("Emil");
    emil.setText(Property::lastName, "Äckerle");
    Contact firm;
    firm.setText(Property::organization, "Zoo");
    add({firm, zoe, emil, person("Bob")});
    EXPECT_THAT(names(ABAddressBookCopyArrayOfAllPeople(book_)),
                ElementsAre("Emil Äckerle", "Zoë Ahrens", "Bob", "Zoo"));
    EXPECT_THAT(names(ABAddressBookCopyPeopleWithName(book_, string("ZO"))), ElementsAre("Zoë Ahrens", "Zoo"));
    EXPECT_THAT(names(ABAddressBookCopyPeopleWithName(book_, string("ack"))), ElementsAre("Emil Äckerle"));
    EXPECT_THAT(names(ABAddressBookCopyPeopleWithName(book_, string("oe"))), IsEmpty());
    EXPECT_THAT(names(ABAddressBookCopyPeopleWithName(book_, string(""))), IsEmpty());
    ABRecordRef first = ABAddressBookGetPersonWithRecordID(book_, 2);
    ABRecordRef second = ABAddressBookGetPersonWithRecordID(book_, 3);
    EXPECT_EQ(ABPersonComparePeopleByName(first, second, kABPersonSortByLastName), 1);
    EXPECT_EQ(ABPersonComparePeopleByName(second, first, kABPersonSortByFirstName), -1);
    EXPECT_EQ(ABPersonComparePeopleByName(first, first, kABPersonSortByLastName), 0);
}

TEST_F(AddressBookTest, labelsAndPropertiesHaveWordsInTheUsersLanguage) {
    EXPECT_EQ(textOf(Owned(ABAddressBookCopyLocalizedLabel(kABPersonPhoneMobileLabel))), "mobile");
    EXPECT_EQ(textOf(Owned(ABPersonCopyLocalizedPropertyName(kABPersonPhoneProperty))), "Phone");
    setLanguage("de_AT");
    EXPECT_EQ(textOf(Owned(ABAddressBookCopyLocalizedLabel(kABWorkLabel))), "Arbeit");
    EXPECT_EQ(textOf(Owned(ABAddressBookCopyLocalizedLabel(string("Boot")))), "Boot");
    EXPECT_EQ(textOf(Owned(ABAddressBookCopyLocalizedLabel(string("_$!<AssistantPhone>!$_")))), "assistantphone");
    setLanguage("fi");
    EXPECT_EQ(textOf(Owned(ABAddressBookCopyLocalizedLabel(kABHomeLabel))), "home");
}

TEST_F(AddressBookTest, peopleTravelAsVCards) {
    Contact contact = person("Anna", {"+16508870260"});
    contact.picture = "\xFF\xD8\xFF...";
    add({contact, person("Ben")});
    const Owned cards = ABPersonCreateVCardRepresentationWithPeople(Owned(ABAddressBookCopyArrayOfAllPeople(book_)));
    const Owned people = ABPersonCreatePeopleInSourceWithVCardRepresentation(nullptr, cards);
    EXPECT_THAT(names(people), ElementsAre("Anna", "Ben"));
    const auto first = objc::as<NSArray>(people.get()).objectAtIndex(0);
    EXPECT_EQ(ABRecordGetRecordID(first.self), kABRecordInvalidID);
    EXPECT_TRUE(ABPersonHasImageData(first.self));
    EXPECT_TRUE(ABAddressBookAddRecord(book_, first.self, nullptr));
}

TEST_F(AddressBookTest, changesByOthersAreToldOnTheMainThreadAndOwnOnesAreNot) {
    static int heard = 0;
    static const auto callback = [](ABAddressBookRef, const void*, void* context) {
        heard += *static_cast<int*>(context);
    };
    int one = 1;
    ABAddressBookRegisterExternalChangeCallback(book_, callback, &one);
    ABAddressBookAddRecord(book_, newPerson("Anna", "1"), nullptr);
    ASSERT_TRUE(ABAddressBookSave(book_, nullptr));
    drain();
    EXPECT_EQ(heard, 0);
    add({person("Ben")});
    EXPECT_EQ(heard, 0);
    drain();
    EXPECT_EQ(std::exchange(heard, 0), 1);
    ABAddressBookUnregisterExternalChangeCallback(book_, callback, &one);
    add({person("Carl")});
    drain();
    EXPECT_EQ(heard, 0);
}

TEST_F(AddressBookTest, anotherProcessesChangeArrivesByItsNotification) {
    add({person("Anna")});
    notify::deliverPending();
    ABRecordRef anna = ABAddressBookGetPersonWithRecordID(book_, 1);
    auto other = ContactDatabase::open(file());
    Contact renamed = person("Anne");
    renamed.record = 1;
    ASSERT_TRUE(other->write({renamed, person("Ben")}, {}, 1));
    EXPECT_EQ(ABAddressBookGetPersonCount(book_), 1);
    EXPECT_EQ(notify::post("__ABDataBaseChangedByOtherProcessNotification"), std::nullopt);
    notify::deliverPending();
    EXPECT_EQ(ABAddressBookGetPersonCount(book_), 2);
    EXPECT_EQ(ABAddressBookGetPersonWithRecordID(book_, 1), anna);
    EXPECT_EQ(name(anna), "Anne");
}

TEST_F(AddressBookTest, booksOfSeveralThreadsSaveBesideEachOther) {
    std::atomic<int> failures{0};
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i) {
        threads.emplace_back([&failures, i] {
            const dispatch::AutoreleaseScope scope;
            const Owned own = ABAddressBookCreate();
            for (int k = 0; k < 5; ++k) {
                const objc::AutoreleasePool pool;
                const Owned person = newPerson(("P" + std::to_string(i)).c_str(), "1");
                if (!ABAddressBookAddRecord(own, person, nullptr) || !ABAddressBookSave(own, nullptr)) ++failures;
                if (name(ABAddressBookGetPersonWithRecordID(own, ABRecordGetRecordID(person))) !=
                    "P" + std::to_string(i))
                    ++failures;
            }
        });
    }
    for (auto& thread : threads) thread.join();
    EXPECT_EQ(failures, 0);
    EXPECT_EQ(ABAddressBookGetPersonCount(book_), 20);
}

}  // namespace
}  // namespace contacts::test
