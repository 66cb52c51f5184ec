// ABUnknownPersonViewController: the card of a number or an address that is nobody's yet, and the ways to make it
// somebody's.
#pragma once

#include "desktop/addressbookui/card_screen.h"
#include "desktop/uikit/navigation_controller.h"
#include "desktop/weak/weak.h"

namespace addressbookui {

class UnknownPersonScreen : public CardScreen {
  public:
    using Super = CardScreen;
    static constexpr objc::Name className{"ABUnknownPersonViewController"};
    static void define(objc::ClassDefinition<UnknownPersonScreen>& definition);

    // Messages of the same names. The delegate is not retained. It is sent
    // `unknownPersonViewController:didResolveToPerson:` with the saved person, or with null when the user gave up, and
    // asked `unknownPersonViewController:shouldPerformDefaultActionForPerson:property:identifier:` before the value is
    // called or written to.
    objc::Strong<> unknownPersonViewDelegate() const { return delegate_.load(); }
    void setUnknownPersonViewDelegate(objc::Object delegate) { delegate_ = delegate; }
    /// Yes unless it is set otherwise.
    bool allowsAddingToAddressBook() const { return adding_; }
    void setAllowsAddingToAddressBook(bool allows) { set(adding_, allows); }
    /// Values of that property stand first.
    int primaryProperty() const;
    void setPrimaryProperty(int property);

  protected:
    std::vector<CardSection> sections() override;
    std::string nobodysName() const override { return unknownText(); }
    bool mayOpen(const CardValue& value) override;

  private:
    bool canAdd();
    void createContact();
    void addToContact();
    /// Tells the delegate; what was presented closes itself.
    void resolve(addressbook::Record* person);
    void present(uikit::NavigationController* stack);

    weak::Object delegate_;
    bool adding_ = true;
    bool resolved_ = false;
};

/// The class under the name that today's applications ask for.
class ModernUnknownPersonScreen : public UnknownPersonScreen {
  public:
    using Super = UnknownPersonScreen;
    static constexpr objc::Name className{"ABUnknownPersonViewController_Modern"};
    static void define(objc::ClassDefinition<ModernUnknownPersonScreen>&) {}
};

}  // namespace addressbookui
