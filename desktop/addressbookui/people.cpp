// Reading, saving and removing persons.
#include "desktop/addressbookui/people.h"

#include <algorithm>

#include "desktop/addressbook/book.h"
#include "desktop/addressbookui/words.h"
#include "desktop/graphics/image_decoding.h"

namespace addressbookui {

using contacts::Book;
using contacts::Contact;
using contacts::Property;

Contact contactOf(const void* person) {
    auto* record = addressbook::peerFrom<addressbook::Record>(person);
    if (!record) return {};
    if (record->identifier() > 0)
        if (const auto saved = Book::shared().contact(record->identifier())) record->takeSaved(*saved);
    return record->contact();
}

std::optional<std::string> savePerson(addressbook::Record& record, const Contact& contact) {
    if (!Book::shared().isAllowed()) return say(Word::noAccess);
    const auto written = Book::shared().write({contact});
    if (!written) return written.error().message;
    if (const auto saved = Book::shared().contact((*written).front())) record.revert(*saved);
    return std::nullopt;
}

std::optional<std::string> deletePerson(int record) {
    if (!Book::shared().isAllowed()) return say(Word::noAccess);
    const auto written = Book::shared().write({}, {record});
    return written ? std::nullopt : std::optional(written.error().message);
}

graphics::Image pictureOf(const Contact& contact) {
    constexpr int longestSide = 256;
    std::optional<std::string> bytes = contact.picture;
    if (!bytes && contact.record > 0) bytes = Book::shared().picture(contact.record);
    if (!bytes || bytes->empty()) return {};
    auto decoded = graphics::decodeImage(*bytes, longestSide);
    return decoded ? *decoded : graphics::Image();
}

std::vector<std::string> callersAddresses(const Contact& contact) {
    std::vector<std::string> addresses;
    for (const Property property : {Property::phone, Property::email})
        for (const auto& value : contact.list(property))
            if (!value.text.empty()) addresses.push_back(value.text);
    return addresses;
}

bool areBlocked(const std::vector<std::string>& addresses) {
    return !addresses.empty() &&
           std::ranges::all_of(addresses, [](const auto& each) { return Book::shared().isBlocked(each); });
}

std::optional<std::string> setBlocked(const std::vector<std::string>& addresses, bool blocked) {
    for (const auto& address : addresses)
        if (const auto done = Book::shared().setBlocked(address, blocked); !done) return done.error().message;
    return std::nullopt;
}

bool isFavourite(int record) {
    const auto favourites = Book::shared().favourites();
    return std::ranges::find(favourites, record, &contacts::Favourite::record) != favourites.end();
}

std::optional<std::string> addFavourite(int record, const std::string& address) {
    const auto done = Book::shared().setFavourite({record, address}, true);
    return done ? std::nullopt : std::optional(done.error().message);
}

std::optional<std::string> removeFavourites(int record) {
    for (const auto& each : Book::shared().favourites()) {
        if (each.record != record) continue;
        if (const auto done = Book::shared().setFavourite(each, false); !done) return done.error().message;
    }
    return std::nullopt;
}

}  // namespace addressbookui
