// A row of the form: a field, behind its label where it has one, or a button.
#pragma once

#include <functional>
#include <string>

#include "desktop/uikit/button.h"
#include "desktop/uikit/table_view_cell.h"
#include "desktop/uikit/text_field.h"

namespace addressbookui {

struct FormRow {
    enum class Look { field, labelledField, add, destructive };

    Look look = Look::field;
    std::string label;
    std::string text;
    std::string placeholder;
    std::function<void(const std::string&)> edited;
    std::function<void()> labelTapped;
    /// What a tap on a button does.
    std::function<void()> chosen;
    std::function<void()> removed;
};

class FormCell : public uikit::TableViewCell {
  public:
    using Super = uikit::TableViewCell;
    static constexpr objc::Name className{"ABFormCell"};
    static void define(objc::ClassDefinition<FormCell>& definition);

    /// `returned` is called by the return key in the field.
    void setRow(const FormRow& row, std::function<void()> returned);
    uikit::TextField* field() const { return field_; }

    objc::Object initWithFrame(uikit::Rect frame) override;
    void layoutSubviews() override;
    void draw(graphics::Canvas& canvas) override;
    std::vector<std::string> drawnTexts() const override;

  private:
    void fieldChanged();
    void tapLabel();
    bool shouldReturn(objc::Object field);
    bool hasField() const { return row_.look == FormRow::Look::field || row_.look == FormRow::Look::labelledField; }

    FormRow row_;
    std::function<void()> returned_;
    objc::Ref<uikit::TextField> field_;
    objc::Ref<uikit::Button> label_;
};

}  // namespace addressbookui
