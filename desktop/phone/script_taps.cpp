// Fingers and keys of scripts.
#include "desktop/phone/script_taps.h"

#include <algorithm>

#include "desktop/phone/screen_probe.h"
#include "desktop/phone/show.h"
#include "desktop/uikit/sheet.h"

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

std::string tapRow(long row, bool detail) {
    auto* table = frontTable();
    if (!table) return noTable;
    const long rows = table->numberOfRowsInSection(0);
    if (row < 0 || row >= rows)
        return "there is no row " + std::to_string(row) + "; the table has " + std::to_string(rows);
    const bool taken = detail ? table->tapAccessory(row, 0) : table->tapRow(row, 0);
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

std::string tapText(const std::string& text) {
    auto* window = uikit::Application::shared()->keyWindow();
    auto* view = findView(window, [&](uikit::View* each) {
        if (auto* button = objc::peerIf<uikit::Button>(each->object()))
            return uikit::utf8(button->currentTitle()) == text;
        const auto texts = each->drawnTexts();
        return std::find(texts.begin(), texts.end(), text) != texts.end();
    });
    if (!view) return "nothing on the screen says " + phone::quoted(text);
    return tapView(view) ? "" : phone::quoted(text) + " is out of reach";
}

}  // namespace

std::string tap(const std::vector<Word>& words) {
    const Word& what = words[0];
    if (words.size() == 1) {
        if (what.quoted) return tapText(what.text);
        if (what.text == "left" || what.text == "right" || what.text == "back") return tapBar(what.text);
        return "tap " + what.text + " wants a number, or a title in quotes";
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
    if (!row || *row < 0 || *row >= table->numberOfRowsInSection(0))
        return "there is no row " + words[0].text + "; the table has " +
               std::to_string(table->numberOfRowsInSection(0));
    if (words.size() == 2 && words[1].text == "close") {
        table->hideDelete();
        return {};
    }
    if (words.size() == 2 && words[1].text != "open")
        return "swipe N takes open or close, not " + phone::quoted(words[1].text);
    if (!table->revealDelete(*row, 0)) return "row " + words[0].text + " cannot be swiped";
    if (words.size() == 1) table->confirmDelete();
    return {};
}

std::string scroll(const Word& where) {
    auto* table = frontTable();
    if (!table) return noTable;
    const double lowest = std::max(0.0, table->contentSize().height - table->bounds().size.height);
    const auto offset = wholeNumber(where.text);
    if (!offset && where.text != "end") return phone::quoted(where.text) + " is neither a number of points nor end";
    const double y = offset ? static_cast<double>(*offset) : lowest;
    table->setContentOffsetAnimated({0, std::clamp(y, 0.0, lowest)}, false);
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

}  // namespace phone
