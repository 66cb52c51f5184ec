// Reads the vCards of a file one after another, as programs really write them.
#pragma once

#include <functional>
#include <istream>
#include <memory>
#include <optional>
#include <string>

#include "desktop/addressbook/vcard.h"

namespace vcard {

/// Something that was not as it should be, with what was done about it.
struct Problem {
    Position position;
    std::string text;
};

struct ReadOptions {
    /// The charset of texts that name none and are not UTF-8.
    std::string charset = "windows-1252";
    /// What a property, and a card, has beyond these is left out; both bound the memory used.
    std::size_t longestProperty = 16 << 20;
    std::size_t longestCard = 32 << 20;
};

/// Versions 2.1, 3.0 and 4.0, mixed as they come. Nothing stops the reader: what cannot be understood is told and
/// passed over, a card that is cut off is given as far as it goes. A card within a card (AGENT) is not given.
class Reader {
  public:
    /// The stream must be binary and outlive the reader.
    Reader(std::istream& stream, std::function<void(const Problem&)> tell, ReadOptions options = {});
    ~Reader();
    Reader(const Reader&) = delete;
    Reader& operator=(const Reader&) = delete;

    /// The next card, or nothing at the end.
    std::optional<Card> next();

  private:
    class Implementation;
    std::unique_ptr<Implementation> implementation_;
};

/// One property of a content line without folds, or nothing where it is none.
std::optional<Property> propertyOf(std::string_view line, Version version);

}  // namespace vcard
