// The first responder, and the messages that make one.
#include "desktop/uikit/responder.h"

namespace uikit {
namespace {

Responder* first = nullptr;

}  // namespace

Responder* firstResponder() { return first; }

void Responder::define(objc::ClassDefinition<Responder>& definition) {
    definition.method<"isFirstResponder", &Responder::isFirstResponder>()
        .method<"becomeFirstResponder", &Responder::becomeFirstResponder>()
        .method<"resignFirstResponder", &Responder::resignFirstResponder>();
}

Responder::~Responder() {
    if (first == this) first = nullptr;
}

bool Responder::isFirstResponder() const { return first == this; }

bool Responder::becomeFirstResponder() {
    if (first == this) return true;
    if (first && !objc::send<"resignFirstResponder", bool>(first->object())) return false;
    first = this;
    return true;
}

bool Responder::resignFirstResponder() {
    if (first == this) first = nullptr;
    return true;
}

}  // namespace uikit
