// Calls from comma-separated values: the header, then a call a record.
#include "tools/import/csv_importer.h"

#include "tools/csv/csv_formula.h"
#include "tools/import/call_fields.h"
#include "tools/import/written_fields.h"
#include "tools/text/words.h"

namespace tools {
namespace {

using quorvel::store::NewCall;
namespace flag = quorvel::store::flag;

constexpr std::int64_t latestDate = INT32_MAX;

std::string placeText(const Place& place) { return std::to_string(place.line) + ':' + std::to_string(place.column); }
Complaint complaintAt(const Place& place, std::string what) {
    return {placeText(place), std::move(what), Complaint::Reach::Call};
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

/// The letters of the head that a comma, a tab or a line's end can be among.
char delimiterOfFile(InputFile& file) {
    std::string head;
    for (const char letter : file.head())
        if (letter != '\0') head += letter;
    return delimiterOf(head);
}

}  // namespace

CsvImporter::CsvImporter(InputFile file, ImportOptions options)
    : file_(std::move(file)),
      options_(std::move(options)),
      text_(file_),
      reader_([this](std::span<char> space) { return text_.read(space); }, delimiterOfFile(file_)) {}

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
    auto* record = std::get_if<CsvRecord>(&read);
    if (!record) return End{};
    for (auto& field : record->fields) field.text = textOfCell(field.text);
    place_ = record->fields.front().place;
    if (record->fields.size() != columns_.count)
        return complaintAt(record->end, "The line has " + std::to_string(record->fields.size()) +
                                            " fields, and the header line " + std::to_string(columns_.count) + '.');
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
    auto columns = CsvColumns::of(*header, options_.columns);
    if (auto* wrong = std::get_if<Wrong>(&columns)) return complaintAt(wrong->place, std::move(wrong->what));
    columns_ = std::get<CsvColumns>(std::move(columns));
    return std::nullopt;
}

const CsvField& CsvImporter::field(const CsvRecord& record, CsvColumn column) const {
    static const CsvField none;
    const auto found = columns_.known.find(column);
    return found == columns_.known.end() ? none : record.fields[found->second];
}

std::variant<NewCall, CsvImporter::Wrong> CsvImporter::callOf(const CsvRecord& record) {
    NewCall call;
    RawCall rest;
    call.address = field(record, CsvColumn::Address).text;
    call.name = field(record, CsvColumn::Name).text;
    call.label = field(record, CsvColumn::Label).text;
    call.location = field(record, CsvColumn::Location).text;
    if (auto wrong = readDate(record, call)) return *std::move(wrong);
    if (auto wrong = readKind(record, call, rest)) return *std::move(wrong);
    if (auto wrong = readFaceTime(record, call)) return *std::move(wrong);
    if (auto wrong = readFlags(record, call)) return *std::move(wrong);
    if (auto wrong = readContact(record, call)) return *std::move(wrong);
    readRest(record, call, rest);
    return call;
}

CsvImporter::MaybeWrong CsvImporter::readDate(const CsvRecord& record, NewCall& call) {
    const CsvField& date = field(record, CsvColumn::Date);
    const CsvField& clock = field(record, CsvColumn::Time);
    const std::string text = clock.text.empty() ? date.text : date.text + ' ' + clock.text;
    const auto order = options_.monthFirst ? DateOrder::MonthFirst : DateOrder::DayFirst;
    const auto time = parseWrittenTime(text, clock_, order);
    if (!time)
        return Wrong{date.place,
                     quoted(text) +
                         " is no date. It has to be in seconds since 1970, or as in 2024-06-15T12:00:00Z or "
                         "15.06.2024 12:00. Where months stand before days, say --month-first."};
    if (*time < 0 || *time > latestDate)
        return Wrong{date.place, quoted(text) + " lies outside the years 1970 to 2037."};
    call.date = *time;
    return std::nullopt;
}

CsvImporter::MaybeWrong CsvImporter::readKind(const CsvRecord& record, NewCall& call, RawCall& rest) const {
    const CsvField& duration = field(record, CsvColumn::Duration);
    const auto seconds = duration.text.empty() ? 0 : parseWrittenDuration(duration.text);
    if (!seconds || *seconds > INT32_MAX)
        return Wrong{duration.place,
                     quoted(duration.text) + " is no duration. It has to be in seconds, or as in 1:03 or 1m 3s."};
    call.duration = static_cast<std::int32_t>(*seconds);
    const CsvField& written = field(record, CsvColumn::Kind);
    const auto own = parseKind(written.text);
    const auto kind = own ? own : parseWrittenKind(written.text);
    if (!kind)
        return Wrong{written.place,
                     quoted(written.text) + " is no kind of call. It is dialled, cancelled, received or missed."};
    if (*kind == CallKind::Dialled || *kind == CallKind::Cancelled) call.flags |= flag::outgoing;
    if (own) {
        auto what = contradiction(*kind, *seconds);
        return what.empty() ? std::nullopt : MaybeWrong(Wrong{duration.place, std::move(what)});
    }
    // Others count ringing, and messages left, as a duration.
    const bool isAnswered = *kind == CallKind::Dialled || *kind == CallKind::Received;
    if (!isAnswered && *seconds > 0) {
        call.duration = 0;
        rest.set("duration", duration.text);
    }
    const bool wasAnsweredInNoTime = isAnswered && *seconds == 0;
    const bool isNumber = parseInteger(written.text).has_value();
    if (wasAnsweredInNoTime || isNumber || saysMoreThanKind(written.text)) rest.set("kind", written.text);
    return std::nullopt;
}

CsvImporter::MaybeWrong CsvImporter::readFaceTime(const CsvRecord& record, NewCall& call) const {
    const CsvField& written = field(record, CsvColumn::FaceTime);
    const std::string service = bareWord(written.text);
    if (service == "audio") call.flags |= flag::faceTime | flag::faceTimeAudio;
    if (service == "video") call.flags |= flag::faceTime;
    if (service.empty() || service == "audio" || service == "video") return std::nullopt;
    return Wrong{written.place,
                 quoted(written.text) + " is neither audio nor video. Leave it empty for a call by telephone."};
}

CsvImporter::MaybeWrong CsvImporter::readFlags(const CsvRecord& record, NewCall& call) const {
    const CsvField& written = field(record, CsvColumn::Flags);
    if (!written.text.empty()) {
        const auto flags = parseInteger(written.text);
        if (!flags || *flags < INT32_MIN || *flags > INT32_MAX)
            return Wrong{written.place, quoted(written.text) + " are no flags. They are a whole number."};
        const auto bits = static_cast<std::int32_t>(*flags);
        const std::int32_t said = flag::outgoing | (columns_.known.contains(CsvColumn::FaceTime) ? flag::faceTime : 0) |
                                  ((call.flags & flag::faceTime) != 0 ? flag::faceTimeAudio : 0);
        if ((bits & said) != (call.flags & said))
            return Wrong{written.place,
                         "The flags contradict the kind or the service. Mend one of them, or leave the "
                         "flags empty."};
        call.flags = bits;
    }
    const CsvField& bytes = field(record, CsvColumn::FaceTimeDataSize);
    const auto size = bytes.text.empty() ? 0 : parseInteger(bytes.text);
    if (!size || *size < INT32_MIN || *size > INT32_MAX)
        return Wrong{bytes.place, quoted(bytes.text) + " is no number of bytes."};
    call.faceTimeDataSize = static_cast<std::int32_t>(*size);
    return std::nullopt;
}

CsvImporter::MaybeWrong CsvImporter::readContact(const CsvRecord& record, NewCall& call) const {
    const CsvField& contact = field(record, CsvColumn::Contact);
    if (contact.text.empty()) return std::nullopt;
    const auto number = parseInteger(contact.text);
    if (!number || *number < 0 || *number > INT32_MAX)
        return Wrong{contact.place, quoted(contact.text) +
                                        " is no contact. It has to be the contact's number, or empty. For a name, say "
                                        "--map \"COLUMN=name\"."};
    call.contactId = static_cast<std::int32_t>(*number);
    return std::nullopt;
}

void CsvImporter::readRest(const CsvRecord& record, NewCall& call, RawCall& rest) const {
    call.extra = field(record, CsvColumn::Extra).text;
    bool hasAny = !rest.isEmpty();
    for (const auto& [at, name] : columns_.others) {
        hasAny = hasAny || !record.fields[at].text.empty();
        rest.set(name, record.fields[at].text);
    }
    if (!hasAny) return;
    if (!call.extra.empty()) rest.set("extra", call.extra);
    call.extra = rest.rest("csv");
}

}  // namespace tools
