// ABPersonViewController: the card of a contact.
#pragma once

#include "desktop/addressbookui/card_screen.h"
#include "desktop/weak/weak.h"

namespace addressbookui {

class PersonScreen : public CardScreen {
  public:
    using Super = CardScreen;
    static constexpr objc::Name className{"ABPersonViewController"};
    static void define(objc::ClassDefinition<PersonScreen>& definition);

    // Messages of the same names. The delegate is not retained; it is asked
    // `personViewController:shouldPerformDefaultActionForPerson:property:identifier:` before a value is called or
    // written to.
    objc::Object init();
    objc::Object initWithStyle(objc::Object nib, objc::Object bundle, const void* book, long style);
    long style() const { return style_; }
    objc::Strong<> personViewDelegate() const { return delegate_.load(); }
    void setPersonViewDelegate(objc::Object delegate) { delegate_ = delegate; }
    bool allowsEditing() const { return editing_; }
    void setAllowsEditing(bool allows) { set(editing_, allows); }
    /// The form has a button that deletes the contact; once it is done the card leaves its stack.
    bool allowsDeletion() const { return deletion_; }
    void setAllowsDeletion(bool allows) { deletion_ = allows; }
    bool allowsAddToFavorites() const { return favorites_; }
    void setAllowsAddToFavorites(bool allows) { set(favorites_, allows); }
    /// Whether the form can be left without keeping what was changed.
    bool allowsCancel() const { return cancel_; }
    void setAllowsCancel(bool allows) { cancel_ = allows; }
    /// The other contacts of the same name, each a way to its card.
    bool shouldShowLinkedPeople() const { return linked_; }
    void setShouldShowLinkedPeople(bool show) { set(linked_, show); }
    /// `identifier` counts the person's values of the property from 0, as the screens that highlight a call's number
    /// do; a negative one highlights nothing. Important values are red.
    void highlight(int property, int identifier) { setHighlight(property, identifier, false); }
    void highlightImportant(int property, int identifier, bool important) {
        setHighlight(property, identifier, important);
    }

  protected:
    std::vector<CardSection> sections() override;
    CardRow::Emphasis emphasisOf(const CardValue& value) const override;
    bool mayOpen(const CardValue& value) override;

  private:
    void setHighlight(int property, int index, bool important);
    void edit();
    void deleted();
    std::vector<CardRow> favoriteRows();
    std::vector<CardRow> linkedRows();
    void openLinked(int record);

    weak::Object delegate_;
    long style_ = 0;
    bool editing_ = false;
    bool deletion_ = false;
    bool favorites_ = false;
    bool cancel_ = true;
    bool linked_ = false;
    int highlightedProperty_ = -1;
    int highlightedIndex_ = -1;
    bool important_ = false;
};

/// The class under the name that today's applications ask for.
class ModernPersonScreen : public PersonScreen {
  public:
    using Super = PersonScreen;
    static constexpr objc::Name className{"ABPersonViewController_Modern"};
    static void define(objc::ClassDefinition<ModernPersonScreen>&) {}
};

}  // namespace addressbookui
