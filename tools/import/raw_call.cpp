// What fields of other sources mean as a call.
#include "tools/import/raw_call.h"

#include <algorithm>
#include <charconv>
#include <cmath>

#include "tools/import/call_fields.h"
#include "tools/json/json_text.h"
#include "tools/text/words.h"

namespace tools {
namespace {

using quorvel::store::NewCall;
namespace flag = quorvel::store::flag;

constexpr std::int64_t latestDate = INT32_MAX;
/// Seconds from 1970 to 2001.
constexpr std::int64_t startOf2001 = 978307200;
/// What the handset's databases mark a blocked call with.
constexpr std::int32_t blocked = 8;

std::optional<double> parseNumber(const std::string& text) {
    double value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc() || end != text.data() + text.size() || !std::isfinite(value)) return std::nullopt;
    return value;
}

/// Sets the date of seconds since 1970; the sentence where it cannot be one.
std::string setDate(NewCall& call, double seconds, const std::string& text) {
    if (!(seconds >= 0 && seconds <= static_cast<double>(latestDate)))
        return "The date " + quoted(text) + " lies outside the years 1970 to 2037.";
    call.date = static_cast<std::int64_t>(seconds);
    return {};
}

std::string noDate(const std::string& text) {
    return text.empty() ? "The call has no date." : quoted(text) + " is no date.";
}

/// Whole seconds; a call that was answered at all lasts one. Nothing where the text is no duration.
std::optional<std::int32_t> durationOf(const std::string& text) {
    if (text.empty()) return 0;
    const auto seconds = parseNumber(text);
    if (!seconds || *seconds < 0 || *seconds > INT32_MAX) return std::nullopt;
    if (*seconds > 0 && *seconds < 1) return 1;
    return static_cast<std::int32_t>(*seconds);
}

/// Takes the field where its text holds nothing but whole seconds, so that a fraction is not lost.
void takeWhole(RawCall& raw, std::string_view name) {
    if (parseInteger(raw.at(name))) raw.take(name);
}

std::string noDuration(const std::string& text) { return quoted(text) + " is no duration in seconds."; }

std::int32_t integerOr(const std::string& text, std::int32_t otherwise) {
    const auto value = parseInteger(text);
    return value && *value >= INT32_MIN && *value <= INT32_MAX ? static_cast<std::int32_t>(*value) : otherwise;
}

/// The words and codes that stand for a caller who withheld the number.
bool isWithheld(const std::string& number) {
    return number == "-1" || number == "-2" || number == "-3" || number == "null";
}

std::string androidLabel(RawCall& raw) {
    static constexpr const char* labels[] = {"", "home", "mobile", "work", "work fax", "home fax", "pager", "other"};
    const auto type = parseInteger(raw.at("numbertype"));
    if (!type || *type < 0 || *type > 7) return {};
    raw.take("numbertype");
    return *type == 0 ? raw.take("numberlabel") : labels[*type];
}

}  // namespace

std::size_t RawCall::find(std::string_view name) const {
    if (!places_.empty()) {
        const auto place = places_.find(std::string(name));
        return place == places_.end() ? none : place->second;
    }
    const auto found =
        std::find_if(fields_.begin(), fields_.end(), [&](const auto& each) { return each.first == name; });
    return found == fields_.end() ? none : static_cast<std::size_t>(found - fields_.begin());
}

void RawCall::set(std::string name, std::string value) {
    // Calls have a handful of fields, which are found faster without a table.
    constexpr std::size_t few = 64;
    if (const auto place = find(name); place != none) {
        fields_[place].second = std::move(value);
        return;
    }
    if (fields_.size() == few)
        for (std::size_t at = 0; at < few; ++at) places_.emplace(fields_[at].first, at);
    if (!places_.empty()) places_.emplace(name, fields_.size());
    fields_.emplace_back(std::move(name), std::move(value));
}

const std::string& RawCall::at(std::string_view name) const {
    static const std::string empty;
    const auto place = find(name);
    return place == none ? empty : fields_[place].second;
}

std::string RawCall::take(std::string_view name) {
    const auto place = find(name);
    return place == none ? std::string() : std::exchange(fields_[place].second, {});
}

std::string RawCall::rest(std::string_view source) const {
    std::string object = "{\"source\":" + jsonText(source);
    for (const auto& [name, value] : fields_)
        if (!value.empty()) object += ',' + jsonText(name) + ':' + jsonText(value);
    return object += '}';
}

CallOrWrong callOfAndroid(RawCall raw) {
    enum Type { incoming = 1, outgoing = 2, missed = 3, refused = 6, elsewhere = 7 };
    NewCall call;
    if (!isWithheld(raw.at("number"))) call.address = raw.take("number");
    const auto milliseconds = parseInteger(raw.at("date"));
    if (!milliseconds) return noDate(raw.at("date"));
    if (auto wrong = setDate(call, static_cast<double>(*milliseconds) / 1000, raw.at("date")); !wrong.empty())
        return wrong;
    if (*milliseconds % 1000 == 0) raw.take("date");

    const auto type = parseInteger(raw.at("type"));
    if (!type) return quoted(raw.at("type")) + " is no type of call.";
    const auto duration = durationOf(raw.at("duration"));
    if (!duration) return noDuration(raw.at("duration"));
    if (*type == outgoing) call.flags |= flag::outgoing;
    if (*type == refused) call.flags |= blocked;
    // A type of the maker's own is taken as it looks: by its length.
    const bool isAnswered = *type == incoming || *type == outgoing || *type == elsewhere || *type > elsewhere;
    if (isAnswered) call.duration = *duration;
    if (isAnswered || *duration == 0) raw.take("duration");
    if (*type >= incoming && *type <= missed) raw.take("type");

    for (const char* name : {"name", "contact_name"})
        if (auto text = raw.take(name); !text.empty() && text != "(Unknown)" && text != "null")
            call.name = std::move(text);
    call.label = androidLabel(raw);
    call.location = raw.take("geocoded_location");
    raw.take("_id");
    call.extra = raw.rest("android");
    return call;
}

CallOrWrong callOfHandset(RawCall raw) {
    // Unix seconds of the handset's years are above this, seconds since 2001 below.
    constexpr double leastUnixSeconds = 1.16e9;
    NewCall call;
    call.address = raw.take("address");
    const auto date = parseNumber(raw.at("date"));
    if (!date) return noDate(raw.at("date"));
    const double since1970 = *date < leastUnixSeconds ? *date + static_cast<double>(startOf2001) : *date;
    if (auto wrong = setDate(call, since1970, raw.at("date")); !wrong.empty()) return wrong;
    takeWhole(raw, "date");
    const auto duration = durationOf(raw.at("duration"));
    if (!duration) return noDuration(raw.at("duration"));
    call.duration = *duration;
    takeWhole(raw, "duration");
    const auto flags = parseInteger(raw.at("flags"));
    if (flags) call.flags = static_cast<std::int32_t>(*flags);
    if (flags && *flags == call.flags) raw.take("flags");
    call.name = raw.take("name");
    const auto bytes = parseInteger(raw.at("face_time_data"));
    if (bytes && *bytes >= 0 && *bytes <= INT32_MAX) {
        call.faceTimeDataSize = static_cast<std::int32_t>(*bytes);
        raw.take("face_time_data");
    }
    raw.take("ROWID");
    call.extra = raw.rest("call_history.db");
    return call;
}

CallOrWrong callOfLaterStore(RawCall raw) {
    enum Type { video = 8, audio = 16 };
    NewCall call;
    call.address = raw.take("ZADDRESS");
    const auto date = parseNumber(raw.at("ZDATE"));
    if (!date) return noDate(raw.at("ZDATE"));
    if (auto wrong = setDate(call, *date + static_cast<double>(startOf2001), raw.at("ZDATE")); !wrong.empty())
        return wrong;
    if (*date == std::floor(*date)) raw.take("ZDATE");
    const auto duration = durationOf(raw.at("ZDURATION"));
    if (!duration) return noDuration(raw.at("ZDURATION"));
    call.duration = *duration;
    const auto exact = parseNumber(raw.at("ZDURATION")).value_or(0);
    if (exact == std::floor(exact)) raw.take("ZDURATION");
    if (integerOr(raw.take("ZORIGINATED"), 0) != 0) call.flags |= flag::outgoing;
    const auto type = integerOr(raw.at("ZCALLTYPE"), 1);
    if (type == video || type == audio) call.flags |= flag::faceTime;
    if (type == audio) call.flags |= flag::faceTimeAudio;
    if (type == video || type == audio || type == 1) raw.take("ZCALLTYPE");
    call.name = raw.take("ZNAME");
    call.location = raw.take("ZLOCATION");
    const auto bytes = parseInteger(raw.at("ZFACE_TIME_DATA"));
    if (bytes && *bytes >= 0 && *bytes <= INT32_MAX) {
        call.faceTimeDataSize = static_cast<std::int32_t>(*bytes);
        raw.take("ZFACE_TIME_DATA");
    }
    for (const char* ofTheDatabase : {"Z_PK", "Z_ENT", "Z_OPT"}) raw.take(ofTheDatabase);
    call.extra = raw.rest("CallHistory.storedata");
    return call;
}

CallOrWrong callOfOwnLog(RawCall raw) {
    NewCall call;
    const auto date = parseInteger(raw.at("date"));
    if (!date) return noDate(raw.at("date"));
    if (auto wrong = setDate(call, static_cast<double>(*date), raw.at("date")); !wrong.empty()) return wrong;
    const auto duration = durationOf(raw.at("duration"));
    if (!duration) return noDuration(raw.at("duration"));
    call.duration = *duration;
    call.flags = integerOr(raw.at("flags"), 0);
    call.contactId = integerOr(raw.at("id"), quorvel::store::noContact);
    call.faceTimeDataSize = integerOr(raw.at("face_time_data_size"), 0);
    call.address = raw.take("address");
    call.name = raw.take("name");
    call.label = raw.take("label");
    call.location = raw.take("location");
    call.extra = raw.take("extra");
    return call;
}

}  // namespace tools
