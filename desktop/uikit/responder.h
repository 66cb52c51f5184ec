// UIResponder: the root of everything that takes part in the screen.
#pragma once

#include "desktop/uikit/geometry.h"

namespace uikit {

class Responder : public objc::PeerBase {
  public:
    using Super = objc::Foreign<"NSObject">;
    static constexpr objc::Name className{"UIResponder"};
    static void define(objc::ClassDefinition<Responder>& definition);

    Responder() = default;
    Responder(const Responder&) = delete;
    Responder& operator=(const Responder&) = delete;
    virtual ~Responder();

    objc::Object object() const { return objc::Object{self}; }
    bool isFirstResponder() const;
    /// Typing goes to the first responder; there is one at most.
    virtual bool becomeFirstResponder();
    virtual bool resignFirstResponder();

    /// Text typed while this is the first responder, and the keys that edit it.
    virtual void insertText(std::string_view) {}
    enum class EditingKey { Backspace, Delete, Left, Right, Home, End, Return, Escape };
    virtual void pressKey(EditingKey) {}
};

/// The responder that typing goes to, or null.
Responder* firstResponder();

}  // namespace uikit
