// QuorvelUtils: texts, dates, numbers and contact pictures as messages.
#pragma once

#include "objc/layer.h"

namespace quorvel {

class Utilities : public objc::PeerBase {
  public:
    using Super = objc::Foreign<"NSObject">;
    static constexpr objc::Name className{"QuorvelUtils"};
    static void define(objc::ClassDefinition<Utilities>& definition);
};

}  // namespace quorvel
