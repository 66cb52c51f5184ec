// The calling screen: over everything, whom the telephone calls and how, the running time, and the way to hang up.
#pragma once

#include "desktop/graphics/image.h"
#include "desktop/phone/opened_address.h"
#include "desktop/uikit/button.h"

namespace phone {

/// No call is placed anywhere: the screen stands for it. Messages and mails get the same screen without a time.
class CallingScreen : public uikit::View {
  public:
    using Super = uikit::View;
    static constexpr objc::Name className{"PHCallingView"};
    static void define(objc::ClassDefinition<CallingScreen>& definition);
    ~CallingScreen() override;

    /// Shows it in the application's window, in place of one that is there already. Null where there is no window.
    static CallingScreen* show(const OpenedAddress& address);
    /// The one that shows; null for none.
    static CallingScreen* front();

    /// Ends the call, or closes what is no call. The screen fades away.
    void hangUp();
    const OpenedAddress& address() const { return address_; }

    void layoutSubviews() override;
    void draw(graphics::Canvas& canvas) override;
    bool touch(const uikit::Touch&) override { return true; }
    /// Name, number, how, and the time since the call began ("0:03").
    std::vector<std::string> drawnTexts() const override;

  private:
    void begin(const OpenedAddress& address);
    std::string time() const;

    OpenedAddress address_;
    std::string name_;
    std::string number_;
    std::string manner_;
    std::string note_;
    int record_ = 0;
    graphics::Image picture_;
    double began_ = 0;
    long shownSecond_ = 0;
    bool leaving_ = false;
    objc::Ref<uikit::Button> end_;
    uikit::AnimationToken ticking_ = 0;
};

}  // namespace phone
