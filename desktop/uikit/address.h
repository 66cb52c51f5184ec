// NSURL for telephone numbers: addresses that the handset's Foundation takes and GNUstep's refuses.
#pragma once

#include "objc/layer.h"

namespace uikit {

/// An NSURL that says the text it was made of.
class TelephoneAddress : public objc::PeerBase {
  public:
    using Super = objc::Foreign<"NSURL">;
    static constexpr objc::Name className{"UITelephoneAddress"};
    static void define(objc::ClassDefinition<TelephoneAddress>& definition);

    objc::Object text() const { return text_; }
    void setText(objc::Object text);

  private:
    objc::Strong<> text_;
};

/// From here on `+[NSURL URLWithString:]` answers an address for a number with a plus, as on the handset, and what
/// Foundation answers for all else. Once, when the library is loaded.
void acceptTelephoneAddresses();

}  // namespace uikit
