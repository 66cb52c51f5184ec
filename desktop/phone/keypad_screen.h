// The keypad: digits are typed and called.
#pragma once

#include "desktop/uikit/button.h"
#include "desktop/uikit/view_controller.h"

namespace phone {

class KeypadScreen : public uikit::ViewController {
  public:
    using Super = uikit::ViewController;
    static constexpr objc::Name className{"PHKeypadViewController"};
    static void define(objc::ClassDefinition<KeypadScreen>& definition);

    void loadView() override;
    const std::string& digits() const { return digits_; }

    /// What a desktop's keyboard types: other letters than the keys have are left out. Return calls, Escape empties.
    void insertText(std::string_view text) override;
    void pressKey(EditingKey key) override;

  private:
    void typeDigit(objc::Object button);
    void removeDigit();
    void call();
    void addKey(uikit::View* pad, int index, const char* digit, const char* letters);
    void showDigits();

    std::string digits_;
    objc::Ref<uikit::Label> number_;
};

}  // namespace phone
