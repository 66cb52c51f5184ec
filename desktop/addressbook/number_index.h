// Who an address belongs to, out of any number of contacts, without looking at them all.
#pragma once

#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

#include "desktop/addressbook/contact.h"
#include "desktop/addressbook/numbers.h"

namespace contacts {

/// A contact that an address belongs to, and which of the contact's values it is.
struct Match {
    int record = 0;
    Property property = Property::phone;
    int index = 0;
    bool operator==(const Match&) const = default;
};

/// Made once for a list of contacts and a home region; never changed. Any thread.
class NumberIndex {
  public:
    NumberIndex(const std::vector<Contact>& contacts, std::string region);

    const std::string& region() const { return region_; }

    /// The same address first: of several contacts the one with the same extension, else the one with the smallest
    /// record. Else the only contact that the address loosely belongs to. Nothing for what belongs to nobody.
    std::optional<Match> match(const std::string& address) const;

  private:
    struct Entry {
        AddressKey key;
        Match match;
    };
    void add(const std::string& address, const Match& match);
    std::optional<Match> looseMatch(const AddressKey& key) const;

    std::string region_;
    std::vector<Entry> entries_;
    std::unordered_map<std::string, std::vector<std::size_t>> byText_;
    std::unordered_map<std::string, std::vector<std::size_t>> byEnd_;
};

/// Which of the values the address is, as an index would say; -1 for none.
int indexOfAddress(const std::vector<std::string>& values, const std::string& address);

}  // namespace contacts
