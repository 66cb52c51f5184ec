// The head, then a call an object.
#include "tools/import/json_importer.h"

#include <array>
#include <utility>

#include "tools/calls/json_fields.h"
#include "tools/text/words.h"

namespace tools {
namespace {

using quorvel::store::NewCall;

constexpr const char* notOurs =
    "The JSON holds no calls that this program exported: it has to begin with \"format\": \"quorvel-calls\".";

}  // namespace

Complaint JsonImporter::complaint(std::string what, Complaint::Reach reach) const {
    return {reader_.place(), std::move(what), reach};
}

Importer::Item JsonImporter::broken() {
    hasEnded_ = true;
    place_ = reader_.place();
    if (!file_.trouble().empty()) return complaint(file_.trouble(), Complaint::Reach::File);
    return complaint("From here on the file cannot be read. " + reader_.trouble(), Complaint::Reach::Call);
}

std::optional<Complaint> JsonImporter::begin() {
    constexpr auto wholeFile = Complaint::Reach::File;
    if (!reader_.expect('{')) return complaint(notOurs, wholeFile);
    bool isOurs = false;
    for (bool isFirst = true; !reader_.take('}'); isFirst = false) {
        if (!isFirst && !reader_.expect(',')) return complaint(reader_.trouble(), wholeFile);
        const auto name = reader_.name();
        if (!name) return complaint(reader_.trouble(), wholeFile);
        if (*name == json::format && reader_.next() == '"') {
            const auto format = reader_.text();
            isOurs = format && *format == json::formatOfCalls;
            if (!isOurs) break;
        } else if (*name == json::version) {
            const auto version = reader_.integer();
            if (isOurs && version && *version > json::versionOfCalls)
                return complaint("The file was exported by a later version of this program. Update the program.",
                                 wholeFile);
        } else if (*name == json::calls && isOurs) {
            if (!reader_.expect('[')) return complaint(reader_.trouble(), wholeFile);
            return std::nullopt;
        } else {
            reader_.pass();
        }
        if (!reader_.trouble().empty()) return complaint(reader_.trouble(), wholeFile);
    }
    return complaint(isOurs ? "The file has no \"calls\"." : notOurs, wholeFile);
}

Importer::Item JsonImporter::next() {
    if (hasEnded_) return End{};
    if (!hasBegun_) {
        hasBegun_ = true;
        if (auto wrong = begin()) {
            hasEnded_ = true;
            if (!file_.trouble().empty()) wrong->what = file_.trouble();
            return *std::move(wrong);
        }
    }
    if (reader_.take(']')) return finish();
    if (std::exchange(hasCall_, true) && !reader_.expect(',')) return broken();
    return readCall();
}

Importer::Item JsonImporter::finish() {
    hasEnded_ = true;
    while (reader_.take(',')) {
        if (!reader_.name() || !reader_.pass()) return broken();
    }
    if (!reader_.expect('}') || !file_.trouble().empty()) return broken();
    if (reader_.next() == '\0') return End{};
    return complaint("Something follows behind the calls. The file may have been put together from several.",
                     Complaint::Reach::Call);
}

Importer::Item JsonImporter::readCall() {
    reader_.next();
    place_ = reader_.place();
    if (!reader_.expect('{')) return broken();
    NewCall call;
    bool hasDate = false;
    std::string wrong;
    for (bool isFirst = true; !reader_.take('}'); isFirst = false) {
        if (!isFirst && !reader_.expect(',')) return broken();
        const auto name = reader_.name();
        if (!name) return broken();
        hasDate = hasDate || *name == json::date;
        std::string what = readField(*name, call);
        if (!reader_.trouble().empty()) return broken();
        if (wrong.empty()) wrong = std::move(what);
    }
    if (wrong.empty() && !hasDate) wrong = "The call has no \"date\".";
    if (!wrong.empty()) return Complaint{place_, std::move(wrong), Complaint::Reach::Call};
    return call;
}

std::string JsonImporter::readField(const std::string& name, NewCall& call) {
    std::int64_t number = 0;
    const auto readInto = [&](std::int32_t& field, std::int64_t least) {
        std::string wrong = readNumber(name, least, INT32_MAX, number);
        field = static_cast<std::int32_t>(number);
        return wrong;
    };
    if (name == json::date) return readNumber(name, 0, INT32_MAX, call.date);
    if (name == json::duration) return readInto(call.duration, 0);
    if (name == json::flags) return readInto(call.flags, INT32_MIN);
    if (name == json::contact) return readInto(call.contactId, INT32_MIN);
    if (name == json::faceTimeDataSize) return readInto(call.faceTimeDataSize, INT32_MIN);
    const std::array<std::pair<const char*, std::string*>, 5> texts{{{json::address, &call.address},
                                                                     {json::name, &call.name},
                                                                     {json::label, &call.label},
                                                                     {json::location, &call.location},
                                                                     {json::extra, &call.extra}}};
    for (const auto& [known, text] : texts)
        if (name == known) return readText(name, *text);
    reader_.pass();
    return {};
}

std::string JsonImporter::readText(const std::string& name, std::string& text) {
    if (reader_.next() != '"') {
        reader_.pass();
        return quoted(name) + " has to be a text.";
    }
    auto read = reader_.text();
    if (!read) return quoted(name) + " is longer than a mebibyte.";
    text = *std::move(read);
    return {};
}

std::string JsonImporter::readNumber(const std::string& name, std::int64_t least, std::int64_t greatest,
                                     std::int64_t& number) {
    const auto read = reader_.integer();
    if (!read || *read < least || *read > greatest)
        return quoted(name) + " has to be a whole number from " + std::to_string(least) + " to " +
               std::to_string(greatest) + '.';
    number = *read;
    return {};
}

}  // namespace tools
