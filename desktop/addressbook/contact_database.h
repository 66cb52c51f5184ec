// The contacts on disk: one SQLite file, whole after every change.
#pragma once

#include <cstdint>
#include <filesystem>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "desktop/addressbook/contact.h"
#include "desktop/quorvel/store/result.h"

namespace quorvel::store {
class Connection;
}

namespace contacts {

using quorvel::store::Done;
using quorvel::store::Result;

struct Favourite {
    int record = 0;
    std::string address;
    bool operator==(const Favourite&) const = default;
};

/// Everything but the pictures.
struct Content {
    std::vector<Contact> contacts;  ///< by record
    int newestRecord = 0;
    std::vector<std::string> blocked;
    std::vector<Favourite> favourites;  ///< in the user's order
};

/// Used by one thread at a time.
class ContactDatabase {
  public:
    /// Makes the file where it is missing. Errors: unreadable, foreign, damaged, newer, busy; then the file is as it
    /// was.
    static Result<ContactDatabase> open(const std::filesystem::path& path);

    ContactDatabase(ContactDatabase&&) noexcept;
    ContactDatabase& operator=(ContactDatabase&&) noexcept;
    ~ContactDatabase();

    Result<Content> load();
    /// Whether another connection has changed something since load().
    bool wasChangedByOthers();
    Result<std::optional<std::string>> picture(int record);

    /// Each is done whole or not at all.
    /// Adds contacts without a record, replaces the others and removes the named; answers the records of `written`.
    /// badInput where one to replace is not there any more.
    Result<std::vector<int>> write(const std::vector<Contact>& written, const std::vector<int>& removed,
                                   std::int64_t now);
    Result<Done> setBlocked(const std::vector<std::string>& blocked);
    Result<Done> setFavourites(const std::vector<Favourite>& favourites);

  private:
    explicit ContactDatabase(std::unique_ptr<quorvel::store::Connection> connection);
    int add(const Contact& contact, std::int64_t now);
    void replace(const Contact& contact, std::int64_t now);
    void remove(int record);
    void writeValues(int record, const Contact& contact);

    std::unique_ptr<quorvel::store::Connection> connection_;
    std::int64_t seenVersion_ = -1;
};

}  // namespace contacts
