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
    delegate_ = delegate.self;
    if (cancelTitle) content_.choices.push_back({utf8(cancelTitle), Sheet::Role::Cancel});
    if (other) addButtonWithTitle(other);
    return objc::Object{self};
}

long AlertView::addButtonWithTitle(objc::Object title) {
    content_.choices.push_back({utf8(title), Sheet::Role::Normal});
    return static_cast<long>(content_.choices.size()) - 1;
}

void AlertView::show() {
    Window* window = Application::shared()->keyWindow();
    if (!window) return;
    const objc::Strong<> me(objc::Object{self});
    sheet_ = Sheet::present(window, content_, [me, this](long index) {
        const objc::Object receiver{delegate_};
        constexpr auto name = objc::Name{"alertView:clickedButtonAtIndex:"};
        if (receiver && objc::respondsTo(receiver, objc::selector<name>())) objc::send<name>(receiver, me, index);
        sheet_ = {};
    });
}

void AlertView::dismissWithClickedButtonIndexAnimated(long index, bool animated) {
    if (const auto sheet = sheet_) sheet->dismiss(index, animated);
}

}  // namespace uikit
