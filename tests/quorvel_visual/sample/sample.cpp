// Draws the companion's rows, indicator, sheet and header, to be looked at: quorvel_visual_sample FOLDER
#include <unicode/timezone.h>

#include <cstdio>

#include "desktop/dispatch/clock.h"
#include "desktop/quorvel/visual/block_action_sheet.h"
#include "desktop/quorvel/visual/call_cell.h"
#include "desktop/quorvel/visual/load_more_cell.h"
#include "desktop/quorvel/visual/person_header.h"
#include "desktop/quorvel/visual/progress_hud.h"
#include "desktop/quorvel/visual/sources.h"
#include "desktop/quorvel/visual/visual.h"
#include "desktop/uikit/application.h"
#include "tests/quorvel_visual/entry.h"

namespace {

using namespace quorvel;
using quorvel::test::Entry;
using uikit::Rect;

constexpr int now = 1795269600;  // 21 November 2026, 15:00 in Berlin
constexpr int hour = 3600;
constexpr int day = 24 * hour;
constexpr double width = 320;

std::string folder;

struct Screen {
    Screen() { window->makeKeyAndVisible(); }
    void save(const char* name) {
        dispatch::Clock::advanceTo(dispatch::Clock::now() + 1);
        uikit::stepAnimations();
        const graphics::Image image({width, 568}, 2);
        graphics::Canvas canvas(image);
        window->renderScreen(canvas);
        const auto failure = image.writePng(folder + "/" + name + ".png");
        if (!failure.empty()) std::fprintf(stderr, "%s\n", failure.c_str());
    }
    CallCell* row(Entry::Fields fields, double height, void (*setUp)(CallCell&)) {
        const auto entry = Entry::make(std::move(fields));
        auto cell = objc::Ref<CallCell>::make<"initWithStyle:reuseIdentifier:">(0L, objc::Object{});
        cell->setFrame({{0, y}, {width, height}});
        cell->setAccessoryType(CallCell::detailButton);
        cell->setCallEntry(entry->object());
        setUp(*cell);
        window->addSubview(cell);
        auto line = objc::Ref<uikit::View>::make<"initWithFrame:">(Rect{{15, y + height - 0.5}, {width - 15, 0.5}});
        line->setBackgroundColor(uikit::uiColor(uikit::palette::separator));
        window->addSubview(line);
        y += height;
        return cell;
    }

    objc::Ref<uikit::Window> window = objc::Ref<uikit::Window>::make<"initWithFrame:">(Rect{{}, {width, 568}});
    double y = 20;
};

void calls(Screen& screen) {
    auto plain = [](CallCell& cell) { cell.setShowGroupCount(true); };
    const Entry::Fields fields[] = {
        {.name = "Anna Berg", .number = "+4930123456", .label = "mobile", .date = now - hour, .contact = 1},
        {.name = "Jürgen Weiß-Großmann",
         .number = "+49",
         .label = "Arbeit",
         .date = now - 20 * hour,
         .contact = 2,
         .count = 3,
         .outgoing = true},
        {.name = "ليلى منصور", .number = "+20", .label = "جوال", .date = now - 2 * day, .contact = 3, .missed = true},
        {.name = "王小明", .number = "+86", .label = "手机", .date = now - 3 * day, .contact = 4},
        {.name = "🎸 Max Müller",
         .number = "+49",
         .label = "home",
         .date = now - 5 * day,
         .contact = 5,
         .count = 12,
         .missed = true},
        {.number = "+49 30 901820", .location = "Berlin, Germany", .date = now - 8 * day, .missed = true},
        {.number = "0800 330 1000", .date = now - 40 * day, .outgoing = true},
        {.name = "Donaudampfschifffahrtsgesellschaftskapitän Müller",
         .label = "Hauptnummer der Zentrale im dritten Stock",
         .date = now - 3 * day,
         .contact = 7,
         .count = 128},
        {.name = "Ελένη Παπαδοπούλου",
         .label = "mobile",
         .date = now - 200,
         .contact = 8,
         .faceTime = true,
         .faceTimeVideo = true},
        {.name = "Kim", .label = "mobile", .date = now - 100, .contact = 9, .outgoing = true, .faceTime = true},
    };
    for (const auto& each : fields) screen.row(each, 50, plain);
}

void days() {
    Screen screen;
    auto asDay = [](CallCell& cell) { cell.setShowGroupByDateCell(true); };
    screen.row({.day = "2026-11-21",
                .date = now,
                .dialled = 12,
                .received = 8,
                .missedCalls = 3,
                .dialledSeconds = 3723,
                .receivedSeconds = 754},
               95, asDay);
    screen.row(
        {.day = "2026-11-20", .date = now - day, .dialled = 0, .received = 1, .missedCalls = 0, .receivedSeconds = 12},
        95, asDay);
    screen.row({.day = "2025-09-03",
                .date = now - 400 * day,
                .dialled = 1204,
                .received = 998,
                .missedCalls = 1113,
                .dialledSeconds = 37230,
                .receivedSeconds = 35400},
               95, asDay);
    auto asHistory = [](CallCell& cell) {
        cell.setShowLogCell(true);
        cell.setAccessoryType(CallCell::none);
    };
    screen.row({.number = "+49 30 901820", .date = now - hour, .duration = 185, .outgoing = true}, 50, asHistory);
    screen.row({.number = "+49 30 901820", .date = now - day, .missed = true}, 50, asHistory);
    screen.row({.number = "anna@example.org",
                .date = now - 9 * day,
                .duration = 4385,
                .faceTime = true,
                .faceTimeVideo = true},
               50, asHistory);
    auto more = objc::Ref<LoadMoreCell>::make<"initWithStyle:reuseIdentifier:">(0L, objc::Object{});
    more->setFrame({{0, screen.y}, {width, 50}});
    auto spinner = objc::Ref<uikit::ActivityIndicator>::make<"initWithActivityIndicatorStyle:">(2L);
    more->setAccessoryView(spinner);
    spinner->startAnimating();
    auto label = objc::Ref<uikit::Label>::make<"initWithFrame:">(more->bounds());
    label->setTag(1);
    label->setString("Loading more…");
    label->setTextAlignment(1);
    label->setFontValue(graphics::Font::boldSystem(18));
    label->setColorValue(uikit::Color::gray(1.0 / 3));
    more->contentView()->addSubview(label);
    screen.window->addSubview(more);
    screen.save("days");
}

void header() {
    Screen screen;
    auto records = objc::sendClass<"NSMutableArray", "array", objc::Object>();
    for (int i = 0; i < 8; ++i)
        objc::send<"addObject:">(records, Entry::make({.date = now - i * 2000,
                                                       .duration = i == 2 ? 0 : 61 * i + 12,
                                                       .missed = i == 2,
                                                       .outgoing = i % 3 == 0,
                                                       .faceTime = i == 3,
                                                       .faceTimeVideo = true})
                                              ->object());
    auto view = objc::Ref<PersonHeader>::make<"initWithFrame:">(Rect{});
    view->setCallRecords(records);
    view->setFrame(view->frame().translated(0, 40));
    screen.window->addSubview(view);
    screen.save("header");
}

}  // namespace

int main(int count, char** arguments) {
    if (count < 2) {
        std::fprintf(stderr, "usage: quorvel_visual_sample FOLDER\n");
        return 2;
    }
    folder = arguments[1];
    const objc::AutoreleasePool pool;
    registerVisualClasses();
    icu::TimeZone::adoptDefault(icu::TimeZone::createTimeZone("Europe/Berlin"));
    dispatch::Clock::useVirtual(1);
    uikit::setScreen({width, 568}, 2);
    sources() = {[] { return std::int64_t{now}; },
                 [count, arguments] { return std::string(count > 2 ? arguments[2] : "en"); },
                 [] { return true; },
                 [](int) { return objc::Object{}; },
                 [](const std::string& number) { return number; },
                 [](const char* key) { return std::string(key) == "CALL_HISTORY" ? "Call history" : key; }};
    {
        Screen screen;
        calls(screen);
        screen.save("calls");
        auto* hud = ProgressHud::showAddedTo(objc::classOf<ProgressHud>(), screen.window, true);
        const auto brand = uikit::uiColor(uikit::palette::brand);
        hud->setColor(uikit::uiColor(uikit::Color::gray(247.0 / 255)));
        hud->setLabelColor(brand);
        hud->setLabelText(uikit::nsString("Loading"));
        hud->setActivityIndicatorTintColor(brand);
        hud->setOpacity(0.75F);
        screen.save("hud");
        hud->removeFromSuperview();
        auto sheet = objc::Ref<BlockActionSheet>::make<"initWithTitle:">(uikit::nsString("All calls will be deleted."));
        sheet->setDestructiveButton(uikit::nsString("Delete all"), nullptr);
        sheet->setCancelButton(uikit::nsString("Cancel"), nullptr);
        sheet->showInView(screen.window);
        screen.save("sheet");
    }
    sources().showsPictures = [] { return false; };
    {
        Screen screen;
        calls(screen);
        screen.save("plain");
    }
    days();
    header();
    return 0;
}
