// The card of a contact.
#include "desktop/addressbookui/person_screen.h"

#include "desktop/addressbook/book.h"
#include "desktop/addressbookui/contact_form.h"
#include "desktop/addressbookui/words.h"
#include "desktop/uikit/bar_items.h"
#include "desktop/uikit/navigation_controller.h"

namespace addressbookui {

using contacts::Book;
using contacts::Property;

void PersonScreen::define(objc::ClassDefinition<PersonScreen>& definition) {
    definition.method<"init", &PersonScreen::init>()
        .method<"initWithNibName:bundle:addressBook:style:", &PersonScreen::initWithStyle>()
        .method<"style", &PersonScreen::style>()
        .method<"personViewDelegate", &PersonScreen::personViewDelegate>()
        .method<"setPersonViewDelegate:", &PersonScreen::setPersonViewDelegate>()
        .method<"allowsEditing", &PersonScreen::allowsEditing>()
        .method<"setAllowsEditing:", &PersonScreen::setAllowsEditing>()
        .method<"allowsDeletion", &PersonScreen::allowsDeletion>()
        .method<"setAllowsDeletion:", &PersonScreen::setAllowsDeletion>()
        .method<"allowsAddToFavorites", &PersonScreen::allowsAddToFavorites>()
        .method<"setAllowsAddToFavorites:", &PersonScreen::setAllowsAddToFavorites>()
        .method<"allowsCancel", &PersonScreen::allowsCancel>()
        .method<"setAllowsCancel:", &PersonScreen::setAllowsCancel>()
        .method<"shouldShowLinkedPeople", &PersonScreen::shouldShowLinkedPeople>()
        .method<"setShouldShowLinkedPeople:", &PersonScreen::setShouldShowLinkedPeople>()
        .method<"setHighlightedItemForProperty:withIdentifier:", &PersonScreen::highlight>()
        .method<"setHighlightedItemForProperty:withIdentifier:important:", &PersonScreen::highlightImportant>()
        .method<"edit", &PersonScreen::edit>();
}

objc::Object PersonScreen::init() {
    actions_ = true;
    return CardScreen::init();
}

objc::Object PersonScreen::initWithStyle(objc::Object, objc::Object, const void* book, long style) {
    style_ = style;
    setAddressBook(book);
    return objc::send<"init", objc::Object>(object());
}

void PersonScreen::setHighlight(int property, int index, bool important) {
    highlightedProperty_ = property;
    highlightedIndex_ = index;
    important_ = important;
    if (isViewLoaded()) reload();
}

CardRow::Emphasis PersonScreen::emphasisOf(const CardValue& value) const {
    if (static_cast<int>(value.property) != highlightedProperty_ || value.index != highlightedIndex_)
        return CardRow::Emphasis::none;
    return important_ ? CardRow::Emphasis::important : CardRow::Emphasis::highlighted;
}

bool PersonScreen::mayOpen(const CardValue& value) {
    constexpr auto question =
        objc::Name{"personViewController:shouldPerformDefaultActionForPerson:property:identifier:"};
    return askDelegate(personViewDelegate(), objc::selector<question>(), value);
}

std::vector<CardSection> PersonScreen::sections() {
    auto* item = objc::peerOf<uikit::NavigationItem>(navigationItem());
    const bool canEdit = editing_ && record();
    constexpr long plain = 0;
    item->setRightBarButtonItem(canEdit
                                    ? objc::Ref<uikit::BarButtonItem>::make<"initWithTitle:style:target:action:">(
                                          uikit::nsString(say(Word::edit)), plain, object(), objc::selector<"edit">())
                                          .get()
                                    : nullptr);
    auto actions = actionRows();
    for (auto& row : favoriteRows()) actions.push_back(std::move(row));
    return {
        {{}, valueRows()}, {{}, std::move(actions)}, {say(Word::linkedContacts), linkedRows()}, {{}, blockingRows()}};
}

std::vector<CardRow> PersonScreen::favoriteRows() {
    const int record = contact().record;
    if (!actions_ || !favorites_ || record <= 0 || callersAddresses(contact()).empty()) return {};
    if (isFavourite(record))
        return {button(say(Word::removeFromFavorites), [this, record] {
            report(removeFavourites(record));
            reload();
        })};
    return {button(say(Word::addToFavorites), [this, record] {
        pickAddress(say(Word::addToFavorites), {Property::phone, Property::email},
                    [me = objc::Ref<PersonScreen>(this), record](const CardValue& value) {
                        me->report(addFavourite(record, value.address));
                        me->reload();
                    });
    })};
}

std::vector<CardRow> PersonScreen::linkedRows() {
    std::vector<CardRow> rows;
    if (!linked_ || !Book::shared().isAllowed()) return rows;
    for (const auto& each : linkedPeople(contact(), *Book::shared().all())) {
        const auto values = cardValues(each, {Property::phone, Property::email});
        const std::string more = values.empty() ? "" : " · " + values.front().text;
        rows.push_back(button(
            contacts::compositeName(each) + more, [this, record = each.record] { openLinked(record); },
            CardRow::Look::person));
    }
    return rows;
}

void PersonScreen::openLinked(int record) {
    const auto person = Book::shared().contact(record);
    auto* navigation = navigationController();
    if (!person || !navigation) return reload();
    auto card = objc::Ref<ModernPersonScreen>::make();
    const auto kept = addressbook::Record::of(*person);
    card->setDisplayedPerson(kept.self());
    card->setPersonViewDelegate(personViewDelegate());
    card->setAllowsEditing(editing_);
    card->setAllowsActions(allowsActions());
    card->setAllowsSharing(allowsSharing());
    card->setAllowsContactBlocking(allowsContactBlocking());
    card->setAllowsDeletion(deletion_);
    card->setAllowsAddToFavorites(favorites_);
    card->setAllowsCancel(cancel_);
    objc::send<"pushViewController:animated:">(navigation->object(), card->object(), true);
}

void PersonScreen::edit() {
    if (!record()) return;
    auto form = objc::Ref<ContactForm>::make();
    form->begin({ContactEdit(contact()), record(), {}, cancel_, deletion_});
    form->setFinished([me = objc::Ref<PersonScreen>(this)](ContactForm::Outcome outcome) {
        if (outcome == ContactForm::Outcome::deleted) me->deleted();
    });
    auto stack = objc::Ref<uikit::NavigationController>::make<"initWithRootViewController:">(form->object());
    objc::send<"presentViewController:animated:completion:">(object(), stack->object(), true, objc::Object{});
}

void PersonScreen::deleted() {
    auto* navigation = navigationController();
    if (navigation && navigation->topViewController() == this)
        objc::send<"popViewControllerAnimated:", objc::Object>(navigation->object(), false);
}

}  // namespace addressbookui
