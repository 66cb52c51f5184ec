// UIAlertView over the sheet's panel.
#include "desktop/uikit/alert_view.h"

#include "desktop/uikit/application.h"

namespace uikit {

void AlertView::define(objc::ClassDefinition<AlertView>& definition) {
    // The list of other titles ends with its first nil: buttons beyond the first come by addButtonWithTitle:.
    definition
        .method<"initWithTitle:message:delegate:cancelButtonTitle:otherButtonTitles:",
                &AlertView::initWithTitleMessage>()
        .method<"addButtonWithTitle:", &AlertView::addButtonWithTitle>()
        .method<"show", &AlertView::show>()
        .method<"dismissWithClickedButtonIndex:animated:", &AlertView::dismissWithClickedButtonIndexAnimated>();
}

objc::Object AlertView::initWithTitleMessage(objc::Object title, objc::Object message, objc::Object delegate,
                                             objc::Object cancelTitle, objc::Object other) {
    content_.title = utf8(title);
    content_.message = utf8(message);
    delegate_ = delegate;
    if (cancelTitle) content_.choices.push_back({utf8(cancelTitle), Sheet::Role::Cancel});
    if (other) addButtonWithTitle(other);
    return objc::Object{self};
}

long AlertView::addButtonWithTitle(objc::Object title) {
    content_.choices.push_back({utf8(title), Sheet::Role::Normal});
    return static_cast<long>(content_.choices.size()) - 1;
}

template <objc::Name message>
void AlertView::tell(long index) {
    const auto receiver = delegate_.load();
    if (receiver && objc::respondsTo(receiver, objc::selector<message>()))
        objc::send<message>(receiver.get(), objc::Object{self}, index);
}

void AlertView::show() {
    Window* window = Application::shared()->keyWindow();
    if (!window) return;
    dismissedByMessage_ = false;
    // The panel keeps the alert as long as somebody may still be told.
    const objc::Ref<AlertView> me(this);
    sheet_ = Sheet::present(
        window, content_,
        [me](long index) {
            me->sheet_ = {};
            if (!me->dismissedByMessage_) me->tell<"alertView:clickedButtonAtIndex:">(index);
            me->tell<"alertView:willDismissWithButtonIndex:">(index);
        },
        [me](long index) { me->tell<"alertView:didDismissWithButtonIndex:">(index); });
}

void AlertView::dismissWithClickedButtonIndexAnimated(long index, bool animated) {
    const auto sheet = sheet_;
    if (!sheet) return;
    dismissedByMessage_ = true;
    sheet->dismiss(index, animated);
}

}  // namespace uikit
