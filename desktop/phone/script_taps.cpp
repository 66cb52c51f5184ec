// Fingers and keys of scripts.
#include "desktop/phone/script_taps.h"

#include <algorithm>
#include <map>

#include "desktop/phone/screen_probe.h"
#include "desktop/phone/show.h"
#include "desktop/uikit/sheet.h"
#include "desktop/uikit/text_field.h"

namespace phone {
namespace {

const std::string noTable = "there is no table on the screen";

std::string tapSegment(uikit::SegmentedControl* segments, long index, const char* what) {
    if (!segments) return std::string("there is no ") + what + " control on the screen";
    if (index < 0 || static_cast<unsigned long>(index) >= segments->numberOfSegments())
        return std::string("there is no ") + what + ' ' + std::to_string(index) + "; the control has " +
               std::to_string(segments->numberOfSegments());
    const uikit::Rect rect = segments->segmentRect(static_cast<unsigned long>(index));
    tapPoint(segments->pointToWindow(rect.centre()));
    return {};
}

std::string tapScope(long index) {
    auto* search = frontSearch();
    if (!search || search->searchBar()->scopeArea()->isHidden()) return "no search is on, so there is no scope to tap";
    return tapSegment(search->searchBar()->scopeControl(), index, "scope");
}

std::string tapTag(long tag) {
    auto* search = frontSearch();
    auto* button = search ? search->searchBar()->scopeArea()->viewWithTag(tag) : nullptr;
    if (!button || button->isHidden()) return "there is no visible button with tag " + std::to_string(tag);
    return tapView(button) ? "" : "the button with tag " + std::to_string(tag) + " is out of reach";
}

std::string noRow(uikit::TableView* table, const std::string& row) {
    return "there is no row " + row + "; the table has " + std::to_string(rowCount(table));
}

std::string tapRow(long row, bool detail) {
    auto* table = frontTable();
    if (!table) return noTable;
    const auto place = rowPlace(table, row);
    if (!place) return noRow(table, std::to_string(row));
    const bool taken =
        detail ? table->tapAccessory(place->row, place->section) : table->tapRow(place->row, place->section);
    return taken ? "" : "row " + std::to_string(row) + (detail ? " has no detail button" : " cannot be tapped");
}

std::string tapBar(const std::string& place) {
    auto* navigation = frontNavigation();
    if (!navigation) return "there is no navigation bar";
    auto* bar = navigation->navigationBar();
    if (place == "back" && !bar->isBackShown()) return "there is no back button";
    if (place == "left" && bar->isBackShown()) return "there is no left button";
    auto* view = place == "right" ? bar->rightView() : bar->leftView();
    if (!view) return "there is no " + place + " button";
    return tapView(view) ? "" : "the " + place + " button is out of reach";
}

/// Buttons first: what they stand on may say their titles, too.
std::string tapText(const std::string& text) {
    auto* window = uikit::Application::shared()->keyWindow();
    auto* view = findView(window, [&](uikit::View* each) {
        auto* button = objc::peerIf<uikit::Button>(each->object());
        return button && uikit::utf8(button->currentTitle()) == text;
    });
    if (!view)
        view = findView(window, [&](uikit::View* each) {
            const auto texts = each->drawnTexts();
            return std::find(texts.begin(), texts.end(), text) != texts.end();
        });
    if (!view) return "nothing on the screen says " + phone::quoted(text);
    return tapView(view) ? "" : phone::quoted(text) + " is out of reach";
}

bool isNumbered(const std::string& what) {
    return what == "row" || what == "detail" || what == "segment" || what == "scope" || what == "tag";
}

bool bringIntoView(const std::string& row) {
    auto* table = frontTable();
    const auto number = wholeNumber(row);
    const auto place = table && number ? rowPlace(table, *number) : std::nullopt;
    if (!place) return false;
    const double before = table->contentOffset().y;
    table->scrollToRow(uikit::indexPath(*place), uikit::TableView::scrollNone, false);
    return table->contentOffset().y != before;
}

}  // namespace

bool bringTappedRowIntoView(const std::vector<Word>& words) {
    const bool isRow = words.size() == 2 && (words[0].text == "row" || words[0].text == "detail");
    return isRow && bringIntoView(words[1].text);
}

bool bringSwipedRowIntoView(const std::vector<Word>& words) { return bringIntoView(words[0].text); }

std::string tap(const std::vector<Word>& words) {
    const Word& what = words[0];
    if (words.size() == 1) {
        if (what.quoted) return tapText(what.text);
        if (what.text == "left" || what.text == "right" || what.text == "back") return tapBar(what.text);
        if (isNumbered(what.text)) return "tap " + what.text + " wants a number";
        return "cannot tap " + phone::quoted(what.text) + "; a title stands in quotes";
    }
    const auto index = wholeNumber(words[1].text);
    if (!index) return phone::quoted(words[1].text) + " is not a whole number";
    if (what.text == "row") return tapRow(*index, false);
    if (what.text == "detail") return tapRow(*index, true);
    if (what.text == "segment") return tapSegment(titleSegments(), *index, "segment");
    if (what.text == "scope") return tapScope(*index);
    if (what.text == "tag") return tapTag(*index);
    return "cannot tap " + phone::quoted(what.text);
}

std::string swipe(const std::vector<Word>& words) {
    auto* table = frontTable();
    if (!table) return noTable;
    const auto row = wholeNumber(words[0].text);
    const auto place = row ? rowPlace(table, *row) : std::nullopt;
    if (!place) return noRow(table, words[0].text);
    if (words.size() == 2 && words[1].text == "close") {
        table->hideDelete();
        return {};
    }
    if (words.size() == 2 && words[1].text != "open")
        return "swipe N takes open or close, not " + phone::quoted(words[1].text);
    if (!table->revealDelete(place->row, place->section)) return "row " + words[0].text + " cannot be swiped";
    if (words.size() == 1) table->confirmDelete();
    return {};
}

std::string scroll(const Word& where) {
    auto* table = frontTable();
    if (!table) return noTable;
    table->layoutIfNeeded();
    const auto offset = wholeNumber(where.text);
    if (!offset && where.text != "end") return phone::quoted(where.text) + " is neither a number of points nor end";
    const double y = offset ? static_cast<double>(*offset) : table->greatestOffset();
    table->setContentOffsetAnimated({0, std::clamp(y, table->leastOffset(), table->greatestOffset())}, false);
    table->layoutIfNeeded();
    // Coming to rest is what the screen remembers the place by.
    const objc::Object delegate = table->delegate();
    if (delegate && objc::respondsTo(delegate, objc::selector<"scrollViewDidEndDecelerating:">()))
        objc::send<"scrollViewDidEndDecelerating:">(delegate, table->object());
    return {};
}

std::string search(const std::string& text) {
    auto* search = frontSearch();
    if (!search || !search->searchBar()->superview()) return "the screen has no search bar";
    search->searchBar()->type(text);
    return {};
}

std::string cancelSearch() {
    auto* search = frontSearch();
    if (!search || !search->isActive()) return "no search is on";
    search->searchBar()->cancel();
    return {};
}

namespace {

/// What the keyboard belongs to; null where nothing is edited.
uikit::Responder* editor() {
    auto* responder = uikit::firstResponder();
    return responder && responder->isFirstResponder() ? responder : nullptr;
}
const std::string noKeyboard = "nothing has the keyboard; tap a field first";

}  // namespace

std::string type(const std::string& text) {
    auto* responder = editor();
    if (!responder) return noKeyboard;
    responder->insertText(text);
    return {};
}

std::string erase() {
    auto* responder = editor();
    if (!responder) return noKeyboard;
    auto* field = objc::peerIf<uikit::TextField>(responder->object());
    if (!field) return "what has the keyboard is no field";
    responder->pressKey(uikit::Responder::EditingKey::End);
    while (!field->string().empty()) {
        const std::string before = field->string();
        responder->pressKey(uikit::Responder::EditingKey::Backspace);
        if (field->string() == before) return "the field does not let its text go";
    }
    return {};
}

std::string pressKey(const std::string& name) {
    using Key = uikit::Responder::EditingKey;
    static const std::map<std::string, Key> keys{
        {"backspace", Key::Backspace}, {"delete", Key::Delete}, {"left", Key::Left},     {"right", Key::Right},
        {"home", Key::Home},           {"end", Key::End},       {"return", Key::Return}, {"escape", Key::Escape}};
    const auto found = keys.find(name);
    if (found == keys.end()) return "there is no key " + phone::quoted(name);
    auto* responder = editor();
    if (!responder) return noKeyboard;
    responder->pressKey(found->second);
    return {};
}

}  // namespace phone
