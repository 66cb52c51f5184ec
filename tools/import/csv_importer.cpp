// Calls from comma-separated values: the header, then a call a record.
#include "tools/import/csv_importer.h"

#include <algorithm>
#include <array>

#include "tools/import/call_fields.h"

namespace tools {
namespace {

using quorvel::store::NewCall;
namespace flag = quorvel::store::flag;

constexpr std::int64_t latestDate = INT32_MAX;

std::string placeText(const Place& place) { return std::to_string(place.line) + ':' + std::to_string(place.column); }
Complaint complaintAt(const Place& place, std::string what) {
    return {placeText(place), std::move(what), Complaint::Reach::Call};
}
std::string quoted(const std::string& text) { return '"' + text + '"'; }

std::string lowerCase(std::string text) {
    std::transform(text.begin(), text.end(), text.begin(), [](char letter) {
        return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter + 32) : letter;
    });
    return text;
}

/// What contradicts the kind; empty where nothing does.
std::string contradiction(CallKind kind, std::int64_t duration) {
    if (kind == CallKind::Missed && duration > 0)
        return "A missed call has no duration. Call it received, or make it 0.";
    if (kind == CallKind::Cancelled && duration > 0)
        return "A cancelled call has no duration. Call it dialled, or make it 0.";
    if (kind == CallKind::Received && duration == 0)
        return "A received call lasts at least a second. Without a duration it is missed.";
    if (kind == CallKind::Dialled && duration == 0)
        return "A dialled call lasts at least a second. Without a duration it is cancelled.";
    return {};
}

}  // namespace

CsvImporter::CsvImporter(InputFile file)
    : file_(std::move(file)), reader_([this](std::span<char> space) { return file_.read(space); }) {}

std::string CsvImporter::place() const { return placeText(place_); }

Complaint CsvImporter::readError() {
    ended_ = true;
    return {placeText(place_), file_.trouble(), Complaint::Reach::File};
}

Importer::Item CsvImporter::next() {
    if (!headerRead_) {
        headerRead_ = true;
        if (auto complaint = readHeader()) {
            ended_ = true;
            complaint->reach = Complaint::Reach::File;
            return *std::move(complaint);
        }
    }
    if (ended_) return End{};
    auto read = reader_.next();
    if (!file_.trouble().empty()) return readError();
    if (auto* complaint = std::get_if<CsvComplaint>(&read)) return complaintAt(complaint->place, complaint->what);
    const auto* record = std::get_if<CsvRecord>(&read);
    if (!record) return End{};
    place_ = record->fields.front().place;
    if (record->fields.size() != columnCount_)
        return complaintAt(record->end, "The line has " + std::to_string(record->fields.size()) +
                                            " fields, and the header line " + std::to_string(columnCount_) + '.');
    auto call = callOf(*record);
    if (auto* wrong = std::get_if<Wrong>(&call)) return complaintAt(wrong->place, wrong->what);
    return std::get<NewCall>(std::move(call));
}

std::optional<Complaint> CsvImporter::readHeader() {
    auto read = reader_.next();
    if (!file_.trouble().empty()) return readError();
    if (auto* complaint = std::get_if<CsvComplaint>(&read)) return complaintAt(complaint->place, complaint->what);
    const auto* header = std::get_if<CsvRecord>(&read);
    if (!header) return complaintAt({}, "The file is empty. Its first line has to name the columns.");
    return takeColumns(*header);
}

std::optional<Complaint> CsvImporter::takeColumns(const CsvRecord& header) {
    static const std::array<std::pair<const char*, Column>, 8> known{{{"date", Column::Date},
                                                                      {"address", Column::Address},
                                                                      {"kind", Column::Kind},
                                                                      {"duration", Column::Duration},
                                                                      {"facetime", Column::FaceTime},
                                                                      {"name", Column::Name},
                                                                      {"contact", Column::Contact},
                                                                      {"location", Column::Location}}};
    constexpr std::size_t needed = 4;
    columnCount_ = header.fields.size();
    for (std::size_t i = 0; i < columnCount_; ++i) {
        const auto& name = header.fields[i];
        const auto* found = std::find_if(known.begin(), known.end(),
                                         [&](const auto& each) { return lowerCase(name.text) == each.first; });
        if (found == known.end()) continue;
        if (!columns_.emplace(found->second, i).second)
            return complaintAt(name.place, "The column " + quoted(name.text) + " stands there twice.");
    }
    for (std::size_t i = 0; i < needed; ++i)
        if (!columns_.contains(known[i].second))
            return complaintAt(header.fields.front().place,
                               "There is no column " + quoted(known[i].first) +
                                   ". The first line has to name date, address, kind and duration.");
    return std::nullopt;
}

const CsvField& CsvImporter::field(const CsvRecord& record, Column column) const {
    static const CsvField none;
    const auto found = columns_.find(column);
    return found == columns_.end() ? none : record.fields[found->second];
}

std::variant<NewCall, CsvImporter::Wrong> CsvImporter::callOf(const CsvRecord& record) {
    NewCall call;
    call.address = field(record, Column::Address).text;
    call.name = field(record, Column::Name).text;
    call.location = field(record, Column::Location).text;

    const auto& date = field(record, Column::Date);
    const auto time = parseTime(date.text, clock_);
    if (!time)
        return Wrong{date.place, quoted(date.text) +
                                     " is no date. It has to be in seconds since 1970, or as in "
                                     "2024-06-15T12:00:00Z."};
    if (*time < 0 || *time > latestDate)
        return Wrong{date.place, quoted(date.text) + " lies outside the years 1970 to 2037."};
    call.date = *time;

    const auto& duration = field(record, Column::Duration);
    const auto seconds = parseInteger(duration.text.empty() ? "0" : duration.text);
    if (!seconds || *seconds < 0 || *seconds > INT32_MAX)
        return Wrong{duration.place,
                     quoted(duration.text) + " is no duration. It has to be a whole number of seconds."};
    call.duration = static_cast<std::int32_t>(*seconds);

    const auto& kindField = field(record, Column::Kind);
    const auto kind = parseKind(kindField.text);
    if (!kind)
        return Wrong{kindField.place,
                     quoted(kindField.text) + " is no kind of call. It is dialled, cancelled, received or missed."};
    if (auto what = contradiction(*kind, *seconds); !what.empty()) return Wrong{duration.place, std::move(what)};
    if (*kind == CallKind::Dialled || *kind == CallKind::Cancelled) call.flags |= flag::outgoing;

    const auto& faceTime = field(record, Column::FaceTime);
    const auto service = lowerCase(faceTime.text);
    if (service == "audio") call.flags |= flag::faceTime | flag::faceTimeAudio;
    if (service == "video") call.flags |= flag::faceTime;
    if (!service.empty() && service != "audio" && service != "video")
        return Wrong{faceTime.place, quoted(faceTime.text) +
                                         " is neither audio nor video. Leave it empty for a call "
                                         "by telephone."};

    const auto& contact = field(record, Column::Contact);
    if (!contact.text.empty()) {
        const auto number = parseInteger(contact.text);
        if (!number || *number < 1 || *number > INT32_MAX)
            return Wrong{contact.place, quoted(contact.text) +
                                            " is no contact. It has to be the contact's number, "
                                            "from 1 on, or empty."};
        call.contactId = static_cast<std::int32_t>(*number);
    }
    return call;
}

}  // namespace tools
