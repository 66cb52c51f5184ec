// Region and language first, then the book.
#include "tools/contacts/open_contacts.h"

#include "desktop/addressbook/book.h"
#include "desktop/addressbook/names.h"
#include "desktop/addressbook/numbers.h"
#include "desktop/notify/notify.h"
#include "desktop/quorvel/settings/settings_store.h"

namespace tools {

int openContacts(Session& session) {
    quorvel::SettingsStore settings(session.directory().settings());
    if (const auto trouble = settings.load()) complain(*trouble);
    const std::string region = settings.text("region");
    contacts::setHomeRegion(region.empty() ? contacts::regionOf(contacts::localeName()) : region);
    const std::string language = settings.text("language");
    contacts::setLanguage(language.empty() ? contacts::localeName() : language);
    if (const auto failure = notify::openRendezvous(session.directory().notifications())) complain(failure->text);
    if (const auto story = contacts::Book::shared().open(session.directory().contacts())) complain(*story);
    return contacts::Book::shared().isOpen() ? succeeded : unusable;
}

}  // namespace tools
