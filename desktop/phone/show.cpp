// The screen in words.
#include "desktop/phone/show.h"

#include <cmath>

#include "desktop/addressbookui/card_cell.h"
#include "desktop/addressbookui/card_header.h"
#include "desktop/phone/calling_screen.h"
#include "desktop/phone/screen_probe.h"
#include "desktop/quorvel/visual/progress_hud.h"
#include "desktop/uikit/sheet.h"
#include "desktop/uikit/text_field.h"

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

const char* emphasis(const addressbookui::CardRow& row) {
    using Emphasis = addressbookui::CardRow::Emphasis;
    if (row.emphasis == Emphasis::important) return " important";
    return row.emphasis == Emphasis::highlighted ? " highlighted" : "";
}

std::string describeRow(uikit::TableView* table, const uikit::TableView::VisibleRow& row) {
    std::string line = "row " + std::to_string(rowNumber(table, {row.section, row.row}));
    for (const auto& text : textsOf(row.cell)) line += ' ' + quoted(text);
    if (className(row.cell->object()) == "QVLoadMoreRecordsCell") return line + " more";
    if (auto* card = objc::peerIf<addressbookui::CardCell>(row.cell->object())) line += emphasis(card->row());
    constexpr long disclosure = 1;
    constexpr long detailDisclosure = 2;
    constexpr long detail = 4;
    const long accessory = row.cell->isEditing() ? 0 : row.cell->accessoryType();
    if (accessory == disclosure) line += " disclosure";
    if (accessory == detailDisclosure || accessory == detail) line += " detail";
    return line;
}

std::string quotedTexts(const std::vector<std::string>& texts) {
    std::string line;
    for (const auto& text : texts) line += ' ' + quoted(text);
    return line;
}

/// Above the rows of a person: the card's top, and what the application added to it.
void describeCard(Lines& lines, uikit::TableView* table) {
    auto* above = table->tableHeaderView();
    auto* card = above ? objc::peerIf<addressbookui::CardHeader>(above->object()) : nullptr;
    if (!card) return;
    lines.push_back("card" + quotedTexts(card->drawnTexts()));
    for (const auto& added : card->subviews()) lines.push_back("added" + quotedTexts(textsOf(added.get())));
}

void describeRows(Lines& lines, uikit::TableView* table) {
    const long last = table->numberOfSections() - 1;
    const auto band = [&](const char* word, const std::string& title) {
        if (!title.empty()) lines.push_back(word + quoted(title));
    };
    if (last >= 0) band("header ", table->titleForHeader(0));
    for (const auto& row : table->visibleRows()) {
        if (row.section > 0 && row.row == 0) band("header ", table->titleForHeader(row.section));
        lines.push_back(describeRow(table, row));
        const bool ends = row.row + 1 == table->numberOfRowsInSection(row.section);
        if (row.section < last && ends) band("footer ", table->titleForFooter(row.section));
    }
    if (last >= 0) band("footer ", table->titleForFooter(last));
}

void describeTable(Lines& lines) {
    auto* table = frontTable();
    if (!table) return;
    lines.push_back("offset " + number(table->contentOffset().y));
    lines.push_back("rows " + std::to_string(rowCount(table)));
    describeCard(lines, table);
    describeRows(lines, table);
    if (auto* field =
            uikit::firstResponder() ? objc::peerIf<uikit::TextField>(uikit::firstResponder()->object()) : nullptr)
        lines.push_back("editing " + quoted(field->string()));
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
    if (auto* call = CallingScreen::front()) lines.push_back("call" + quotedTexts(call->drawnTexts()));
    describeSheet(lines);
    for (auto* hud : quorvel::visibleIndicators()) lines.push_back("hud " + quoted(uikit::utf8(hud->labelText())));
    for (const auto& address : openedUrls()) lines.push_back("url " + address);
    openedUrls().clear();
    return lines;
}

}  // namespace phone
