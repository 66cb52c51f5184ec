// Expat shows the elements; a call is its attributes.
#include "tools/import/xml_importer.h"

#include <expat.h>

#include <algorithm>
#include <new>

#include "tools/import/raw_call.h"

namespace tools {

void XmlImporter::Free::operator()(XML_ParserStruct* parser) const { XML_ParserFree(parser); }

XmlImporter::XmlImporter(InputFile file) : QueuedImporter(std::move(file)), parser_(XML_ParserCreate(nullptr)) {
    if (!parser_) throw std::bad_alloc();
    prepare();
}

void XmlImporter::prepare() {
    XML_SetUserData(parser_.get(), this);
    XML_SetElementHandler(
        parser_.get(),
        [](void* self, const char* name, const char** attributes) {
            static_cast<XmlImporter*>(self)->takeElement(name, attributes);
        },
        [](void* self, const char*) { --static_cast<XmlImporter*>(self)->depth_; });
    XML_SetXmlDeclHandler(parser_.get(), [](void* self, const char*, const char* encoding, int) {
        if (encoding) static_cast<XmlImporter*>(self)->encoding_ = encoding;
    });
}

std::string XmlImporter::line() const {
    return std::to_string(linesBefore_ + static_cast<std::int64_t>(XML_GetCurrentLineNumber(parser_.get())));
}

void XmlImporter::take(std::string_view piece) {
    const auto linesOf = [](std::string_view text) {
        return static_cast<std::int64_t>(std::count(text.begin(), text.end(), '\n'));
    };
    std::string joined;
    if (isPassing_) {
        // An attribute's value holds no '<', so that this begins an element.
        static constexpr std::string_view mark = "<call ";
        joined = passed_.append(piece);
        const auto begin = joined.find(mark);
        passed_ = joined.substr(joined.size() - std::min(joined.size(), mark.size() - 1));
        isPassing_ = begin == std::string::npos;
        lines_ += linesOf(piece);
        if (isPassing_) return;
        linesBefore_ = lines_ - linesOf(std::string_view(joined).substr(begin));
        return parse(mender_.mend(std::string_view(joined).substr(begin)), false);
    }
    lines_ += linesOf(piece);
    parse(mender_.mend(piece), false);
}

void XmlImporter::takeEnd() {
    // What is passed over took the end of the root with it.
    parse(isPassing_ ? "</calls>" : mender_.end(), true);
}

bool XmlImporter::passOver() {
    if (!isOfCalls_) return false;
    XML_ParserReset(parser_.get(), encoding_.empty() ? nullptr : encoding_.c_str());
    prepare();
    mender_ = {};
    depth_ = 0;
    isPassing_ = true;
    parse("<calls>", false);
    return !isStopped();
}

void XmlImporter::parse(std::string_view text, bool isLast) {
    if (XML_Parse(parser_.get(), text.data(), static_cast<int>(text.size()), isLast) != XML_STATUS_ERROR) return;
    const bool wasStopped = XML_GetErrorCode(parser_.get()) == XML_ERROR_ABORTED;
    stop();
    if (wasStopped) return;
    const std::string why = XML_ErrorString(XML_GetErrorCode(parser_.get()));
    found(line(), Complaint{line(),
                            "From here on the file cannot be read: " + why +
                                ". It may have been cut off; make the backup again.",
                            Complaint::Reach::Call});
}

void XmlImporter::takeElement(std::string_view name, const char** attributes) {
    // What is nested takes memory for every level.
    constexpr int deepest = 1000;
    ++depth_;
    if (depth_ > deepest) {
        found(line(),
              Complaint{line(), "Elements are nested more than a thousand times. The file is damaged, or no backup.",
                        Complaint::Reach::Call});
        XML_StopParser(parser_.get(), XML_FALSE);
        return;
    }
    if (depth_ == 1) {
        isOfCalls_ = name == "calls";
        if (isOfCalls_) return;
        const std::string what = name == "smses"
                                     ? "The file holds messages, and no calls."
                                     : "The file holds no calls: it begins with <" + std::string(name) + ">.";
        found(line(), Complaint{line(), what, Complaint::Reach::File});
        XML_StopParser(parser_.get(), XML_FALSE);
        return;
    }
    if (depth_ != 2 || name != "call") return;
    RawCall raw;
    for (; attributes[0]; attributes += 2) {
        const std::string_view value = attributes[1];
        if (value != "null" && std::string_view(attributes[0]) != "readable_date")
            raw.set(attributes[0], std::string(value));
    }
    auto call = callOfAndroid(std::move(raw));
    if (auto* wrong = std::get_if<std::string>(&call))
        found(line(), Complaint{line(), std::move(*wrong), Complaint::Reach::Call});
    else
        found(line(), std::get<quorvel::store::NewCall>(std::move(call)));
}

}  // namespace tools
