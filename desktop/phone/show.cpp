// The screen in words.
#include "desktop/phone/show.h"

#include <cmath>

#include "desktop/phone/screen_probe.h"
#include "desktop/quorvel/visual/progress_hud.h"
#include "desktop/uikit/sheet.h"

namespace phone {
namespace {

using Lines = std::vector<std::string>;

Lines& openedUrls() {
    static Lines urls;
    return urls;
}

std::string className(objc::Object object) { return class_getName(object_getClass(object.self)); }

std::string number(double value) {
    char text[32];
    std::snprintf(text, sizeof text, "%g", std::round(value * 100) / 100);
    return text;
}

void describeBars(Lines& lines, uikit::ViewController* screen) {
    auto* item = objc::peerOf<uikit::NavigationItem>(screen->navigationItem());
    const std::string title = uikit::utf8(item->title());
    if (!title.empty() && !item->titleView()) lines.push_back("title " + quoted(title));
    if (auto* segments = titleSegments())
        lines.push_back("segments " + std::to_string(segments->numberOfSegments()) + " selected " +
                        std::to_string(segments->selectedSegmentIndex()));
    auto nameOf = [](uikit::BarButtonItem* button) { return button ? button->description() : std::string("-"); };
    lines.push_back("left " + nameOf(item->leftBarButtonItem()));
    lines.push_back("right " + nameOf(item->rightBarButtonItem()));
    auto* navigation = frontNavigation();
    const bool back = navigation && navigation->navigationBar()->isBackShown();
    lines.push_back(back ? "back shown" : "back hidden");
}

void describeSearch(Lines& lines) {
    auto* search = frontSearch();
    if (!search) return;
    auto* bar = search->searchBar();
    lines.push_back(std::string("search ") + (bar->superview() && !bar->isHidden() ? "shown" : "hidden") + " text " +
                    quoted(bar->field()->text()) + " scope " + std::to_string(bar->selectedScopeButtonIndex()));
    for (const long tag : {1L, 2L}) {
        auto* button = bar->scopeArea()->viewWithTag(tag);
        if (button && button != bar->scopeArea())
            lines.push_back("tag " + std::to_string(tag) + (button->isHidden() ? " hidden" : " shown"));
    }
}

std::string describeRow(const uikit::TableView::VisibleRow& row) {
    std::string line = "row " + std::to_string(row.row);
    for (const auto& text : textsOf(row.cell)) line += ' ' + quoted(text);
    if (className(row.cell->object()) == "QVLoadMoreRecordsCell") return line + " more";
    constexpr long disclosure = 1;
    constexpr long detailDisclosure = 2;
    constexpr long detail = 4;
    const long accessory = row.cell->accessoryType();
    if (accessory == disclosure) line += " disclosure";
    if (accessory == detailDisclosure || accessory == detail) line += " detail";
    return line;
}

void describeTable(Lines& lines) {
    auto* table = frontTable();
    if (!table) return;
    lines.push_back("offset " + number(table->contentOffset().y));
    lines.push_back("rows " + std::to_string(table->numberOfRowsInSection(0)));
    if (const auto header = table->titleForHeader(0); !header.empty()) lines.push_back("header " + quoted(header));
    for (const auto& row : table->visibleRows()) lines.push_back(describeRow(row));
    if (const auto footer = table->titleForFooter(0); !footer.empty()) lines.push_back("footer " + quoted(footer));
}

void describeSheet(Lines& lines) {
    auto* sheet = uikit::frontSheet();
    if (!sheet) return;
    const auto& content = sheet->content();
    if (content.style == uikit::Sheet::Style::Alert) {
        lines.push_back(
            "alert " +
            quoted(content.title + (content.title.empty() || content.message.empty() ? "" : "\n") + content.message));
        return;
    }
    std::string line = "sheet " + quoted(content.title);
    for (const auto& choice : content.choices) {
        const char* role = choice.role == uikit::Sheet::Role::Destructive ? " destructive "
                           : choice.role == uikit::Sheet::Role::Cancel    ? " cancel "
                                                                          : " button ";
        line += role + quoted(choice.title);
    }
    lines.push_back(line);
}

}  // namespace

std::string quoted(const std::string& text) {
    std::string result = "\"";
    for (const char letter : text) {
        if (letter == '"' || letter == '\\') result += '\\';
        if (letter == '\n')
            result += "\\n";
        else
            result += letter;
    }
    return result + '"';
}

void noteUrl(const std::string& address) { openedUrls().push_back(address); }

std::vector<std::string> describeScreen() {
    Lines lines;
    if (auto* screen = frontScreen()) {
        lines.push_back("screen " + className(screen->object()));
        std::string stack = "stack";
        if (auto* navigation = frontNavigation())
            for (const auto& each : navigation->stack()) stack += ' ' + className(each->object());
        lines.push_back(stack);
        describeBars(lines, screen);
        describeSearch(lines);
        describeTable(lines);
    }
    describeSheet(lines);
    for (auto* hud : quorvel::visibleIndicators()) lines.push_back("hud " + quoted(uikit::utf8(hud->labelText())));
    for (const auto& address : openedUrls()) lines.push_back("url " + address);
    openedUrls().clear();
    return lines;
}

}  // namespace phone
