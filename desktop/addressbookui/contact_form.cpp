// The form of a contact.
#include "desktop/addressbookui/contact_form.h"

#include "desktop/addressbook/labels.h"
#include "desktop/addressbook/names.h"
#include "desktop/addressbookui/dialogs.h"
#include "desktop/addressbookui/people.h"
#include "desktop/addressbookui/words.h"
#include "desktop/uikit/bar_items.h"

namespace addressbookui {
namespace {

using contacts::Property;

constexpr Property nameFields[] = {Property::firstName, Property::lastName, Property::organization};
constexpr Property valueFields[] = {Property::phone, Property::email};
constexpr long deleteStyle = 1;

std::string nameOf(Property property) { return contacts::label::ofProperty(property, contacts::language()); }

}  // namespace

void ContactForm::define(objc::ClassDefinition<ContactForm>& definition) {
    definition.method<"init", &ContactForm::init>()
        .method<"displayedPerson", &ContactForm::displayedPerson>()
        .method<"setDisplayedPerson:", &ContactForm::setDisplayedPerson>()
        .method<"newPersonViewDelegate", &ContactForm::newPersonViewDelegate>()
        .method<"setNewPersonViewDelegate:", &ContactForm::setNewPersonViewDelegate>()
        .method<"cancel", &ContactForm::cancel>()
        .method<"done", &ContactForm::done>();
    definition.method<"numberOfSectionsInTableView:", &ContactForm::numberOfSections>()
        .method<"tableView:numberOfRowsInSection:", &ContactForm::numberOfRows>()
        .method<"tableView:cellForRowAtIndexPath:", &ContactForm::cellForRow>()
        .method<"tableView:canEditRowAtIndexPath:", &ContactForm::canEditRow>()
        .method<"tableView:commitEditingStyle:forRowAtIndexPath:", &ContactForm::commitEditing>()
        .method<"tableView:didSelectRowAtIndexPath:", &ContactForm::didSelectRow>();
}

objc::Object ContactForm::init() {
    setTitle(uikit::nsString(say(Word::newContact)));
    person_ = addressbook::Record::of({});
    setTableStyle(uikit::TableView::grouped);
    return objc::sendSuper<"init", objc::Object>(object(), objc::classOf<ContactForm>());
}

void ContactForm::setDisplayedPerson(const void* person) {
    auto* record = addressbook::peerFrom<addressbook::Record>(person);
    person_ = record ? objc::Ref<addressbook::Record>(record) : addressbook::Record::of({});
    contacts::Contact before = contactOf(person_.self());
    edit_ = before.record > 0 ? ContactEdit(std::move(before)) : ContactEdit({}, std::move(before));
    if (isViewLoaded()) reload();
}

void ContactForm::begin(Start start) {
    edit_ = std::move(start.edit);
    person_ = objc::Ref<addressbook::Record>(start.person);
    allowsCancel_ = start.allowsCancel;
    allowsDeletion_ = start.allowsDeletion;
    setTitle(start.title.empty() ? objc::Object{} : uikit::nsString(start.title));
    if (isViewLoaded()) reload();
}

void ContactForm::viewDidLoad() {
    auto* item = objc::peerOf<uikit::NavigationItem>(navigationItem());
    item->setHidesBackButton(true);
    constexpr long plain = 0;
    if (allowsCancel_)
        item->setLeftBarButtonItem(objc::Ref<uikit::BarButtonItem>::make<"initWithTitle:style:target:action:">(
            uikit::nsString(say(Word::cancel)), plain, object(), objc::selector<"cancel">()));
    tableView()->setEditing(true);
    tableView()->setAllowsSelectionDuringEditing(true);
    reload();
}

/// Done can be tapped once there is something to keep.
void ContactForm::updateBar() {
    auto* item = objc::peerOf<uikit::NavigationItem>(navigationItem());
    const bool canSave = !edit_.isEmpty();
    if (item->rightBarButtonItem() && canSave == canSave_) return;
    canSave_ = canSave;
    constexpr long doneStyle = 2;
    auto button = objc::Ref<uikit::BarButtonItem>::make<"initWithTitle:style:target:action:">(
        uikit::nsString(say(Word::done)), doneStyle, object(), objc::selector<"done">());
    button->setEnabled(canSave);
    item->setRightBarButtonItem(button);
}

void ContactForm::reload() {
    rows_ = rows();
    tableView()->reloadData();
    updateBar();
}

FormRow ContactForm::nameRow(Property property) {
    FormRow row;
    row.text = edit_.text(property);
    row.placeholder = nameOf(property);
    row.edited = weak::whileAlive(this, [this, property](const std::string& text) {
        edit_.setText(property, text);
        updateBar();
    });
    return row;
}

FormRow ContactForm::valueRow(Property property, std::size_t index) {
    const auto& value = edit_.values(property)[index];
    FormRow row;
    row.look = FormRow::Look::labelledField;
    row.label = contacts::label::forPeople(value.label, contacts::language());
    if (row.label.empty()) row.label = nameOf(property);
    row.text = value.text;
    row.placeholder = nameOf(property);
    row.edited = weak::whileAlive(this, [this, property, index](const std::string& text) {
        edit_.setValue(property, index, text);
        updateBar();
    });
    row.labelTapped = weak::whileAlive(this, [this, property, index] { chooseLabel(property, index); });
    row.removed = weak::whileAlive(this, [this, property, index] {
        edit_.removeValue(property, index);
        reload();
    });
    return row;
}

FormRow ContactForm::addRow(Property property) {
    FormRow row;
    row.look = FormRow::Look::add;
    row.text = say(property == Property::phone ? Word::addPhone : Word::addEmail);
    row.chosen = weak::whileAlive(this, [this, property] {
        const std::size_t index = edit_.addValue(property);
        reload();
        const long section = property == Property::phone ? 1 : 2;
        if (auto* cell = cellAt({section, static_cast<long>(index)})) cell->field()->becomeFirstResponder();
    });
    return row;
}

std::vector<std::vector<FormRow>> ContactForm::rows() {
    std::vector<std::vector<FormRow>> sections(1);
    for (const Property property : nameFields) sections.front().push_back(nameRow(property));
    for (const Property property : valueFields) {
        auto& rows = sections.emplace_back();
        for (std::size_t i = 0; i < edit_.values(property).size(); ++i) rows.push_back(valueRow(property, i));
        rows.push_back(addRow(property));
    }
    if (!allowsDeletion_) return sections;
    FormRow deletion;
    deletion.look = FormRow::Look::destructive;
    deletion.text = say(Word::deleteContact);
    deletion.chosen = weak::whileAlive(this, [this] { askToDelete(); });
    sections.push_back({deletion});
    return sections;
}

void ContactForm::chooseLabel(Property property, std::size_t index) {
    const auto labels = edit_.labels(property, index);
    std::vector<std::string> words;
    for (const auto& each : labels) words.push_back(contacts::label::forPeople(each, contacts::language()));
    choose(say(Word::chooseLabel), words,
           [me = objc::Ref<ContactForm>(this), property, index, labels](std::size_t row) {
               me->edit_.setLabel(property, index, labels[row]);
               me->reload();
           });
}

FormCell* ContactForm::cellAt(uikit::RowPlace place) {
    tableView()->layoutIfNeeded();
    return objc::peerOf<FormCell>(tableView()->cellAtPath(uikit::indexPath(place)));
}

/// The next field that is on the screen takes the keyboard; after the last one nobody has it.
void ContactForm::focusAfter(uikit::RowPlace place) {
    const auto sections = static_cast<long>(rows_.size());
    for (auto next = place; next.section < sections; next = {next.section + 1, -1}) {
        while (++next.row < static_cast<long>(rows_[static_cast<std::size_t>(next.section)].size())) {
            auto* cell = cellAt(next);
            if (cell && !cell->field()->isHidden()) {
                cell->field()->becomeFirstResponder();
                return;
            }
        }
    }
    if (auto* cell = cellAt(place)) cell->field()->resignFirstResponder();
}

long ContactForm::numberOfSections(objc::Object) { return static_cast<long>(rows_.size()); }

long ContactForm::numberOfRows(objc::Object, long section) {
    return static_cast<long>(rows_[static_cast<std::size_t>(section)].size());
}

namespace {

const FormRow& rowAt(const std::vector<std::vector<FormRow>>& rows, objc::Object path) {
    const auto place = uikit::placeOf(path);
    return rows[static_cast<std::size_t>(place.section)][static_cast<std::size_t>(place.row)];
}

}  // namespace

objc::Object ContactForm::cellForRow(objc::Object table, objc::Object path) {
    const auto identifier = uikit::nsString("Form");
    auto cell = objc::send<"dequeueReusableCellWithIdentifier:", objc::Object>(table, identifier);
    if (!cell)
        cell = objc::autorelease(
            objc::make<objc::Object, "initWithStyle:reuseIdentifier:">(objc::classOf<FormCell>(), 0L, identifier));
    objc::peerOf<FormCell>(cell)->setRow(
        rowAt(rows_, path), weak::whileAlive(this, [this, place = uikit::placeOf(path)] { focusAfter(place); }));
    return cell;
}

bool ContactForm::canEditRow(objc::Object, objc::Object path) { return static_cast<bool>(rowAt(rows_, path).removed); }

void ContactForm::commitEditing(objc::Object, long style, objc::Object path) {
    const auto removed = rowAt(rows_, path).removed;
    if (style == deleteStyle && removed) removed();
}

void ContactForm::didSelectRow(objc::Object table, objc::Object path) {
    objc::send<"deselectRowAtIndexPath:animated:">(table, path, true);
    if (const auto chosen = rowAt(rows_, path).chosen) return chosen();
    auto* cell = cellAt(uikit::placeOf(path));
    if (cell && !cell->field()->isHidden()) cell->field()->becomeFirstResponder();
}

void ContactForm::cancel() {
    if (!isClosing_) finish(Outcome::cancelled);
}

void ContactForm::done() {
    // It can still be tapped while it leaves.
    if (isClosing_) return;
    const auto contact = edit_.result();
    const bool isKept = contact.record > 0 && !edit_.isChanged();
    const auto trouble = isKept ? std::nullopt : savePerson(*person_, contact);
    if (trouble) return tell(say(Word::notSaved), *trouble);
    finish(Outcome::saved);
}

void ContactForm::askToDelete() {
    const int record = edit_.result().record;
    confirm({}, say(Word::deleteContact), [me = objc::Ref<ContactForm>(this), record] {
        if (me->isClosing_) return;
        if (const auto trouble = deletePerson(record)) return tell(say(Word::notSaved), *trouble);
        me->finish(Outcome::deleted);
    });
}

void ContactForm::finish(Outcome outcome) {
    const objc::Ref<ContactForm> me(this);
    if (auto* field = uikit::firstResponder()) field->resignFirstResponder();
    const auto finished = std::exchange(finished_, {});
    const auto receiver = newPersonViewDelegate();
    constexpr auto name = objc::Name{"newPersonViewController:didCompleteWithNewPerson:"};
    const bool isAnswered = receiver && objc::respondsTo(receiver, objc::selector<name>());
    isClosing_ = finished || !isAnswered;
    if (finished) finished(outcome);
    if (isAnswered)
        objc::send<name>(receiver, object(), objc::Object{outcome == Outcome::saved ? person_.self() : nullptr});
    // The screen that presented the form may have left its stack meanwhile, and knows no way to it any more.
    if (isClosing_) objc::send<"dismissViewControllerAnimated:completion:">(object(), true, objc::Object{});
}

}  // namespace addressbookui
