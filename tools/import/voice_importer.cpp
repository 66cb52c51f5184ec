// libxml2's reader of HTML shows the elements; those with the classes of a call are kept until the page's end.
#include "tools/import/voice_importer.h"

#include <libxml/HTMLparser.h>

#include <algorithm>
#include <map>
#include <new>

#include "tools/import/call_fields.h"
#include "tools/import/written_fields.h"
#include "tools/text/words.h"

namespace tools {
namespace {

using quorvel::store::NewCall;

constexpr std::size_t tailBytes = 64;
constexpr std::size_t longestText = std::size_t{1} << 16;
constexpr int deepest = 1000;
// libxml2 takes time by the square of an element's attributes, and looks at an element once it is whole. So the squares
// of what is longer than elements are have a bound.
constexpr std::uint64_t pieceOfTheParser = 4096, longestElement = 8192, mostWork = 10'000'000'000;

/// What it may cost when the parser takes that many bytes at once.
std::uint64_t workOf(std::uint64_t bytes) {
    const std::uint64_t excess = bytes - std::min(bytes, longestElement);
    return excess * excess;
}

std::string_view textOf(const unsigned char* text) { return text ? reinterpret_cast<const char*>(text) : ""; }

bool hasClass(std::string_view classes, std::string_view name) {
    while (!classes.empty()) {
        const auto end = std::min(classes.find(' '), classes.size());
        if (classes.substr(0, end) == name) return true;
        classes.remove_prefix(std::min(end + 1, classes.size()));
    }
    return false;
}

std::string trimmed(const std::string& text) {
    const auto begin = text.find_first_not_of(" \t\r\n");
    return begin == std::string::npos ? "" : text.substr(begin, text.find_last_not_of(" \t\r\n") - begin + 1);
}

void passError(void*, const char*, ...) {}

}  // namespace

void VoiceImporter::Free::operator()(_xmlParserCtxt* parser) const { htmlFreeParserCtxt(parser); }

VoiceImporter::VoiceImporter(InputFile file) : QueuedImporter(std::move(file)) {
    htmlSAXHandler handler{};
    handler.startElement = [](void* self, const xmlChar* name, const xmlChar** attributes) {
        static_cast<VoiceImporter*>(self)->beginElement(tools::textOf(name), attributes);
    };
    handler.endElement = [](void* self, const xmlChar*) { static_cast<VoiceImporter*>(self)->endElement(); };
    handler.comment = [](void* self, const xmlChar*) { static_cast<VoiceImporter*>(self)->moveOn(); };
    handler.cdataBlock = [](void* self, const xmlChar*, int) { static_cast<VoiceImporter*>(self)->moveOn(); };
    handler.ignorableWhitespace = handler.cdataBlock;
    handler.processingInstruction = [](void* self, const xmlChar*, const xmlChar*) {
        static_cast<VoiceImporter*>(self)->moveOn();
    };
    handler.characters = [](void* self, const xmlChar* text, int size) {
        static_cast<VoiceImporter*>(self)->takeText(
            {reinterpret_cast<const char*>(text), static_cast<std::size_t>(size)});
    };
    handler.error = passError;
    handler.warning = passError;
    handler.fatalError = passError;
    parser_.reset(htmlCreatePushParserCtxt(&handler, this, nullptr, 0, nullptr, XML_CHAR_ENCODING_UTF8));
    if (!parser_) throw std::bad_alloc();
    htmlCtxtUseOptions(parser_.get(), HTML_PARSE_RECOVER | HTML_PARSE_NONET);
}

void VoiceImporter::take(std::string_view piece) {
    tail_.append(piece.substr(piece.size() - std::min(piece.size(), tailBytes)));
    tail_.erase(0, tail_.size() - std::min(tail_.size(), tailBytes));
    for (; !piece.empty(); piece.remove_prefix(std::min<std::size_t>(piece.size(), pieceOfTheParser))) {
        const auto part = piece.substr(0, pieceOfTheParser);
        open_ += part.size();
        if (work_ + workOf(open_) > mostWork) {
            stop();
            found("1", Complaint{"1", "The page holds elements that are far larger than Google Voice makes them.",
                                 Complaint::Reach::Call});
            return;
        }
        htmlParseChunk(parser_.get(), part.data(), static_cast<int>(part.size()), 0);
    }
}

void VoiceImporter::moveOn() {
    work_ += workOf(open_);
    open_ = 0;
}

void VoiceImporter::takeEnd() {
    htmlParseChunk(parser_.get(), "", 0, 1);
    if (isOfMessages_ && !isOfCall_) return;
    const auto complain = [this](std::string what, Complaint::Reach reach) {
        found("1", Complaint{"1", std::move(what), reach});
    };
    if (!isOfCall_)
        return complain("The page holds no call of Google Voice. Name the pages of the folder Calls in its export.",
                        Complaint::Reach::File);
    if (tail_.find("</html>") == std::string::npos)
        return complain("The page was cut off. Unpack it again.", Complaint::Reach::Call);
    auto read = call();
    if (auto* wrong = std::get_if<std::string>(&read)) return complain(std::move(*wrong), Complaint::Reach::Call);
    found("1", std::get<NewCall>(std::move(read)));
}

void VoiceImporter::collect(Within within) {
    within_ = within;
    collectedAt_ = depth_;
}

void VoiceImporter::beginElement(std::string_view name, const unsigned char** attributes) {
    moveOn();
    ++depth_;
    if (depth_ > deepest) xmlStopParser(parser_.get());
    std::map<std::string_view, std::string_view> values;
    for (; attributes && attributes[0]; attributes += 2)
        values[tools::textOf(attributes[0])] = tools::textOf(attributes[1]);
    const auto classes = values["class"];
    isOfCall_ = isOfCall_ || hasClass(classes, "haudio");
    isOfMessages_ = isOfMessages_ || hasClass(classes, "hChatLog");
    if (name == "a" && hasClass(classes, "tel") && numberAt_ == 0 && number_.empty()) {
        numberAt_ = depth_;
        const auto link = values["href"];
        number_ = link.starts_with("tel:") ? link.substr(4) : link;
    } else if (hasClass(classes, "fn") && numberAt_ > 0) {
        collect(Within::Name);
    } else if (hasClass(classes, "full-text")) {
        collect(Within::Transcript);
    } else if (hasClass(classes, "deletedStatusContainer")) {
        collect(Within::Deleted);
    } else if (name == "abbr" && hasClass(classes, "published")) {
        published_ = values["title"];
    } else if (name == "abbr" && hasClass(classes, "duration")) {
        duration_ = values["title"];
    } else if (name == "audio") {
        recording_ = values["src"];
    } else if (name == "a" && values["rel"] == "tag" && labels_.size() < 100) {
        const auto link = values["href"];
        labels_.emplace(link.substr(std::min(link.rfind('#') + 1, link.size())));
    }
}

void VoiceImporter::endElement() {
    moveOn();
    if (depth_ == collectedAt_) within_ = Within::Nothing;
    if (depth_ == collectedAt_) collectedAt_ = 0;
    if (depth_ == numberAt_) numberAt_ = 0;
    --depth_;
}

void VoiceImporter::takeText(std::string_view text) {
    moveOn();
    if (within_ == Within::Nothing) return;
    std::string& collected = within_ == Within::Name ? name_ : within_ == Within::Transcript ? transcript_ : deleted_;
    if (collected.size() < longestText) collected += text;
}

CallOrWrong VoiceImporter::call() {
    NewCall call;
    LocalClock clock;
    const auto date = parseTime(published_, clock);
    if (!date || *date < 0 || *date > INT32_MAX) return tools::quoted(published_) + " is no date of a call.";
    const auto seconds = duration_.empty() ? 0 : parseWrittenDuration(duration_);
    if (!seconds || *seconds > INT32_MAX) return tools::quoted(duration_) + " is no duration.";
    call.date = *date;
    call.address = number_;
    call.name = trimmed(name_);
    RawCall rest;
    const bool isMissed = labels_.contains("missed") || labels_.contains("voicemail");
    const bool isAnswered = labels_.contains("received") || labels_.contains("recorded");
    if (labels_.contains("placed")) {
        call.flags = quorvel::store::flag::outgoing;
        call.duration = static_cast<std::int32_t>(*seconds);
    } else if (isMissed) {
        rest.set("duration", duration_);
    } else if (isAnswered) {
        call.duration = static_cast<std::int32_t>(std::max<std::int64_t>(*seconds, 1));
        if (*seconds == 0) rest.set("duration", duration_.empty() ? "0" : duration_);
    } else {
        return "The page does not say whether the call was placed, received or missed.";
    }
    std::string labels;
    for (const auto& label : labels_) labels += (labels.empty() ? "" : ", ") + label;
    rest.set("labels", labels);
    rest.set("published", published_);
    rest.set("transcript", trimmed(transcript_));
    rest.set("recording", recording_);
    if (deleted_.find("False") == std::string::npos) rest.set("deleted", trimmed(deleted_));
    call.extra = rest.rest("google-voice");
    return call;
}

}  // namespace tools
