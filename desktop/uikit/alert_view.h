// UIAlertView: a message with buttons, in the middle of the screen.
#pragma once

#include "desktop/uikit/sheet.h"
#include "desktop/weak/weak.h"

namespace uikit {

class AlertView : public objc::PeerBase {
  public:
    using Super = objc::Foreign<"NSObject">;
    static constexpr objc::Name className{"UIAlertView"};
    static void define(objc::ClassDefinition<AlertView>& definition);

    // Messages of the same names. The delegate is not retained; where it answers them it is sent
    // `alertView:clickedButtonAtIndex:` for a touch alone, then in each case `alertView:willDismissWithButtonIndex:`
    // and, when the alert has left, `alertView:didDismissWithButtonIndex:`.
    objc::Object initWithTitleMessage(objc::Object title, objc::Object message, objc::Object delegate,
                                      objc::Object cancelTitle, objc::Object none);
    long addButtonWithTitle(objc::Object title);
    void show();
    void dismissWithClickedButtonIndexAnimated(long index, bool animated);

  private:
    template <objc::Name message>
    void tell(long index);

    Sheet::Content content_{Sheet::Style::Alert, {}, {}, {}};
    weak::Object delegate_;
    objc::Ref<Sheet> sheet_;
    bool dismissedByMessage_ = false;
};

}  // namespace uikit
