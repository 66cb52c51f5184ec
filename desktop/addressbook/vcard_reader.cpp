// Where cards begin and end.
#include "desktop/addressbook/vcard_reader.h"

#include <algorithm>

#include "desktop/addressbook/vcard_property.h"

namespace vcard {
namespace {

/// What each property costs beside its texts.
constexpr std::size_t costOfProperty = 256;

std::string sizeText(std::size_t bytes) { return std::to_string(bytes >> 20) + " MB"; }

bool isCardMark(const Property& property, std::string_view name) {
    const auto begin = property.value.find_first_not_of(" \t");
    if (property.name != name || begin == std::string::npos) return false;
    const auto end = property.value.find_last_not_of(" \t");
    return equalsIgnoringCase(std::string_view(property.value).substr(begin, end - begin + 1), "VCARD");
}

/// Whether a line outside all cards shows that a BEGIN is missing, and is not just anything with a colon.
bool belongsInCard(const Property& property) {
    static constexpr std::string_view names[] = {"VERSION", "N", "FN", "TEL", "EMAIL", "ORG", "ADR", "NICKNAME"};
    return std::ranges::find(names, property.name) != std::end(names);
}

}  // namespace

class Reader::Implementation {
  public:
    Implementation(std::istream& stream, std::function<void(const Problem&)> tell, ReadOptions options)
        : options_(std::move(options)), lines_(stream, options_.longestProperty), tell_(std::move(tell)) {}

    std::optional<Card> next() {
        while (auto line = nextContentLine(lines_, card_ ? card_->version : Version::v30, options_.longestProperty)) {
            if (isComment(*line)) continue;
            auto property = readProperty(*line, card_ ? card_->version : Version::v30, options_.charset,
                                         [&](std::size_t offset, const std::string& text) {
                                             tell_({line->position(offset), text});
                                         });
            if (!property) continue;
            if (line->isCut) {
                tell_({property->position, "the property " + property->name + " is longer than " +
                                               sizeText(options_.longestProperty) + " and is left out"});
                continue;
            }
            if (auto finished = take(*std::move(property))) return finished;
        }
        if (!card_) return std::nullopt;
        tell_({begin_, "the card is cut off: END:VCARD is missing"});
        return finish();
    }

  private:
    static bool isComment(const ContentLine& line) {
        const auto first = line.text.find_first_not_of(" \t");
        return line.text[first] == '#';
    }

    /// The card that the property ends, if it does.
    std::optional<Card> take(Property property) {
        if (isCardMark(property, "BEGIN")) return begin(property);
        if (isCardMark(property, "END")) return end(property);
        if (depthOfAgents_ > 0) return std::nullopt;
        if (!card_) {
            if (!belongsInCard(property)) {
                tell_({property.position, "the line " + property.name + " stands outside of a card and is left out"});
                return std::nullopt;
            }
            tell_({property.position, "BEGIN:VCARD is missing before this line"});
            open(property.position);
        }
        if (property.name == "VERSION") {
            readVersion(property);
        } else {
            keep(std::move(property));
        }
        return std::nullopt;
    }

    std::optional<Card> begin(const Property& property) {
        const bool isAgent = card_ && (depthOfAgents_ > 0 || endsWithAgent());
        if (isAgent) {
            ++depthOfAgents_;
            return std::nullopt;
        }
        std::optional<Card> unfinished;
        if (card_) {
            tell_({property.position, "END:VCARD is missing before this line"});
            unfinished = finish();
        }
        open(property.position);
        return unfinished;
    }

    std::optional<Card> end(const Property& property) {
        if (depthOfAgents_ > 0) {
            --depthOfAgents_;
            return std::nullopt;
        }
        if (card_) return finish();
        tell_({property.position, "there is no card that END:VCARD could end"});
        return std::nullopt;
    }

    bool endsWithAgent() const {
        return !card_->properties.empty() && card_->properties.back().name == "AGENT" &&
               card_->properties.back().value.find_first_not_of(" \t") == std::string::npos;
    }

    void open(Position where) {
        card_.emplace();
        begin_ = where;
        size_ = 0;
        depthOfAgents_ = 0;
    }

    Card finish() {
        Card finished = *std::move(card_);
        card_.reset();
        depthOfAgents_ = 0;
        return finished;
    }

    void readVersion(const Property& property) {
        const std::string number = unescaped(property.value);
        if (number.starts_with("2.")) {
            card_->version = Version::v21;
        } else if (number.starts_with("4.")) {
            card_->version = Version::v40;
        } else if (number.starts_with("3.")) {
            card_->version = Version::v30;
        } else {
            tell_({property.position, "the version is none of 2.1, 3.0 and 4.0; the card is read as 3.0"});
        }
    }

    void keep(Property property) {
        std::size_t size = property.value.size() + property.group.size() + costOfProperty;
        for (const Parameter& parameter : property.parameters)
            for (const std::string& value : parameter.values) size += value.size() + costOfProperty;
        if (size > options_.longestCard - size_) {
            tell_({property.position, "the card is larger than " + sizeText(options_.longestCard) + "; its property " +
                                          property.name + " is left out"});
            return;
        }
        size_ += size;
        card_->properties.push_back(std::move(property));
    }

    const ReadOptions options_;
    PhysicalLines lines_;
    const std::function<void(const Problem&)> tell_;
    std::optional<Card> card_;
    Position begin_;
    std::size_t size_ = 0;
    std::size_t depthOfAgents_ = 0;
};

Reader::Reader(std::istream& stream, std::function<void(const Problem&)> tell, ReadOptions options)
    : implementation_(std::make_unique<Implementation>(stream, std::move(tell), std::move(options))) {}
Reader::~Reader() = default;

std::optional<Card> Reader::next() { return implementation_->next(); }

}  // namespace vcard
