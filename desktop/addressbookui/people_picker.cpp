// Choosing a person.
#include "desktop/addressbookui/people_picker.h"

#include "desktop/addressbook/book.h"
#include "desktop/addressbook/names.h"
#include "desktop/addressbookui/person_screen.h"
#include "desktop/addressbookui/words.h"
#include "desktop/uikit/application.h"
#include "desktop/uikit/bar_items.h"

namespace addressbookui {

using contacts::Book;
using contacts::Contact;

void PeopleList::define(objc::ClassDefinition<PeopleList>& definition) {
    definition.method<"cancel", &PeopleList::cancel>()
        .method<"tableView:numberOfRowsInSection:", &PeopleList::numberOfRows>()
        .method<"tableView:cellForRowAtIndexPath:", &PeopleList::cellForRow>()
        .method<"tableView:didSelectRowAtIndexPath:", &PeopleList::didSelectRow>()
        .method<"searchDisplayController:shouldReloadTableForSearchString:", &PeopleList::searchFor>();
}

void PeopleList::viewDidLoad() {
    setTitle(uikit::nsString(say(Word::allContacts)));
    constexpr long plain = 0;
    objc::peerOf<uikit::NavigationItem>(navigationItem())
        ->setRightBarButtonItem(objc::Ref<uikit::BarButtonItem>::make<"initWithTitle:style:target:action:">(
            uikit::nsString(say(Word::cancel)), plain, object(), objc::selector<"cancel">()));
    auto bar = objc::Ref<uikit::SearchBar>::make<"initWithFrame:">(
        uikit::Rect{{}, {uikit::screenSize().width, uikit::SearchBar::fieldRowHeight}});
    bar->setPlaceholder(uikit::nsString(say(Word::search)));
    search_ = objc::Ref<uikit::SearchDisplayController>::make<"initWithSearchBar:contentsController:">(bar->object(),
                                                                                                       object());
    search_->setDelegate(object());
    search_->setSearchResultsDataSource(object());
    search_->setSearchResultsDelegate(object());
    setSearchDisplayController(objc::Object{search_.self()});
    tableView()->setTableHeaderView(bar);
}

void PeopleList::viewWillAppear(bool) {
    everybody_.clear();
    if (Book::shared().isAllowed()) everybody_ = *Book::shared().all();
    contacts::sortByName(everybody_, contacts::NameOrder::lastName);
    tableView()->reloadData();
}

/// The list is only chosen from.
void PeopleList::setEditingAnimated(bool, bool) {}

const std::vector<Contact>& PeopleList::people(objc::Object table) {
    return table == tableView()->object() ? everybody_ : found_;
}

/// A list without anybody says so in its one row.
long PeopleList::numberOfRows(objc::Object table, long) {
    return std::max(1L, static_cast<long>(people(table).size()));
}

objc::Object PeopleList::cellForRow(objc::Object table, objc::Object path) {
    const auto identifier = uikit::nsString("Person");
    auto made = objc::send<"dequeueReusableCellWithIdentifier:", objc::Object>(table, identifier);
    if (!made)
        made = objc::autorelease(objc::make<objc::Object, "initWithStyle:reuseIdentifier:">(
            objc::classOf<uikit::TableViewCell>(), 0L, identifier));
    auto* cell = objc::peerOf<uikit::TableViewCell>(made);
    const auto& shown = people(table);
    const std::string name = shown.empty()
                                 ? say(Book::shared().isAllowed() ? Word::nobodyFound : Word::noAccess)
                                 : contacts::compositeName(shown[static_cast<std::size_t>(uikit::placeOf(path).row)]);
    cell->textLabel()->setString(name.empty() ? say(Word::noName) : name);
    cell->textLabel()->setNumberOfLines(shown.empty() ? 0 : 1);
    cell->textLabel()->setFontValue(graphics::Font::system(shown.empty() ? 13 : 17));
    cell->textLabel()->setColorValue(shown.empty() ? uikit::palette::secondaryText : uikit::Color::black());
    cell->setSelectionStyle(shown.empty() ? 0 : 3);
    return made;
}

void PeopleList::didSelectRow(objc::Object table, objc::Object path) {
    objc::send<"deselectRowAtIndexPath:animated:">(table, path, true);
    const auto row = static_cast<std::size_t>(uikit::placeOf(path).row);
    const auto& shown = people(table);
    if (row >= shown.size()) return;
    const int record = shown[row].record;
    if (search_->isActive()) search_->setActive(false);
    if (chosen_) chosen_(record);
}

bool PeopleList::searchFor(objc::Object, objc::Object text) {
    found_.clear();
    const std::string wanted = uikit::utf8(text);
    for (const auto& each : everybody_)
        if (contacts::hasWordFrom(contacts::compositeName(each), wanted)) found_.push_back(each);
    return true;
}

void PeopleList::cancel() {
    if (chosen_) chosen_(0);
}

void PeoplePicker::define(objc::ClassDefinition<PeoplePicker>& definition) {
    definition.method<"init", &PeoplePicker::init>()
        .method<"peoplePickerDelegate", &PeoplePicker::peoplePickerDelegate>()
        .method<"setPeoplePickerDelegate:", &PeoplePicker::setPeoplePickerDelegate>()
        .method<"personViewController:shouldPerformDefaultActionForPerson:property:identifier:",
                &PeoplePicker::shouldPerform>();
}

objc::Object PeoplePicker::init() {
    const auto made = objc::sendSuper<"init", objc::Object>(object(), objc::classOf<PeoplePicker>());
    auto list = objc::Ref<PeopleList>::make();
    list->setChosen(weak::whileAlive(this, [this](int record) { choose(record); }));
    pushViewControllerAnimated(list, false);
    return made;
}

void PeoplePicker::cancelled() {
    constexpr auto message = objc::Name{"peoplePickerNavigationControllerDidCancel:"};
    const auto delegate = peoplePickerDelegate();
    const bool isAnswered = !chosen_ && delegate && objc::respondsTo(delegate, objc::selector<message>());
    isClosing_ = !isAnswered;
    if (const auto chosen = chosen_) chosen(nullptr);
    if (isAnswered) return objc::send<message>(delegate, object());
    // The screen that presented the picker may have left its stack meanwhile.
    objc::send<"dismissViewControllerAnimated:completion:">(object(), true, objc::Object{});
}

void PeoplePicker::choose(int record) {
    // It can still be tapped while it leaves.
    if (isClosing_) return;
    const objc::Ref<PeoplePicker> me(this);
    if (record == 0) return cancelled();
    const auto contact = Book::shared().contact(record);
    // A person who was removed meanwhile cannot be chosen.
    if (!contact) return;
    const auto person = addressbook::Record::of(*contact);
    if (const auto chosen = chosen_) return chosen(person);
    constexpr auto question = objc::Name{"peoplePickerNavigationController:shouldContinueAfterSelectingPerson:"};
    const auto delegate = peoplePickerDelegate();
    if (!delegate) return;
    const objc::Object chosen{person.self()};
    if (objc::respondsTo(delegate, objc::selector<question>()) &&
        !objc::send<question, bool>(delegate, object(), chosen))
        return;
    auto card = objc::Ref<PersonScreen>::make();
    card->setDisplayedPerson(person.self());
    card->setAllowsActions(false);
    card->setPersonViewDelegate(object());
    pushViewControllerAnimated(card, true);
}

bool PeoplePicker::shouldPerform(objc::Object, const void* person, int property, int identifier) {
    constexpr auto question =
        objc::Name{"peoplePickerNavigationController:shouldContinueAfterSelectingPerson:property:identifier:"};
    const auto delegate = peoplePickerDelegate();
    return !delegate || !objc::respondsTo(delegate, objc::selector<question>()) ||
           objc::send<question, bool>(delegate, object(), person, property, identifier);
}

}  // namespace addressbookui
