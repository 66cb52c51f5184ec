// Times in words, by ICU.
#include "desktop/quorvel/visual/call_time.h"

#include <unicode/calendar.h>
#include <unicode/dtptngen.h>
#include <unicode/gregocal.h>
#include <unicode/reldatefmt.h>
#include <unicode/smpdtfmt.h>

#include <algorithm>
#include <cstdio>
#include <memory>

#include "desktop/quorvel/visual/sources.h"

namespace quorvel {
namespace {

constexpr double milliseconds = 1000;
constexpr std::int64_t weekdaysLast = 6;

using Format = std::unique_ptr<icu::DateFormat>;

/// The formats of one language in one time zone; making them takes milliseconds, so they are kept.
struct Formats {
    std::string language;
    icu::Locale locale;
    std::unique_ptr<icu::TimeZone> zone;
    Format clock;
    Format weekday;
    Format shortDate;
    Format exact;
    Format day;
    Format dayAndYear;
    std::string today;
    std::string yesterday;
};

icu::Locale localeOf(const std::string& language) {
    UErrorCode status = U_ZERO_ERROR;
    icu::Locale locale(language.c_str());
    locale.setKeywordValue("numbers", "latn", status);
    return locale;
}

std::string utf8(const icu::UnicodeString& text) {
    std::string result;
    return text.toUTF8String(result);
}

Format formatOf(const icu::Locale& locale, const char* skeleton) {
    UErrorCode status = U_ZERO_ERROR;
    return Format(icu::DateFormat::createInstanceForSkeleton(skeleton, locale, status));
}

std::string relativeDay(const icu::Locale& locale, UDateDirection direction) {
    UErrorCode status = U_ZERO_ERROR;
    const icu::RelativeDateTimeFormatter formatter(locale, nullptr, UDAT_STYLE_LONG,
                                                   UDISPCTX_CAPITALIZATION_FOR_BEGINNING_OF_SENTENCE, status);
    icu::UnicodeString text;
    if (U_SUCCESS(status)) formatter.format(direction, UDAT_ABSOLUTE_DAY, text, status);
    return U_SUCCESS(status) ? utf8(text) : std::string();
}

const Formats& formats() {
    static auto* const kept = new Formats;
    std::string language = sources().language();
    std::unique_ptr<icu::TimeZone> zone(icu::TimeZone::createDefault());
    if (kept->zone && kept->language == language && *kept->zone == *zone) return *kept;
    kept->language = std::move(language);
    kept->zone = std::move(zone);
    const icu::Locale locale = localeOf(kept->language);
    kept->locale = locale;
    kept->clock = formatOf(locale, "Hm");
    kept->weekday = formatOf(locale, "EEEE");
    kept->shortDate = Format(icu::DateFormat::createDateInstance(icu::DateFormat::kShort, locale));
    kept->exact = formatOf(locale, "yMMMdHm");
    kept->day = formatOf(locale, "EEEEMMMMd");
    kept->dayAndYear = formatOf(locale, "yEEEEMMMMd");
    for (Format* format : {&kept->clock, &kept->weekday, &kept->shortDate, &kept->exact, &kept->day, &kept->dayAndYear})
        if (*format) (*format)->setTimeZone(*kept->zone);
    kept->today = relativeDay(locale, UDAT_DIRECTION_THIS);
    kept->yesterday = relativeDay(locale, UDAT_DIRECTION_LAST);
    return *kept;
}

std::string formatted(const Format& format, std::int64_t time) {
    if (!format) return {};
    icu::UnicodeString text;
    return utf8(format->format(static_cast<UDate>(time) * milliseconds, text));
}

struct Day {
    std::int64_t number = 0;  // consecutive from one day to the next
    int year = 0;
};

Day dayOf(std::int64_t time) {
    UErrorCode status = U_ZERO_ERROR;
    icu::GregorianCalendar calendar(*formats().zone, status);
    calendar.setTime(static_cast<UDate>(time) * milliseconds, status);
    const Day day{calendar.get(UCAL_JULIAN_DAY, status), calendar.get(UCAL_EXTENDED_YEAR, status)};
    return U_SUCCESS(status) ? day : Day{};
}

std::string headline(std::int64_t time) {
    const bool isThisYear = dayOf(time).year == dayOf(sources().now()).year;
    return formatted(isThisYear ? formats().day : formats().dayAndYear, time);
}

}  // namespace

std::string clockTime(std::int64_t time) { return formatted(formats().clock, time); }

std::string exactTime(std::int64_t time) { return formatted(formats().exact, time); }

std::string listTime(std::int64_t time) {
    const std::int64_t daysAgo = dayOf(sources().now()).number - dayOf(time).number;
    if (daysAgo == 0) return clockTime(time);
    if (daysAgo == 1) return formats().yesterday;
    if (daysAgo > 1 && daysAgo <= weekdaysLast) return formatted(formats().weekday, time);
    return formatted(formats().shortDate, time);
}

std::string dayName(std::int64_t time) {
    const std::int64_t daysAgo = dayOf(sources().now()).number - dayOf(time).number;
    if (daysAgo == 0) return formats().today;
    if (daysAgo == 1) return formats().yesterday;
    return headline(time);
}

std::string dayHeadline(const std::string& day) {
    int year = 0;
    int month = 0;
    int date = 0;
    if (std::sscanf(day.c_str(), "%d-%d-%d", &year, &month, &date) != 3) return {};
    UErrorCode status = U_ZERO_ERROR;
    icu::GregorianCalendar calendar(*formats().zone, status);
    constexpr int noon = 12;
    calendar.clear();
    calendar.setLenient(false);
    calendar.set(year, month - 1, date, noon, 0, 0);
    const UDate time = calendar.getTime(status);
    return U_SUCCESS(status) ? headline(static_cast<std::int64_t>(time / milliseconds)) : std::string();
}

std::string durationText(std::int64_t seconds) {
    constexpr std::int64_t minute = 60;
    constexpr std::int64_t hour = 3600;
    seconds = std::max<std::int64_t>(seconds, 0);
    const auto hours = static_cast<long long>(seconds / hour);
    const auto minutes = static_cast<long long>(seconds % hour / minute);
    const auto rest = static_cast<long long>(seconds % minute);
    char text[40];
    if (hours > 0)
        std::snprintf(text, sizeof text, "%lld:%02lld:%02lld", hours, minutes, rest);
    else
        std::snprintf(text, sizeof text, "%lld:%02lld", minutes, rest);
    return text;
}

}  // namespace quorvel
