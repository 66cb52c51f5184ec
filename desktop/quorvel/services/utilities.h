// QuorvelUtils: texts, dates, numbers and contact pictures as messages.
#pragma once

#include <filesystem>

#include "objc/layer.h"

namespace quorvel {

class Utilities : public objc::PeerBase {
  public:
    using Super = objc::Foreign<"NSObject">;
    static constexpr objc::Name className{"QuorvelUtils"};
    static void define(objc::ClassDefinition<Utilities>& definition);
};

/// Where the contacts' pictures lie; a file "denied" there closes the address book to the program. Before the plug-in
/// is loaded.
void setContactsFolder(std::filesystem::path folder);

}  // namespace quorvel
