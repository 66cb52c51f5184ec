// UISearchBar: a field for the words, a cancel button, and a row of scopes below while a search is on.
#pragma once

#include "desktop/uikit/button.h"
#include "desktop/uikit/line_editor.h"
#include "desktop/uikit/segmented_control.h"
#include "objc/strong_slot.h"

namespace uikit {

/// The field of the bar: text, caret and the keys that edit it.
class SearchField : public View {
  public:
    using Super = View;
    static constexpr objc::Name className{"UISearchBarTextField"};
    static void define(objc::ClassDefinition<SearchField>& definition);

    const std::string& text() const { return editor_.text(); }
    /// The text as an NSString. Any thread.
    objc::Strong<> string() const { return string_.load(); }
    /// Puts the caret at the end; calls nobody.
    void setText(std::string_view text);
    void setPlaceholder(std::string_view text);
    const std::string& placeholder() const { return placeholder_; }
    void setOnEdit(std::function<void()> edited) { edited_ = std::move(edited); }
    void setOnFocus(std::function<void()> focused) { focused_ = std::move(focused); }
    void setOnEscape(std::function<void()> escaped) { escaped_ = std::move(escaped); }

    void draw(graphics::Canvas& canvas) override;
    bool touch(const Touch& touch) override;
    bool becomeFirstResponder() override;
    bool resignFirstResponder() override;
    void insertText(std::string_view text) override;
    void pressKey(EditingKey key) override;
    std::vector<std::string> drawnTexts() const override;

  private:
    Rect textRect() const;
    Rect clearRect() const;
    void edited();
    void publish();

    LineEditor editor_;
    objc::StrongSlot<> string_;  // what other threads read
    std::string placeholder_;
    std::function<void()> edited_;
    std::function<void()> focused_;
    std::function<void()> escaped_;
};

class SearchBar : public View {
  public:
    using Super = View;
    static constexpr objc::Name className{"UISearchBar"};
    static void define(objc::ClassDefinition<SearchBar>& definition);

    static constexpr double fieldRowHeight = 44;
    static constexpr double scopeRowHeight = 44;

    // Messages of the same names.
    objc::Object initWithFrame(Rect frame) override;
    objc::Strong<> text() const { return field_->string(); }
    void setText(objc::Object text);
    objc::Object placeholder() const;
    void setPlaceholder(objc::Object text);
    objc::Object scopeButtonTitles() const { return scopeTitles_; }
    void setScopeButtonTitles(objc::Object titles);
    long selectedScopeButtonIndex() const { return scope_->selectedSegmentIndex(); }
    /// Tells nobody; a touch does.
    void setSelectedScopeButtonIndex(long index);
    objc::Object barTintColor() const { return barTintColor_; }
    /// The bar's ground; null for the standard one.
    void setBarTintColor(objc::Object color);
    bool showsScopeBar() const { return showsScope_; }
    void setShowsScopeBar(bool shows);
    bool showsCancelButton() const { return showsCancel_; }
    void setShowsCancelButtonAnimated(bool shows, bool animated);
    void setShowsCancelButton(bool shows) { setShowsCancelButtonAnimated(shows, false); }
    bool becomeFirstResponder() override { return field_->becomeFirstResponder(); }
    bool resignFirstResponder() override { return field_->resignFirstResponder(); }

    void layoutSubviews() override;
    Size sizeThatFits(Size size) override;
    void drawAbove(graphics::Canvas& canvas) override;

    // For the search display controller and for scripts.
    SearchField* field() const { return field_; }
    SegmentedControl* scopeControl() const { return scope_; }
    View* scopeArea() const { return scopeArea_; }
    struct Listener {
        std::function<void()> began;
        std::function<void()> textChanged;
        std::function<void(long)> scopeChanged;
        std::function<void()> cancelled;
    };
    void setListener(Listener listener) { listener_ = std::move(listener); }
    /// Replaces the text as typing does, and tells the listener.
    void type(std::string_view text);
    void cancel();

  private:
    void scopeTouched(objc::Object);

    objc::Ref<SearchField> field_;
    objc::Ref<Button> cancelButton_;
    objc::Ref<View> scopeArea_;
    objc::Ref<SegmentedControl> scope_;
    objc::Strong<> scopeTitles_;
    objc::Strong<> barTintColor_;
    bool showsScope_ = false;
    bool showsCancel_ = false;
    Listener listener_;
};

}  // namespace uikit
