// Telephone addresses: "tel://+49..." is an address on the handset, but GNUstep refuses a host that begins with a plus.
#include "desktop/uikit/address.h"

#include <algorithm>
#include <string>

#include "desktop/uikit/text.h"

namespace uikit {
namespace {

using MakeUrl = id (*)(id, SEL, id);
MakeUrl foundationsOwn = nullptr;

/// The pluses of the address, as an address may always carry them.
std::string escaped(std::string text) {
    for (std::size_t at = 0; (at = text.find('+', at)) != std::string::npos; at += 3) text.replace(at, 1, "%2B");
    return text;
}

id urlWithString(id cls, SEL message, id string) {
    if (id url = foundationsOwn(cls, message, string)) return url;
    const std::string text = utf8(objc::Object{string});
    if (text.find("://+") == std::string::npos) return nullptr;
    auto made = objc::make<objc::Object, "initWithString:">(objc::classOf<TelephoneAddress>(), nsString(escaped(text)));
    if (!made) return nullptr;
    objc::peerOf<TelephoneAddress>(made.self())->setText(objc::Object{string});
    return objc::autorelease(std::move(made)).self;
}

}  // namespace

void TelephoneAddress::define(objc::ClassDefinition<TelephoneAddress>& definition) {
    definition.method<"absoluteString", &TelephoneAddress::text>()
        .method<"relativeString", &TelephoneAddress::text>()
        .method<"description", &TelephoneAddress::text>();
}

void TelephoneAddress::setText(objc::Object text) {
    text_ = objc::Strong<>::adopt(objc::send<"copy", objc::Object>(text));
}

void acceptTelephoneAddresses() {
    if (foundationsOwn) return;
    objc::classOf<TelephoneAddress>();
    Class meta = object_getClass(objc::raw(objc::classNamed<"NSURL">()));
    const SEL message = objc::selector<"URLWithString:">();
    foundationsOwn = reinterpret_cast<MakeUrl>(class_getMethodImplementation(meta, message));
    // Replaced on the class that has it: NSURL's own class method.
    class_replaceMethod(meta, message, objc::implementation(&urlWithString), "@@:@");
}

}  // namespace uikit
