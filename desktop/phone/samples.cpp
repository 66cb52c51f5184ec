// Made-up calls and contacts.
#include "desktop/phone/samples.h"

#include <map>
#include <string_view>
#include <vector>

#include "desktop/addressbook/book.h"
#include "desktop/addressbook/labels.h"
#include "desktop/quorvel/generate/generate.h"
#include "desktop/quorvel/store/import_session.h"

namespace phone {
namespace {

using contacts::Contact;
using contacts::Property;

constexpr std::int64_t minutesBefore = 20 * 60;

Contact contactOf(const quorvel::MadeUpPerson& person) {
    static const std::map<std::string_view, const char*> labels{{"mobile", contacts::label::mobile},
                                                                {"home", contacts::label::home},
                                                                {"work", contacts::label::work},
                                                                {"other", contacts::label::other}};
    Contact contact;
    contact.setText(Property::prefix, person.prefix);
    contact.setText(Property::firstName, person.firstName);
    contact.setText(Property::lastName, person.lastName);
    const bool isMail = std::string_view(person.address).find('@') != std::string_view::npos;
    contact.lists[isMail ? Property::email : Property::phone] = {{0, labels.at(person.label), person.address, {}}};
    return contact;
}

}  // namespace

std::optional<std::string> fillWithSamples(quorvel::store::CallStore& log, std::int64_t now) {
    auto& book = contacts::Book::shared();
    if (!book.isOpen() || !book.all()->empty()) return std::nullopt;
    std::vector<Contact> people;
    for (const auto& person : quorvel::madeUpPeople()) people.push_back(contactOf(person));
    const auto records = book.write(people);
    if (!records) return records.error().message;
    auto session = log.beginImport();
    if (!session) return session.error().message;
    std::string trouble;
    quorvel::generateCalls({.calls = 400, .seed = 7, .until = now - minutesBefore}, [&](quorvel::store::NewCall call) {
        if (call.contactId > 0) call.contactId = (*records)[static_cast<std::size_t>(call.contactId) - 1];
        const auto added = (*session).add(call);
        if (!added) trouble = added.error().message;
        return trouble.empty();
    });
    if (!trouble.empty()) return trouble;
    const auto finished = (*session).finish();
    return finished ? std::nullopt : std::optional(finished.error().message);
}

}  // namespace phone
