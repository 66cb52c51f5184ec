// A contact under change: what the form shows of it, and what becomes of the rest, which is kept.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "desktop/addressbook/contact.h"

namespace addressbookui {

class ContactEdit {
  public:
    explicit ContactEdit(contacts::Contact contact);
    /// Begins with changes made.
    ContactEdit(contacts::Contact original, contacts::Contact edited);

    const std::string& text(contacts::Property property) const { return edited_.text(property); }
    void setText(contacts::Property property, std::string_view text) { edited_.setText(property, text); }

    /// The values of a list, those included that are still empty.
    const std::vector<contacts::LabelledValue>& values(contacts::Property property) const;
    /// Adds a value at the end, under the first of the usual labels that no other value has. Answers its index.
    std::size_t addValue(contacts::Property property, std::string_view text = {}, std::string_view label = {});
    void removeValue(contacts::Property property, std::size_t index);
    void setValue(contacts::Property property, std::size_t index, std::string_view text);
    void setLabel(contacts::Property property, std::size_t index, std::string_view label);

    /// The labels to choose from for a value: the usual ones of the property, and the one it has.
    std::vector<std::string> labels(contacts::Property property, std::size_t index) const;

    /// The contact with the changes; values without text are left out. Everything that was not changed is as it was.
    contacts::Contact result() const;
    bool isChanged() const { return !(result() == original_); }
    /// Whether nothing would be left of it: no text, no value.
    bool isEmpty() const;

  private:
    contacts::Contact original_;
    contacts::Contact edited_;
};

/// The contact with the values of the other one that it does not have yet.
contacts::Contact withValuesOf(const contacts::Contact& contact, const contacts::Contact& other);

}  // namespace addressbookui
