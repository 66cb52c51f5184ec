// The contacts of the process's data directory as C++ code uses them: opening, looking up, matching numbers, what is
// blocked and what is a favourite. The C interface in address_book.h stands on it.
#pragma once

#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "desktop/addressbook/contact.h"
#include "desktop/addressbook/contact_database.h"
#include "desktop/addressbook/number_index.h"

namespace contacts {

/// One for the process. Any thread; reading never waits for a change that another thread writes.
class Book {
  public:
    static Book& shared();

    /// Opens the contacts of the folder, which is made where it is missing; what was open is closed. A damaged file is
    /// set aside, never deleted, and a new one begun: then, and when it cannot be opened, a sentence says what is
    /// wrong, where, and what to do. `isOpen()` tells the two apart.
    std::optional<std::string> open(const std::filesystem::path& folder);
    void close();
    bool isOpen() const;

    /// Whether the user lets programs see the contacts; a file "denied" in the folder says no.
    bool isAllowed() const;
    /// Answers what went wrong, or nothing.
    std::optional<std::string> setAllowed(bool allowed);

    /// Every contact as it is now, in the order of the records; the same list until something changes. Pictures are
    /// not in it.
    std::shared_ptr<const std::vector<Contact>> all() const;
    std::optional<Contact> contact(int record) const;
    /// The bytes of an image file, or nothing.
    std::optional<std::string> picture(int record) const;
    /// The greatest record given so far; 0 for none.
    int newestRecord() const;

    /// Adds what has no record yet, replaces what has one and removes the named, all or nothing. Answers the records
    /// of `written` in their order, and tells this process (observe()) and the others that contacts have changed.
    Result<std::vector<int>> write(const std::vector<Contact>& written, const std::vector<int>& removed = {});

    /// The contact that an address (a number in any spelling or an e-mail address) belongs to. Nothing where it belongs
    /// to nobody, is withheld or empty, or where only a loose comparison fits more than one contact.
    std::optional<Match> match(std::string_view address) const;

    /// Numbers and addresses that may not call. Compared in whatever spelling.
    bool isBlocked(std::string_view address) const;
    Result<Done> setBlocked(std::string_view address, bool blocked);
    std::vector<Favourite> favourites() const;
    /// Adds it at the end of the list, or takes it out.
    Result<Done> setFavourite(const Favourite& favourite, bool is);

    /// Called after contacts have changed, by this process or another, on the thread that learnt of it: the writing
    /// one, or the main thread. Never removed.
    void observe(std::function<void()> observer);
    /// Looks whether another process has changed the contacts, and tells the observers if so. The notification of
    /// other processes does this by itself where the process's main loop delivers notifications.
    void refresh();

  private:
    Book();
    struct State;
    std::unique_ptr<State> state_;
};

}  // namespace contacts
