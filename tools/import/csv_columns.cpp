// The names of columns, in the languages of the exports that people have.
#include "tools/import/csv_columns.h"

#include <algorithm>
#include <array>
#include <set>

#include "tools/import/written_fields.h"
#include "tools/text/words.h"

namespace tools {
namespace {

using Name = std::pair<std::string_view, CsvColumn>;

constexpr std::array<Name, 13> ownNames{{{"date", CsvColumn::Date},
                                         {"time", CsvColumn::Time},
                                         {"address", CsvColumn::Address},
                                         {"kind", CsvColumn::Kind},
                                         {"duration", CsvColumn::Duration},
                                         {"facetime", CsvColumn::FaceTime},
                                         {"name", CsvColumn::Name},
                                         {"label", CsvColumn::Label},
                                         {"contact", CsvColumn::Contact},
                                         {"location", CsvColumn::Location},
                                         {"flags", CsvColumn::Flags},
                                         {"face_time_data_size", CsvColumn::FaceTimeDataSize},
                                         {"extra", CsvColumn::Extra}}};

constexpr std::array<std::pair<CsvColumn, std::array<std::string_view, 16>>, 8> otherNames{{
    {CsvColumn::Date,
     {"datetime", "timestamp", "calldate", "calldatetime", "dateandtime", "datetimeutc", "starttime", "start",
      "started", "callstart", "datum", "datumuhrzeit", "fecha", "dateheure", "when"}},
    {CsvColumn::Time, {"timeofday", "calltime", "uhrzeit", "zeit", "heure", "hora", "ora"}},
    {CsvColumn::Address,
     {"number", "phonenumber", "phone", "telephone", "callernumber", "caller", "contactnumber", "mobile", "nummer",
      "rufnummer", "telefonnummer", "telefon", "numéro", "numero", "teléfono", "telefono"}},
    {CsvColumn::Kind,
     {"type", "calltype", "direction", "calldirection", "status", "art", "typ", "anrufart", "anruftyp", "richtung",
      "typedappel", "tipo", "sens"}},
    {CsvColumn::Duration,
     {"durations", "durationsec", "durationsecs", "durationseconds", "durationinseconds", "callduration", "length",
      "seconds", "talktime", "dauer", "gesprächsdauer", "dauersek", "durée", "duree", "duración", "duracion"}},
    {CsvColumn::Name,
     {"contactname", "callername", "displayname", "fullname", "cachedname", "kontakt", "kontaktname", "nom", "nombre",
      "naam"}},
    {CsvColumn::Label, {"numbertype", "numberlabel", "phonetype"}},
    {CsvColumn::Location, {"geocodedlocation", "place", "city", "ort", "lieu", "lugar"}},
}};

constexpr std::array<CsvColumn, 4> needed{CsvColumn::Date, CsvColumn::Address, CsvColumn::Kind, CsvColumn::Duration};

std::string_view nameOf(CsvColumn column) {
    return std::find_if(ownNames.begin(), ownNames.end(), [&](const Name& each) { return each.second == column; })
        ->first;
}

std::optional<CsvColumn> otherColumnOf(const std::string& name) {
    for (const auto& [column, names] : otherNames)
        if (std::find(names.begin(), names.end(), name) != names.end() && !name.empty()) return column;
    return std::nullopt;
}

/// Joins as in a sentence: "a, b".
void append(std::string& list, const std::string& text) { list += (list.empty() ? "" : ", ") + text; }

/// The names of the header as in a sentence: of many, the first.
std::string listOf(const CsvRecord& header) {
    constexpr std::size_t most = 30;
    std::string list;
    for (std::size_t at = 0; at < std::min(most, header.fields.size()); ++at)
        append(list, quoted(header.fields[at].text));
    if (header.fields.size() > most) list += " and " + std::to_string(header.fields.size() - most) + " more";
    return list;
}

}  // namespace

std::optional<CsvColumn> csvColumnOf(std::string_view name) {
    const auto found = std::find_if(ownNames.begin(), ownNames.end(),
                                    [lower = lowerCase(name)](const Name& each) { return each.first == lower; });
    return found == ownNames.end() ? std::nullopt : std::optional(found->second);
}

std::string csvColumnNames() {
    std::string names;
    for (const auto& [name, column] : ownNames) append(names, std::string(name));
    return names;
}

std::variant<CsvColumns, CsvColumns::Wrong> CsvColumns::of(const CsvRecord& header,
                                                           const std::map<std::string, std::string>& said) {
    CsvColumns columns;
    columns.count = header.fields.size();
    std::set<std::string> names;
    for (std::size_t at = 0; at < columns.count; ++at) {
        const CsvField& field = header.fields[at];
        columns.others[at] = field.text;
        if (!field.text.empty() && !names.insert(lowerCase(field.text)).second)
            return Wrong{field.place, "The column " + quoted(field.text) + " stands there twice."};
    }
    const auto settle = [&](auto&& columnOf) {
        for (std::size_t at = 0; at < columns.count; ++at) {
            const auto column = columns.others.contains(at) ? columnOf(header.fields[at].text) : std::nullopt;
            if (column && columns.known.emplace(*column, at).second) columns.others.erase(at);
        }
    };
    for (const auto& [name, field] : said)
        if (!names.contains(lowerCase(name)))
            return Wrong{header.fields.front().place,
                         "There is no column " + quoted(name) + " to map. The columns are " + listOf(header) + '.'};
    settle([&](const std::string& name) -> std::optional<CsvColumn> {
        for (const auto& [from, field] : said)
            if (lowerCase(from) == lowerCase(name)) return csvColumnOf(field);
        return std::nullopt;
    });
    settle([](const std::string& name) { return csvColumnOf(name); });
    settle([](const std::string& name) { return otherColumnOf(bareWord(name)); });
    // A time alone is a date's.
    if (const auto time = columns.known.find(CsvColumn::Time);
        time != columns.known.end() && !columns.known.contains(CsvColumn::Date)) {
        columns.known[CsvColumn::Date] = time->second;
        columns.known.erase(time);
    }
    for (const CsvColumn column : needed)
        if (!columns.known.contains(column))
            return Wrong{header.fields.front().place,
                         "There is no column " + quoted(std::string(nameOf(column))) + ". The first line names " +
                             listOf(header) +
                             ". Say which of them it is, as in --map \"COLUMN=" + std::string(nameOf(column)) + "\"."};
    return columns;
}

}  // namespace tools
