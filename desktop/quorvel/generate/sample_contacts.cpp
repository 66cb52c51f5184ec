// Cards for the made-up people.
#include "desktop/quorvel/generate/sample_contacts.h"

#include <map>

#include "desktop/addressbook/labels.h"
#include "desktop/addressbook/names.h"
#include "desktop/quorvel/generate/people.h"
#include "desktop/quorvel/generate/portrait.h"

namespace quorvel {
namespace {

using contacts::Book;
using contacts::Caller;
using contacts::Contact;
using contacts::Property;
namespace label = contacts::label;

/// The looks of those who have a picture, by first name.
const std::map<std::string_view, Look>& looks() {
    static const std::map<std::string_view, Look> all{
        {"Anna", {0x7FB7BE, 0xF2C9A5, 0x6B3E26, 0xB23A48, Hair::Long, false}},
        {"Jonas", {0xE8C07D, 0xF5D0B0, 0xC98F3C, 0x2F4B7C, Hair::Short, false}},
        {"Lucía", {0xD88C9A, 0xE0AC82, 0x241A17, 0x3C6E47, Hair::Bun, false}},
        {"Thomas", {0x9DB4C0, 0xEDC4A0, 0x8A8D91, 0x30343F, Hair::Short, true}},
        {"Sofia", {0xA3C9A8, 0xF7D9BF, 0xE3BF6A, 0x5B5F97, Hair::Long, false}},
        {"Mum ❤", {0xC3A6D8, 0xF0C8A8, 0xB9B4AE, 0x7A3B69, Hair::Bun, true}},
    };
    return all;
}

const char* labelInBook(std::string_view word) {
    if (word == "mobile") return label::mobile;
    if (word == "home") return label::home;
    return word == "work" ? label::work : label::other;
}

void addValue(Contact& contact, const char* labelOfValue, const std::string& address) {
    if (address.empty()) return;
    auto& values = contact.lists[address.find('@') == std::string::npos ? Property::phone : Property::email];
    values.push_back({static_cast<int>(values.size()), labelOfValue, address, {}});
}

Contact cardOf(const MadeUpPerson& person) {
    Contact card;
    card.setText(Property::prefix, person.prefix);
    card.setText(Property::firstName, person.firstName);
    card.setText(Property::lastName, person.lastName);
    card.setText(Property::organization, person.organization);
    card.setText(Property::birthday, person.birthday);
    addValue(card, labelInBook(person.label), person.address);
    addValue(card, label::work, person.number);
    addValue(card, label::home, person.email);
    if (const auto look = looks().find(person.firstName); look != looks().end())
        if (auto picture = portraitOf(look->second); !picture.empty()) card.picture = std::move(picture);
    return card;
}

/// As the book has the address; as the made-up person is where the book has it not.
Caller callerIn(const Book& book, const MadeUpPerson& person) {
    const auto match = book.match(person.address);
    const auto contact = match ? book.contact(match->record) : std::nullopt;
    if (!contact) return {store::noContact, nameOf(person), person.label};
    const auto& value = contact->list(match->property)[static_cast<std::size_t>(match->index)];
    return {match->record, contacts::compositeName(*contact), label::inLog(value.label)};
}

}  // namespace

contacts::Result<SampleContacts> SampleContacts::addTo(Book& book) {
    std::vector<Contact> cards;
    for (const MadeUpPerson& person : madeUpPeople())
        if (!book.match(person.address)) cards.push_back(cardOf(person));
    if (!cards.empty())
        if (const auto written = book.write(cards); !written) return written.error();
    SampleContacts samples;
    for (const MadeUpPerson& person : madeUpPeople()) samples.callers_.push_back(callerIn(book, person));
    return samples;
}

void SampleContacts::name(store::NewCall& call) const {
    const auto place = static_cast<std::size_t>(call.contactId) - 1;
    if (call.contactId < 1 || place >= callers_.size()) return;
    call.contactId = callers_[place].record;
    call.name = callers_[place].name;
    call.label = callers_[place].label;
}

}  // namespace quorvel
