// The contacts in memory over those on disk, and who hears of changes.
#include "desktop/addressbook/book.h"

#include <algorithm>
#include <cstdio>
#include <ctime>
#include <mutex>

#include "desktop/files/new_file.h"
#include "desktop/files/private_files.h"
#include "desktop/notify/notify.h"
#include "desktop/quorvel/store/call_store.h"

namespace contacts {
namespace {

using quorvel::store::Error;
using quorvel::store::ErrorKind;

constexpr const char* changedByOthers = "__ABDataBaseChangedByOtherProcessNotification";

/// What was read at one moment; never changed but for the index, which is made when it is first asked for.
struct Snapshot {
    std::shared_ptr<const std::vector<Contact>> contacts = std::make_shared<const std::vector<Contact>>();
    int newestRecord = 0;
    std::vector<std::string> blocked;
    std::vector<Favourite> favourites;

    std::shared_ptr<const NumberIndex> index() const {
        const std::string region = homeRegion();
        const std::lock_guard lock(indexMutex);
        if (!made || made->region() != region) made = std::make_shared<const NumberIndex>(*contacts, region);
        return made;
    }

    mutable std::mutex indexMutex;
    mutable std::shared_ptr<const NumberIndex> made;
};

std::shared_ptr<const Snapshot> snapshotOf(Content content) {
    auto snapshot = std::make_shared<Snapshot>();
    snapshot->contacts = std::make_shared<const std::vector<Contact>>(std::move(content.contacts));
    snapshot->newestRecord = content.newestRecord;
    snapshot->blocked = std::move(content.blocked);
    snapshot->favourites = std::move(content.favourites);
    return snapshot;
}

/// Makes an empty file for its user alone, where there is none.
std::error_code makeFile(const std::filesystem::path& file) {
    auto made = files::NewFile::beside(file);
    if (const auto* error = std::get_if<std::error_code>(&made)) return *error;
    return std::get<files::NewFile>(made).publish(file, files::Existing::replaced);
}

Error notOpen() {
    return {ErrorKind::failed, "No contacts are open. Name a data directory that can be used; nothing was changed."};
}

}  // namespace

struct Book::State {
    std::mutex databaseMutex;
    std::optional<ContactDatabase> database;

    mutable std::mutex mutex;
    std::filesystem::path folder;
    std::shared_ptr<const Snapshot> snapshot = std::make_shared<const Snapshot>();
    std::vector<std::function<void()>> observers;

    std::shared_ptr<const Snapshot> now() const {
        const std::lock_guard lock(mutex);
        return snapshot;
    }
    void publish(Content content) {
        auto next = snapshotOf(std::move(content));
        const std::lock_guard lock(mutex);
        snapshot = std::move(next);
    }
    void tellObservers() {
        std::vector<std::function<void()>> all;
        {
            const std::lock_guard lock(mutex);
            all = observers;
        }
        for (const auto& observer : all) observer();
    }
    /// After the change is on disk and in memory.
    void tellEverybody() {
        if (const auto failure = notify::post(changedByOthers))
            std::fprintf(stderr, "Other programs do not hear that contacts have changed: %s\n", failure->text.c_str());
        tellObservers();
    }

    /// Carries out a change of the database, reads all of it again and tells of it.
    template <class Change>
    auto change(const Change& work) -> decltype(work(*database)) {
        auto done = [&]() -> decltype(work(*database)) {
            const std::lock_guard lock(databaseMutex);
            if (!database) return notOpen();
            auto result = work(*database);
            if (!result) return result;
            auto content = database->load();
            if (content) publish(*std::move(content));
            return result;
        }();
        if (done) tellEverybody();
        return done;
    }
};

Book::Book() : state_(std::make_unique<State>()) {}

Book& Book::shared() {
    static auto* const one = new Book();
    return *one;
}

std::optional<std::string> Book::open(const std::filesystem::path& folder) {
    close();
    if (const auto error = files::makePrivateFolders(folder))
        return "The folder " + folder.string() + " for contacts cannot be made: " + error.message() +
               ". Change the permissions, or name another data directory.";
    const std::filesystem::path file = folder / "contacts.db";
    std::optional<std::string> story;
    const std::lock_guard lock(state_->databaseMutex);
    for (bool isSecondTry = false;; isSecondTry = true) {
        auto opened = ContactDatabase::open(file);
        auto content = opened ? opened->load() : Result<Content>(opened.error());
        if (content) {
            state_->database.emplace(*std::move(opened));
            state_->publish(*std::move(content));
            const std::lock_guard inner(state_->mutex);
            state_->folder = folder;
            return story;
        }
        if (content.error().kind != ErrorKind::damaged || isSecondTry) return content.error().message;
        const std::string reason = content.error().message;
        opened = Error{};
        const auto aside = quorvel::store::CallStore::setAside(file);
        if (!aside) return aside.error().message;
        story = reason + " It was kept as " + (*aside).string() + ", and new contacts were begun.";
    }
}

void Book::close() {
    const std::lock_guard lock(state_->databaseMutex);
    state_->database.reset();
    const std::lock_guard inner(state_->mutex);
    state_->snapshot = std::make_shared<const Snapshot>();
    state_->folder.clear();
}

bool Book::isOpen() const {
    const std::lock_guard lock(state_->mutex);
    return !state_->folder.empty();
}

bool Book::isAllowed() const {
    std::filesystem::path folder;
    {
        const std::lock_guard lock(state_->mutex);
        folder = state_->folder;
    }
    std::error_code error;
    return folder.empty() || !std::filesystem::exists(folder / "denied", error);
}

std::optional<std::string> Book::setAllowed(bool allowed) {
    std::filesystem::path file;
    {
        const std::lock_guard lock(state_->mutex);
        file = state_->folder;
    }
    if (file.empty()) return notOpen().message;
    file /= "denied";
    std::error_code error;
    if (allowed)
        std::filesystem::remove(file, error);
    else
        error = makeFile(file);
    if (error)
        return "The file " + file.string() + ", which closes the contacts, cannot be " +
               (allowed ? "removed: " : "made: ") + error.message() + ". Change the permissions of its folder.";
    state_->tellEverybody();
    return std::nullopt;
}

std::shared_ptr<const std::vector<Contact>> Book::all() const { return state_->now()->contacts; }

std::optional<Contact> Book::contact(int record) const {
    const auto contacts = all();
    const auto found = std::ranges::lower_bound(*contacts, record, {}, &Contact::record);
    if (found == contacts->end() || found->record != record) return std::nullopt;
    return *found;
}

std::optional<std::string> Book::picture(int record) const {
    const std::lock_guard lock(state_->databaseMutex);
    if (!state_->database) return std::nullopt;
    auto picture = state_->database->picture(record);
    if (picture) return *std::move(picture);
    std::fprintf(stderr, "The picture of contact %d cannot be read: %s\n", record, picture.error().message.c_str());
    return std::nullopt;
}

int Book::newestRecord() const { return state_->now()->newestRecord; }

Result<std::vector<int>> Book::write(const std::vector<Contact>& written, const std::vector<int>& removed) {
    return state_->change(
        [&](ContactDatabase& database) { return database.write(written, removed, std::time(nullptr)); });
}

std::optional<Match> Book::match(std::string_view address) const {
    const auto now = state_->now();
    if (now->contacts->empty() || address.empty()) return std::nullopt;
    return now->index()->match(std::string(address));
}

bool Book::isBlocked(std::string_view address) const {
    const AddressKey key = keyOf(std::string(address));
    const auto now = state_->now();
    return std::ranges::any_of(now->blocked, [&key](const std::string& each) { return keyOf(each).isSame(key); });
}

Result<Done> Book::setBlocked(std::string_view address, bool blocked) {
    const AddressKey key = keyOf(std::string(address));
    if (key.text.empty())
        return Error{ErrorKind::badInput, "A withheld number cannot be blocked; nothing was changed."};
    return state_->change([&](ContactDatabase& database) -> Result<Done> {
        auto content = database.load();
        if (!content) return content.error();
        std::vector<std::string> list = std::move(content->blocked);
        std::erase_if(list, [&key](const std::string& each) { return keyOf(each).isSame(key); });
        if (blocked) list.emplace_back(address);
        return database.setBlocked(list);
    });
}

std::vector<Favourite> Book::favourites() const { return state_->now()->favourites; }

Result<Done> Book::setFavourite(const Favourite& favourite, bool is) {
    return state_->change([&](ContactDatabase& database) -> Result<Done> {
        auto content = database.load();
        if (!content) return content.error();
        std::vector<Favourite> list = std::move(content->favourites);
        std::erase(list, favourite);
        if (is) list.push_back(favourite);
        return database.setFavourites(list);
    });
}

void Book::observe(std::function<void()> observer) {
    const std::lock_guard lock(state_->mutex);
    state_->observers.push_back(std::move(observer));
}

void Book::refresh() {
    {
        // Whoever writes just now reads everything again and tells of it.
        const std::unique_lock lock(state_->databaseMutex, std::try_to_lock);
        if (!lock || !state_->database || !state_->database->wasChangedByOthers()) return;
        auto content = state_->database->load();
        if (!content) {
            std::fprintf(stderr, "The contacts cannot be read again: %s\n", content.error().message.c_str());
            return;
        }
        state_->publish(*std::move(content));
    }
    state_->tellObservers();
}

}  // namespace contacts
