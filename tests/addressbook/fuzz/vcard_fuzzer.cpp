// The reader of vCards on arbitrary bytes: it ends, stays within its bounds, and what it gives can be written and read
// again without a further change.
#include <cstdint>
#include <cstdlib>
#include <sstream>
#include <string>
#include <vector>

#include "desktop/addressbook/contact_vcard.h"
#include "desktop/addressbook/vcard_reader.h"
#include "desktop/addressbook/vcard_writer.h"

namespace {

std::vector<vcard::Card> read(const std::string& bytes) {
    std::istringstream stream(bytes);
    vcard::ReadOptions options;
    options.longestProperty = 1 << 16;
    options.longestCard = 1 << 18;
    vcard::Reader reader(
        stream, [](const vcard::Problem&) {}, options);
    std::vector<vcard::Card> cards;
    while (auto card = reader.next()) cards.push_back(*std::move(card));
    return cards;
}

void expect(bool holds) {
    if (!holds) std::abort();
}

contacts::Contact throughCard(const contacts::Contact& contact) {
    const auto cards = read(vcard::write(contacts::cardOf(contact), vcard::Version::v30));
    expect(cards.size() == 1);
    return contacts::contactOf(cards.front());
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    for (const vcard::Card& card : read(std::string(reinterpret_cast<const char*>(data), size))) {
        for (const auto version : {vcard::Version::v21, vcard::Version::v30, vcard::Version::v40}) {
            const auto again = read(vcard::write(card, version));
            expect(again.size() == 1);
            expect(again.front().version == version);
        }
        // Once through a card of our own, nothing about a contact changes any more.
        const contacts::Contact contact = throughCard(contacts::contactOf(card));
        expect(throughCard(contact) == contact);
    }
    return 0;
}
