// The card of a number that is nobody's.
#include "desktop/addressbookui/unknown_person_screen.h"

#include "desktop/addressbook/book.h"
#include "desktop/addressbookui/contact_form.h"
#include "desktop/addressbookui/dialogs.h"
#include "desktop/addressbookui/people_picker.h"
#include "desktop/addressbookui/words.h"

namespace addressbookui {

using addressbook::Record;
using contacts::Book;

void UnknownPersonScreen::define(objc::ClassDefinition<UnknownPersonScreen>& definition) {
    definition.method<"unknownPersonViewDelegate", &UnknownPersonScreen::unknownPersonViewDelegate>()
        .method<"setUnknownPersonViewDelegate:", &UnknownPersonScreen::setUnknownPersonViewDelegate>()
        .method<"allowsAddingToAddressBook", &UnknownPersonScreen::allowsAddingToAddressBook>()
        .method<"setAllowsAddingToAddressBook:", &UnknownPersonScreen::setAllowsAddingToAddressBook>()
        .method<"primaryProperty", &UnknownPersonScreen::primaryProperty>()
        .method<"setPrimaryProperty:", &UnknownPersonScreen::setPrimaryProperty>();
}

int UnknownPersonScreen::primaryProperty() const {
    return primary_ ? static_cast<int>(*primary_) : kABPropertyInvalidID;
}

void UnknownPersonScreen::setPrimaryProperty(int property) {
    primary_ = static_cast<contacts::Property>(property);
    if (isViewLoaded()) reload();
}

bool UnknownPersonScreen::mayOpen(const CardValue& value) {
    constexpr auto question =
        objc::Name{"unknownPersonViewController:shouldPerformDefaultActionForPerson:property:identifier:"};
    return askDelegate(unknownPersonViewDelegate(), objc::selector<question>(), value);
}

std::vector<CardSection> UnknownPersonScreen::sections() {
    auto values = valueRows();
    std::vector<CardRow> adding;
    // Of a withheld number there is nothing that a contact could be known by.
    if (adding_ && !resolved_ && !values.empty()) {
        adding.push_back(button(say(Word::createNewContact), [this] { createContact(); }));
        adding.push_back(button(say(Word::addToExistingContact), [this] { addToContact(); }));
    }
    return {{{}, std::move(values)}, {{}, std::move(adding)}, {{}, actionRows()}, {{}, blockingRows()}};
}

bool UnknownPersonScreen::canAdd() {
    if (Book::shared().isAllowed()) return true;
    tell(say(Word::notSaved), say(Word::noAccess));
    return false;
}

void UnknownPersonScreen::present(uikit::NavigationController* stack) {
    objc::send<"presentViewController:animated:completion:">(object(), stack->object(), true, objc::Object{});
}

void UnknownPersonScreen::createContact() {
    if (!canAdd()) return;
    contacts::Contact started = contact();
    started.record = 0;
    const auto person = Record::of({});
    auto form = objc::Ref<ContactForm>::make();
    form->begin({ContactEdit({}, std::move(started)), person, say(Word::newContact), true, false});
    form->setFinished([me = objc::Ref<UnknownPersonScreen>(this), person](ContactForm::Outcome outcome) {
        me->resolve(outcome == ContactForm::Outcome::saved ? person.get() : nullptr);
    });
    present(objc::Ref<uikit::NavigationController>::make<"initWithRootViewController:">(form->object()));
}

void UnknownPersonScreen::addToContact() {
    if (!canAdd()) return;
    auto picker = objc::Ref<PeoplePicker>::make();
    const objc::Ref<UnknownPersonScreen> me(this);
    picker->setChosen([me, stack = picker.get()](Record* person) {
        if (!person) return me->resolve(nullptr);
        const objc::Ref<Record> kept(person);
        const contacts::Contact before = contactOf(person->self);
        auto form = objc::Ref<ContactForm>::make();
        form->begin({ContactEdit(before, withValuesOf(before, me->contact())), person, {}, true, false});
        form->setFinished([me, kept](ContactForm::Outcome outcome) {
            me->resolve(outcome == ContactForm::Outcome::saved ? kept.get() : nullptr);
        });
        objc::send<"pushViewController:animated:">(stack->object(), form->object(), true);
    });
    present(picker);
}

void UnknownPersonScreen::resolve(Record* person) {
    const objc::Ref<UnknownPersonScreen> me(this);
    const objc::Ref<Record> kept(person);
    constexpr auto name = objc::Name{"unknownPersonViewController:didResolveToPerson:"};
    const auto receiver = unknownPersonViewDelegate();
    if (receiver && objc::respondsTo(receiver, objc::selector<name>()))
        objc::send<name>(receiver, object(), objc::Object{kept.self()});
    // The delegate may have put another screen in this one's place.
    if (!person || !parentViewController()) return;
    resolved_ = true;
    setDisplayedPerson(kept.self());
}

}  // namespace addressbookui
