// The host's own Recents list.
#include "desktop/phone/recents_screen.h"

#include "desktop/addressbook/address_book.h"
#include "desktop/addressbook/call_links.h"
#include "desktop/addressbook/labels.h"
#include "desktop/addressbook/names.h"
#include "desktop/addressbook/number_index.h"
#include "desktop/addressbook/numbers.h"
#include "desktop/addressbookui/person_screen.h"
#include "desktop/addressbookui/unknown_person_screen.h"
#include "desktop/phone/call_time.h"
#include "desktop/phone/phone_text.h"
#include "desktop/quorvel/services/contact_source.h"
#include "desktop/uikit/application.h"
#include "desktop/uikit/bar_items.h"
#include "desktop/uikit/navigation_controller.h"
#include "desktop/uikit/table_view_cell.h"

namespace phone {
namespace {

constexpr std::size_t listedCalls = 100;
constexpr double rowHeight = 50;
constexpr long detailButton = 4;
constexpr long subtitleStyle = 3;
constexpr long deleteStyle = 1;
constexpr long noAnimation = 5;

std::string titleOf(const HostCall& call) {
    if (!call.name.empty()) return call.name;
    return call.address.empty() ? phoneText("UNKNOWN") : call.address;
}

std::size_t rowOf(objc::Object path) { return static_cast<std::size_t>(objc::send<"row", long>(path)); }

objc::Ref<addressbookui::PersonScreen> cardOfPerson(const void* person, const std::string& address) {
    auto card = objc::Ref<addressbookui::ModernPersonScreen>::make();
    card->setDisplayedPerson(person);
    card->setAllowsEditing(true);
    card->setAllowsActions(true);
    card->setAllowsSharing(true);
    card->setAllowsContactBlocking(true);
    card->setAllowsAddToFavorites(true);
    const int number = contacts::indexOfAddress(quorvel::numbersOf(person), address);
    const int email = contacts::indexOfAddress(quorvel::emailsOf(person), address);
    if (number >= 0)
        card->highlight(kABPersonPhoneProperty, number);
    else
        card->highlight(kABPersonEmailProperty, email);
    return objc::Ref<addressbookui::PersonScreen>(card.get());
}

/// Nobody's card; of a withheld number one without a number.
objc::Ref<addressbookui::UnknownPersonScreen> cardOfNumber(const HostCall& call) {
    const std::string& address = call.address;
    contacts::Contact caller;
    const bool isEmail = contacts::isEmailAddress(address);
    const auto property = isEmail ? contacts::Property::email : contacts::Property::phone;
    const char* label = isEmail ? contacts::label::home : contacts::label::mobile;
    if (!address.empty()) caller.lists[property].push_back({0, label, address, {}});
    auto card = objc::Ref<addressbookui::ModernUnknownPersonScreen>::make();
    card->setPrimaryProperty(static_cast<int>(property));
    card->setDisplayedPerson(addressbook::Record::of(std::move(caller)).self());
    if (!call.name.empty()) card->setAlternateName(uikit::nsString(call.name));
    card->setMessage(uikit::nsString(contacts::placeOf(address, contacts::language())));
    card->setAllowsActions(true);
    card->setAllowsContactBlocking(true);
    return objc::Ref<addressbookui::UnknownPersonScreen>(card.get());
}

}  // namespace

RecentsScreen::~RecentsScreen() { objc::peerOf<uikit::NavigationItem>(navigationItem())->setRightButtonTaken({}); }

void RecentsScreen::define(objc::ClassDefinition<RecentsScreen>& definition) {
    definition.method<"table", &RecentsScreen::table>()
        .method<"loadView", &RecentsScreen::loadView>()
        .method<"viewDidLoad", &RecentsScreen::viewDidLoad>()
        .method<"viewDidAppear:", &RecentsScreen::viewDidAppear>()
        .method<"numberOfSectionsInTableView:", &RecentsScreen::numberOfSections>()
        .method<"tableView:numberOfRowsInSection:", &RecentsScreen::numberOfRows>()
        .method<"tableView:cellForRowAtIndexPath:", &RecentsScreen::cellForRow>()
        .method<"tableView:willDisplayCell:forRowAtIndexPath:", &RecentsScreen::willDisplayCell>()
        .method<"tableView:canEditRowAtIndexPath:", &RecentsScreen::canEditRow>()
        .method<"tableView:willBeginEditingRowAtIndexPath:", &RecentsScreen::willBeginEditingRow>()
        .method<"tableView:didEndEditingRowAtIndexPath:", &RecentsScreen::didEndEditingRow>()
        .method<"tableView:commitEditingStyle:forRowAtIndexPath:", &RecentsScreen::commitEditing>()
        .method<"tableView:didSelectRowAtIndexPath:", &RecentsScreen::didSelectRow>()
        .method<"tableView:accessoryButtonTappedForRowWithIndexPath:", &RecentsScreen::accessoryTapped>()
        .method<"tableView:heightForRowAtIndexPath:", &RecentsScreen::heightForRow>()
        .method<"callAtTableViewIndex:", &RecentsScreen::callAtIndex>()
        .method<"_updateNavBarButtons", &RecentsScreen::updateNavigationBarButtons>()
        .method<"filterChanged:", &RecentsScreen::filterChanged>()
        .method<"toggleEditing", &RecentsScreen::toggleEditing>();
}

uikit::TableView* RecentsScreen::table() {
    if (!table_) view();
    return table_;
}

void RecentsScreen::loadView() {
    table_ = objc::Ref<uikit::TableView>::make<"initWithFrame:">(uikit::Rect{{0, 0}, uikit::screenSize()});
    table_->setAutoresizingMask(uikit::flexibleWidth | uikit::flexibleHeight);
    setView(table_);
}

void RecentsScreen::viewDidLoad() {
    objc::send<"setDataSource:">(table_->object(), object());
    objc::send<"setDelegate:">(table_->object(), object());
    const auto titles = objc::sendClass<"NSMutableArray", "array", objc::Object>();
    for (const char* title : {"ALL", "MISSED"}) objc::send<"addObject:">(titles, uikit::nsString(phoneText(title)));
    filter_ = objc::Ref<uikit::SegmentedControl>::make<"initWithItems:">(titles);
    constexpr double filterWidth = 160;
    filter_->setFrame({{0, 0}, {filterWidth, uikit::SegmentedControl::height}});
    filter_->setSelectedSegmentIndex(0);
    filter_->addTargetActionForControlEvents(object(), objc::selector<"filterChanged:">(), uikit::valueChanged);
    auto* item = objc::peerOf<uikit::NavigationItem>(navigationItem());
    item->setTitleView(filter_);
    item->setRightButtonTaken([this] {
        if (std::exchange(showsEdit_, false)) objc::send<"_updateNavBarButtons">(object());
    });
    reload();
}

void RecentsScreen::viewWillAppear(bool) {
    reload();
    objc::send<"_updateNavBarButtons">(object());
}

void RecentsScreen::viewDidAppear(bool) {}

void RecentsScreen::reload() {
    calls_ = hostCallLog().read(filter_->selectedSegmentIndex() == 1, listedCalls);
    objc::send<"reloadData">(table()->object());
}

void RecentsScreen::filterChanged(objc::Object) {
    reload();
    objc::send<"_updateNavBarButtons">(object());
}

void RecentsScreen::setEditingAnimated(bool editing, bool animated) {
    ViewController::setEditingAnimated(editing, animated);
    objc::send<"setEditing:animated:">(table()->object(), editing, animated);
}

void RecentsScreen::toggleEditing() {
    objc::send<"setEditing:animated:">(object(), !isEditing(), true);
    objc::send<"_updateNavBarButtons">(object());
}

void RecentsScreen::updateNavigationBarButtons() {
    auto* item = objc::peerOf<uikit::NavigationItem>(navigationItem());
    showsEdit_ = false;
    if (calls_.empty()) {
        item->setRightBarButtonItem(nullptr);
        return;
    }
    const long look = isEditing() ? uikit::BarButtonItem::done : uikit::BarButtonItem::edit;
    item->setRightBarButtonItem(objc::Ref<uikit::BarButtonItem>::make<"initWithBarButtonSystemItem:target:action:">(
        look, object(), objc::selector<"toggleEditing">()));
    showsEdit_ = true;
}

long RecentsScreen::numberOfSections(objc::Object) { return 1; }

long RecentsScreen::numberOfRows(objc::Object, long) { return static_cast<long>(calls_.size()); }

objc::Object RecentsScreen::cellForRow(objc::Object table, objc::Object path) {
    const auto identifier = uikit::nsString("HostCall");
    auto cell = objc::send<"dequeueReusableCellWithIdentifier:", objc::Object>(table, identifier);
    if (!cell)
        cell = objc::autorelease(objc::make<objc::Object, "initWithStyle:reuseIdentifier:">(
            objc::classNamed<"UITableViewCell">(), subtitleStyle, identifier));
    const std::size_t row = rowOf(path);
    // While a plug-in decides how many rows there are, a row of ours may be missing.
    const HostCall call = row < calls_.size() ? calls_[row] : HostCall{};
    const auto name = objc::send<"textLabel", objc::Object>(cell);
    objc::send<"setText:">(name, uikit::nsString(titleOf(call)));
    objc::send<"setTextColor:">(name,
                                uikit::uiColor(call.missed ? uikit::palette::destructive : uikit::Color::black()));
    const auto below = objc::send<"detailTextLabel", objc::Object>(cell);
    const std::string kind = phoneText(call.missed ? "KIND_MISSED" : call.outgoing ? "KIND_OUTGOING" : "KIND_INCOMING");
    objc::send<"setText:">(below, uikit::nsString(kind + " · " + callTime(call.date)));
    objc::send<"setTextColor:">(below, uikit::uiColor(uikit::palette::secondaryText));
    objc::send<"setAccessoryType:">(cell, detailButton);
    return cell;
}

void RecentsScreen::willDisplayCell(objc::Object, objc::Object cell, objc::Object) {
    objc::send<"setBackgroundColor:">(cell, uikit::uiColor(uikit::Color::white()));
}

bool RecentsScreen::canEditRow(objc::Object, objc::Object) { return true; }
void RecentsScreen::willBeginEditingRow(objc::Object, objc::Object) {}
void RecentsScreen::didEndEditingRow(objc::Object, objc::Object) {}

void RecentsScreen::commitEditing(objc::Object table, long style, objc::Object path) {
    const std::size_t row = rowOf(path);
    if (style != deleteStyle || row >= calls_.size() || !hostCallLog().remove(calls_[row].rowId)) return;
    calls_.erase(calls_.begin() + static_cast<std::ptrdiff_t>(row));
    const auto paths = objc::sendClass<"NSArray", "arrayWithObject:", objc::Object>(path);
    objc::send<"deleteRowsAtIndexPaths:withRowAnimation:">(table, paths, noAnimation);
    objc::send<"_updateNavBarButtons">(object());
}

void RecentsScreen::didSelectRow(objc::Object table, objc::Object path) {
    objc::send<"deselectRowAtIndexPath:animated:">(table, path, true);
    objc::send<"callAtTableViewIndex:", objc::Object>(object(), path);
}

void RecentsScreen::accessoryTapped(objc::Object, objc::Object path) {
    const std::size_t row = rowOf(path);
    if (row < calls_.size()) openCard(calls_[row]);
}

void RecentsScreen::openCard(const HostCall& call) {
    const auto caller = contacts::callerOf(call.address);
    const void* person = caller ? quorvel::personOf(caller->record) : nullptr;
    objc::Ref<uikit::ViewController> card;
    if (person)
        card = objc::Ref<uikit::ViewController>(cardOfPerson(person, call.address).get());
    else
        card = objc::Ref<uikit::ViewController>(cardOfNumber(call).get());
    objc::send<"pushViewController:animated:">(navigationController()->object(), card->object(), true);
}

double RecentsScreen::heightForRow(objc::Object, objc::Object) { return rowHeight; }

objc::Object RecentsScreen::callAtIndex(objc::Object path) {
    const std::size_t row = rowOf(path);
    if (row >= calls_.size()) return {};
    const auto address = uikit::nsString("tel://" + calls_[row].address);
    const auto url = objc::sendClass<"NSURL", "URLWithString:", objc::Object>(address);
    if (url) objc::send<"openURL:", bool>(uikit::Application::shared()->object(), url);
    return uikit::nsString(calls_[row].address);
}

}  // namespace phone
