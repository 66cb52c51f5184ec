// Where keys and typed text go.
#include "desktop/phone/keyboard.h"

#include "desktop/phone/calling_screen.h"
#include "desktop/phone/keypad_screen.h"
#include "desktop/phone/screen_probe.h"
#include "desktop/uikit/search_bar.h"
#include "desktop/uikit/sheet.h"

namespace phone {
namespace {

using EditingKey = uikit::Responder::EditingKey;
using graphics::KeyCode;

std::optional<EditingKey> editingKey(KeyCode code) {
    switch (code) {
        case KeyCode::Backspace:
            return EditingKey::Backspace;
        case KeyCode::Delete:
            return EditingKey::Delete;
        case KeyCode::Left:
            return EditingKey::Left;
        case KeyCode::Right:
            return EditingKey::Right;
        case KeyCode::Home:
            return EditingKey::Home;
        case KeyCode::End:
            return EditingKey::End;
        case KeyCode::Return:
            return EditingKey::Return;
        case KeyCode::Escape:
            return EditingKey::Escape;
        default:
            return std::nullopt;
    }
}

bool isBlocked() {
    auto* window = uikit::Application::shared()->keyWindow();
    return !window || !window->isUserInteractionEnabled() || uikit::frontSheet() || CallingScreen::front();
}

/// The front-most view of that class in or below the view; null for none.
template <class Wanted>
Wanted* find(uikit::View* view) {
    auto* found = findView(view, [](uikit::View* each) { return objc::peerIf<Wanted>(each->object()) != nullptr; });
    return found ? objc::peerOf<Wanted>(found->object()) : nullptr;
}

uikit::SearchBar* searchBar() { return find<uikit::SearchBar>(uikit::Application::shared()->keyWindow()); }

/// The list in front: what a search found lies in the list that was searched.
uikit::TableView* listInFront() {
    auto* table = find<uikit::TableView>(uikit::Application::shared()->keyWindow());
    if (!table) return nullptr;
    for (const auto& each : table->subviews())
        if (auto* inner = find<uikit::TableView>(each)) return inner;
    return table;
}

KeypadScreen* keypad() {
    const auto keypadOf = [](uikit::View* view) {
        return view && view->controller() ? objc::peerIf<KeypadScreen>(view->controller()->object()) : nullptr;
    };
    return keypadOf(findView(uikit::Application::shared()->keyWindow(), keypadOf));
}

/// What typed text goes to; null for nothing.
uikit::Responder* typedInto() {
    if (isBlocked()) return nullptr;
    if (auto* editor = uikit::firstResponder()) return editor;
    if (auto* bar = searchBar()) return bar->field();
    return keypad();
}

void answerSheet(uikit::Sheet& sheet, KeyCode code) {
    const auto& choices = sheet.content().choices;
    for (std::size_t i = 0; i < choices.size(); ++i) {
        const bool cancels = code == KeyCode::Escape && choices[i].role == uikit::Sheet::Role::Cancel;
        const bool only = code == KeyCode::Return && choices.size() == 1;
        if (cancels || only) return sheet.dismiss(static_cast<long>(i), true);
    }
}

/// How far a key moves the list, in points; nothing for keys that move none.
double scrollOf(KeyCode code, double page) {
    constexpr double line = 50;
    switch (code) {
        case KeyCode::Up:
            return -line;
        case KeyCode::Down:
            return line;
        case KeyCode::PageUp:
            return line - page;
        case KeyCode::PageDown:
            return page - line;
        default:
            return 0;
    }
}

}  // namespace

void typeText(const std::string& text) {
    auto* responder = typedInto();
    // The keypad never has the keyboard: nobody would take it back when another tab is chosen.
    if (responder && responder == keypad()) return responder->insertText(text);
    if (responder && (responder->isFirstResponder() || responder->becomeFirstResponder())) responder->insertText(text);
}

void pressKey(KeyCode code) {
    if (auto* sheet = uikit::frontSheet()) return answerSheet(*sheet, code);
    if (auto* call = CallingScreen::front(); call && code == KeyCode::Escape) return call->hangUp();
    if (isBlocked()) return;
    const auto key = editingKey(code);
    if (auto* editor = uikit::firstResponder(); editor && key) return editor->pressKey(*key);
    if (auto* digits = keypad(); digits && key) return digits->pressKey(*key);
    auto* bar = searchBar();
    if (code == KeyCode::Escape && bar && bar->showsCancelButton()) return bar->cancel();
    auto* table = listInFront();
    const double distance = table ? scrollOf(code, table->bounds().size.height) : 0;
    if (distance != 0) table->scrollWheel({0, distance});
}

std::optional<uikit::Rect> typingArea() {
    auto* responder = typedInto();
    auto* view = responder ? objc::peerIf<uikit::View>(responder->object()) : nullptr;
    if (responder && !view) view = keypad()->view();
    if (!view) return std::nullopt;
    return uikit::Rect{view->pointToWindow(view->bounds().origin), view->bounds().size};
}

}  // namespace phone
