// The common part of cards: what is set, and the table.
#include "desktop/addressbookui/card_screen.h"

#include "desktop/addressbook/numbers.h"
#include "desktop/addressbookui/words.h"
#include "desktop/quorvel/visual/contact_picture.h"
#include "desktop/quorvel/visual/sources.h"
#include "desktop/uikit/application.h"

namespace addressbookui {

using contacts::Property;

void CardScreen::define(objc::ClassDefinition<CardScreen>& definition) {
    definition.method<"init", &CardScreen::init>()
        .method<"displayedPerson", &CardScreen::displayedPerson>()
        .method<"setDisplayedPerson:", &CardScreen::setDisplayedPerson>()
        .method<"displayedProperties", &CardScreen::displayedProperties>()
        .method<"setDisplayedProperties:", &CardScreen::setDisplayedProperties>()
        .method<"personHeaderView", &CardScreen::personHeaderView>()
        .method<"setPersonHeaderView:", &CardScreen::setPersonHeaderView>()
        .method<"alternateName", &CardScreen::alternateName>()
        .method<"setAlternateName:", &CardScreen::setAlternateName>()
        .method<"message", &CardScreen::message>()
        .method<"setMessage:", &CardScreen::setMessage>()
        .method<"addressBook", &CardScreen::addressBook>()
        .method<"setAddressBook:", &CardScreen::setAddressBook>();
    definition.method<"allowsActions", &CardScreen::allowsActions>()
        .method<"setAllowsActions:", &CardScreen::setAllowsActions>()
        .method<"allowsSharing", &CardScreen::allowsSharing>()
        .method<"setAllowsSharing:", &CardScreen::setAllowsSharing>()
        .method<"allowsSendingTextMessage", &CardScreen::allowsSendingTextMessage>()
        .method<"setAllowsSendingTextMessage:", &CardScreen::setAllowsSendingTextMessage>()
        .method<"allowsOnlyPhoneActions", &CardScreen::allowsOnlyPhoneActions>()
        .method<"setAllowsOnlyPhoneActions:", &CardScreen::setAllowsOnlyPhoneActions>()
        .method<"allowsContactBlocking", &CardScreen::allowsContactBlocking>()
        .method<"setAllowsContactBlocking:", &CardScreen::setAllowsContactBlocking>();
    definition.method<"numberOfSectionsInTableView:", &CardScreen::numberOfSections>()
        .method<"tableView:numberOfRowsInSection:", &CardScreen::numberOfRows>()
        .method<"tableView:titleForHeaderInSection:", &CardScreen::titleForHeader>()
        .method<"tableView:cellForRowAtIndexPath:", &CardScreen::cellForRow>()
        .method<"tableView:heightForRowAtIndexPath:", &CardScreen::heightForRow>()
        .method<"tableView:didSelectRowAtIndexPath:", &CardScreen::didSelectRow>();
}

objc::Object CardScreen::init() {
    setTableStyle(uikit::TableView::grouped);
    return objc::sendSuper<"init", objc::Object>(object(), objc::classOf<CardScreen>());
}

addressbook::Record* CardScreen::record() const { return person_; }

void CardScreen::setDisplayedPerson(const void* person) {
    person_ = objc::Ref<addressbook::Record>(addressbook::peerFrom<addressbook::Record>(person));
    contact_ = contactOf(person);
    if (isViewLoaded()) reload();
}

void CardScreen::setDisplayedProperties(objc::Object properties) {
    displayedProperties_ = objc::Strong<>(properties);
    displayed_.clear();
    const auto count = objc::send<"count", unsigned long>(properties);
    for (unsigned long i = 0; i < count; ++i) {
        const auto number = objc::send<"objectAtIndex:", objc::Object>(properties, i);
        displayed_.push_back(static_cast<Property>(objc::send<"intValue", int>(number)));
    }
    if (isViewLoaded()) reload();
}

void CardScreen::setPersonHeaderView(uikit::View* view) {
    headerView_ = objc::Ref<uikit::View>(view);
    if (isViewLoaded()) showHeader();
}

void CardScreen::setAlternateName(objc::Object name) {
    alternateName_ = objc::Strong<>(name);
    if (isViewLoaded()) showHeader();
}

void CardScreen::setMessage(objc::Object message) {
    message_ = objc::Strong<>(message);
    if (isViewLoaded()) showHeader();
}

void CardScreen::setAddressBook(const void* book) { book_ = objc::Strong<>(addressbook::objectFrom(book)); }

void CardScreen::viewDidLoad() {
    header_ = objc::Ref<CardHeader>::make<"initWithFrame:">(uikit::Rect{{}, {uikit::screenSize().width, 0}});
    reload();
}

void CardScreen::viewWillAppear(bool) { reload(); }

/// The view that was added may have grown or shrunk by itself.
void CardScreen::viewDidLayoutSubviews() {
    if (header_ && header_->fit(tableView()->bounds().size.width)) tableView()->setTableHeaderView(header_);
}

void CardScreen::reload() {
    contact_ = contactOf(person_.self());
    sections_ = sections();
    std::erase_if(sections_, [](const auto& section) { return section.rows.empty(); });
    showHeader();
    tableView()->reloadData();
}

std::string CardScreen::unknownText() { return quorvel::sources().text("UNKNOWN"); }

std::string CardScreen::nobodysName() const { return say(Word::noName); }

void CardScreen::showHeader() {
    CardHeader::Content content;
    content.picture = pictureOf(contact_);
    const std::string alternate = uikit::utf8(alternateName_);
    const std::string own = ownName(contact_);
    const auto addresses = callersAddresses(contact_);
    content.tone = quorvel::pictureTone(contact_.record, addresses.empty() ? std::string() : addresses.front());
    const bool hasName = !own.empty() || !alternate.empty();
    const bool isSomebody = hasName || !addresses.empty();
    content.name = !own.empty()         ? own
                   : !alternate.empty() ? alternate
                   : !addresses.empty() ? contacts::formattedNumber(addresses.front())
                                        : nobodysName();
    if (isSomebody) content.initials = quorvel::initialsOf(content.name);
    if (!own.empty() && !alternate.empty() && alternate != own) content.lines.push_back(alternate);
    const std::string& job = contact_.text(Property::jobTitle);
    const std::string& company = contact_.text(Property::organization);
    if (!job.empty()) content.lines.push_back(job);
    if (!company.empty() && company != content.name) content.lines.push_back(company);
    // Of somebody with a name, "unknown" says nothing; of nobody, it stands in place of the name already.
    const std::string message = uikit::utf8(message_);
    const bool saysNothing = message == unknownText() && (hasName || !isSomebody);
    if (!message.empty() && !saysNothing) content.lines.push_back(message);
    header_->setContent(std::move(content));
    header_->setAddedView(headerView_);
    header_->fit(tableView()->bounds().size.width);
    tableView()->setTableHeaderView(header_);
}

long CardScreen::numberOfSections(objc::Object) { return static_cast<long>(sections_.size()); }

long CardScreen::numberOfRows(objc::Object, long section) {
    return static_cast<long>(sections_[static_cast<std::size_t>(section)].rows.size());
}

objc::Object CardScreen::titleForHeader(objc::Object, long section) {
    const std::string& title = sections_[static_cast<std::size_t>(section)].title;
    return title.empty() ? objc::Object{} : uikit::nsString(title);
}

namespace {

const CardRow& rowAt(const std::vector<CardSection>& sections, objc::Object path) {
    const auto place = uikit::placeOf(path);
    return sections[static_cast<std::size_t>(place.section)].rows[static_cast<std::size_t>(place.row)];
}

}  // namespace

objc::Object CardScreen::cellForRow(objc::Object table, objc::Object path) {
    const auto identifier = uikit::nsString("Card");
    auto cell = objc::send<"dequeueReusableCellWithIdentifier:", objc::Object>(table, identifier);
    if (!cell)
        cell = objc::autorelease(
            objc::make<objc::Object, "initWithStyle:reuseIdentifier:">(objc::classOf<CardCell>(), 0L, identifier));
    objc::peerOf<CardCell>(cell)->setRow(rowAt(sections_, path));
    return cell;
}

double CardScreen::heightForRow(objc::Object, objc::Object path) {
    return CardCell::heightOf(rowAt(sections_, path), tableView()->bounds().size.width);
}

void CardScreen::didSelectRow(objc::Object table, objc::Object path) {
    objc::send<"deselectRowAtIndexPath:animated:">(table, path, true);
    // What it does may make the rows anew, or take the card away.
    const objc::Ref<CardScreen> me(this);
    if (const auto chosen = rowAt(sections_, path).chosen) chosen();
}

}  // namespace addressbookui
