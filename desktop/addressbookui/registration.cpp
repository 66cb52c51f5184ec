// The classes of the contact screens: the whole list, and the moment when they are registered.
#include "desktop/addressbookui/contact_form.h"
#include "desktop/addressbookui/people_picker.h"
#include "desktop/addressbookui/person_screen.h"
#include "desktop/addressbookui/unknown_person_screen.h"

namespace addressbookui {
namespace {

[[gnu::constructor]] void registerAtLoad() {
    const objc::AutoreleasePool pool;
    objc::registerClasses<CardCell, CardHeader, CardScreen, PersonScreen, ModernPersonScreen, UnknownPersonScreen,
                          ModernUnknownPersonScreen, FormCell, ContactForm, PeopleList, PeoplePicker>();
}

}  // namespace
}  // namespace addressbookui
