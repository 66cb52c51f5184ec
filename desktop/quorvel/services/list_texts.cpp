// What a list counts, by the screen that is asked and the settings.
#include "desktop/quorvel/services/list_texts.h"

#include <algorithm>

#include "desktop/quorvel/services/plural_format.h"
#include "desktop/quorvel/services/settings_service.h"
#include "desktop/quorvel/services/texts.h"
#include "desktop/quorvel/visual/base_table_controller.h"
#include "desktop/quorvel/visual/call_time.h"
#include "desktop/uikit/text.h"
#include "desktop/uikit/title_request.h"

namespace quorvel {
namespace {

/// The keys of a format by what it counts; null where nothing of the kind is counted with it.
struct CountingKey {
    std::string_view calls;
    const char* entries;
    const char* days;
    bool isHeader;
};
constexpr CountingKey countingKeys[] = {{"ALL_SHOWING_D", "ALL_SHOWING_ENTRIES_D", "ALL_SHOWING_DAYS_D", true},
                                        {"DLD_SHOWING_D", "DLD_SHOWING_ENTRIES_D", nullptr, true},
                                        {"RCD_SHOWING_D", "RCD_SHOWING_ENTRIES_D", nullptr, true},
                                        {"MSD_SHOWING_D", "MSD_SHOWING_ENTRIES_D", nullptr, true},
                                        {"CALLS_D", "ENTRIES_D", nullptr, false},
                                        {"CALLS_D_D", "ENTRIES_D_D", nullptr, false}};

/// The day of a screen that stands for one; null for any other.
objc::Object dayOf(objc::Object screen) {
    if (!objc::respondsTo(screen, objc::selector<"dateEntry">())) return {};
    return objc::send<"grpByDate", objc::Object>(objc::send<"dateEntry", objc::Object>(screen));
}

objc::Strong<> textOf(const char* key) { return Texts::shared().text(uikit::nsString(key)); }

/// The same format behind the day's name.
objc::Strong<> onDay(const objc::Strong<>& format, const std::string& day) {
    const auto* plural = objc::peerIf<PluralFormat>(format.get());
    if (!plural || day.empty()) return format;
    std::string name;
    for (const char letter : day) name.append(letter == '%' ? 2 : 1, letter);
    PluralTexts texts = plural->texts();
    for (auto* forms : {&texts.byForm, &texts.withoutText})
        for (auto& [form, text] : *forms) text = name + " · " + text;
    return objc::Strong<>(objc::Object{PluralFormat::of(std::move(texts)).self()});
}

/// The header says the day; where the user has switched headers off, the footer does.
objc::Strong<> textOfDaysScreen(const CountingKey& key, const std::string& day) {
    const auto* settings = SettingsService::shared();
    if (key.isHeader) return onDay(textOf("DAY_SHOWING_D"), day);
    const auto counted = textOf(settings->mode().groupByContact ? key.entries : key.calls.data());
    return settings->value("isShowHeader_Call") != 0 ? counted : onDay(counted, day);
}

objc::Strong<> textOfRecents(const CountingKey& key) {
    const auto mode = SettingsService::shared()->mode();
    if (mode.groupByDate && key.days) return textOf(key.days);
    return textOf(mode.groupByContact ? key.entries : key.calls.data());
}

}  // namespace

objc::Strong<> textForList(objc::Object key) {
    const auto screen = uikit::dataSourceAskedForTitle();
    if (!screen) return Texts::shared().text(key);
    const std::string name = uikit::utf8(key);
    const auto* found = std::ranges::find(countingKeys, std::string_view(name), &CountingKey::calls);
    if (found == std::end(countingKeys)) return Texts::shared().text(key);
    if (!objc::isKindOf(screen, objc::classOf<BaseTableController>())) return textOfRecents(*found);
    // Of the companion's own lists, a history has single calls, however Recents is grouped.
    const auto day = dayOf(screen);
    return day ? textOfDaysScreen(*found, dayHeadline(uikit::utf8(day))) : Texts::shared().text(key);
}

}  // namespace quorvel
