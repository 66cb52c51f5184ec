// QuorvelUtils: texts, dates, contact pictures.
#pragma once

#include <filesystem>
#include <string>

#include "objc/layer.h"

namespace quorvel {

class Utilities : public objc::PeerBase {
  public:
    using Super = objc::Foreign<"NSObject">;
    static constexpr objc::Name className{"QuorvelUtils"};
    static void define(objc::ClassDefinition<Utilities>& definition);
};

/// Where `<language>.lproj/Quorvel.strings` lie, and the language; empty for that of the locale. Before the first text.
void setTexts(std::filesystem::path folder, std::string language);
/// Where the contacts' pictures lie, as RECORD.png. Before the first picture.
void setContactPictures(std::filesystem::path folder);

}  // namespace quorvel
