// UISearchBar: the field's row, and the scopes' row that unfolds below it.
#include "desktop/uikit/search_bar.h"

#include "desktop/uikit/application.h"
#include "desktop/uikit/bar_items.h"
#include "desktop/weak/weak.h"

namespace uikit {
namespace {

constexpr double margin = 8;
constexpr double fieldHeight = 28;
constexpr double leastCancelWidth = 64;
const Color barColor = Color::fromHex(0xC9C9CE);

}  // namespace

void SearchBar::define(objc::ClassDefinition<SearchBar>& definition) {
    definition.method<"text", &SearchBar::text>()
        .method<"setText:", &SearchBar::setText>()
        .method<"placeholder", &SearchBar::placeholder>()
        .method<"setPlaceholder:", &SearchBar::setPlaceholder>()
        .method<"scopeButtonTitles", &SearchBar::scopeButtonTitles>()
        .method<"setScopeButtonTitles:", &SearchBar::setScopeButtonTitles>()
        .method<"selectedScopeButtonIndex", &SearchBar::selectedScopeButtonIndex>()
        .method<"setSelectedScopeButtonIndex:", &SearchBar::setSelectedScopeButtonIndex>()
        .method<"barTintColor", &SearchBar::barTintColor>()
        .method<"setBarTintColor:", &SearchBar::setBarTintColor>()
        .method<"showsScopeBar", &SearchBar::showsScopeBar>()
        .method<"setShowsScopeBar:", &SearchBar::setShowsScopeBar>()
        .method<"showsCancelButton", &SearchBar::showsCancelButton>()
        .method<"setShowsCancelButton:", &SearchBar::setShowsCancelButton>()
        .method<"setShowsCancelButton:animated:", &SearchBar::setShowsCancelButtonAnimated>()
        .method<"cancelTapped", &SearchBar::cancel>()
        .method<"scopeTouched:", &SearchBar::scopeTouched>();
}

objc::Object SearchBar::initWithFrame(Rect frame) {
    const auto made = View::initWithFrame(frame);
    setBackgroundColor(uiColor(barColor));
    field_ = objc::Ref<SearchField>::make();
    field_->setOnEdit(weak::whileAlive(this, [this] {
        if (listener_.textChanged) listener_.textChanged();
    }));
    field_->setOnFocus(weak::whileAlive(this, [this] {
        if (listener_.began) listener_.began();
    }));
    field_->setOnEscape(weak::whileAlive(this, [this] { cancel(); }));
    constexpr long systemType = 1;
    cancelButton_ = objc::Ref<Button>(objc::peerOf<Button>(Button::withType(objc::classOf<Button>(), systemType)));
    cancelButton_->setTitleForState(nsString(localized("Cancel")), normalState);
    cancelButton_->addTargetActionForControlEvents(object(), objc::selector<"cancelTapped">(), touchUpInside);
    cancelButton_->setHidden(true);
    scopeArea_ = objc::Ref<View>::make();
    scopeArea_->setHidden(true);
    field_->setText({});
    scope_ = objc::Ref<SegmentedControl>::make();
    scope_->addTargetActionForControlEvents(object(), objc::selector<"scopeTouched:">(), valueChanged);
    const double width = frame.size.width;
    scopeArea_->setFrame({{0, fieldRowHeight}, {width, scopeRowHeight}});
    scope_->setFrame({{margin, margin}, {width - 2 * margin, scopeRowHeight - 2 * margin}});
    scopeArea_->addSubview(scope_);
    addSubview(field_);
    addSubview(cancelButton_);
    addSubview(scopeArea_);
    setClipsToBounds(true);
    return made;
}

void SearchBar::setText(objc::Object text) { field_->setText(utf8(text)); }
objc::Object SearchBar::placeholder() const { return nsString(field_->placeholder()); }
void SearchBar::setPlaceholder(objc::Object text) { field_->setPlaceholder(utf8(text)); }

void SearchBar::setScopeButtonTitles(objc::Object titles) {
    scopeTitles_ = objc::Strong<>::adopt(objc::send<"copy", objc::Object>(titles));
    scope_->removeAllSegments();
    const auto count = objc::send<"count", unsigned long>(titles);
    for (unsigned long i = 0; i < count; ++i)
        scope_->insertTitleAtIndexAnimated(objc::send<"objectAtIndex:", objc::Object>(titles, i), i, false);
    scope_->setSelectedSegmentIndex(count > 0 ? 0 : SegmentedControl::noSegment);
}

void SearchBar::setBarTintColor(objc::Object color) {
    barTintColor_ = objc::Strong<>(color);
    setBackgroundColor(color ? color : uiColor(barColor));
}

void SearchBar::setSelectedScopeButtonIndex(long index) { scope_->setSelectedSegmentIndex(index); }

void SearchBar::scopeTouched(objc::Object) {
    if (listener_.scopeChanged) listener_.scopeChanged(scope_->selectedSegmentIndex());
}

void SearchBar::setShowsScopeBar(bool shows) {
    showsScope_ = shows && scope_->numberOfSegments() > 0;
    scopeArea_->setHidden(!showsScope_);
    setNeedsLayout();
}

void SearchBar::setShowsCancelButtonAnimated(bool shows, bool animated) {
    if (shows == showsCancel_) return;
    showsCancel_ = shows;
    cancelButton_->setHidden(!shows);
    // On the standard, light ground the appearance's white would not be seen.
    if (barTintColor_)
        cancelButton_->setTintColor(objc::send<"tintColor", objc::Object>(BarButtonItem::appearance({}, {})));
    setNeedsLayout();
    if (!animated || !shows) return;
    const objc::Ref<Button> button = cancelButton_;
    constexpr double seconds = 0.25;
    animate(seconds, Curve::EaseOut, [button](double progress) { button->setAlpha(progress); });
}

Size SearchBar::sizeThatFits(Size size) {
    return {size.width, showsScope_ ? fieldRowHeight + scopeRowHeight : fieldRowHeight};
}

void SearchBar::layoutSubviews() {
    const double width = bounds().size.width;
    const double cancelWidth = std::max(leastCancelWidth, cancelButton_->sizeThatFits({}).width + margin);
    const double fieldWidth = width - 2 * margin - (showsCancel_ ? cancelWidth : 0);
    field_->setFrame({{margin, (fieldRowHeight - fieldHeight) / 2}, {fieldWidth, fieldHeight}});
    cancelButton_->setFrame({{width - margin - cancelWidth + margin / 2, 0}, {cancelWidth, fieldRowHeight}});
    // The scope control keeps the place that the screen gave it inside the area.
    scopeArea_->setFrame({{0, fieldRowHeight}, {width, scopeRowHeight}});
}

void SearchBar::drawAbove(graphics::Canvas& canvas) {
    canvas.horizontalHairline(0, bounds().size.width, bounds().size.height, palette::separator);
}

void SearchBar::type(std::string_view text) {
    field_->becomeFirstResponder();
    field_->setText(text);
    if (listener_.textChanged) listener_.textChanged();
}

void SearchBar::cancel() {
    field_->resignFirstResponder();
    if (listener_.cancelled) listener_.cancelled();
}

}  // namespace uikit
