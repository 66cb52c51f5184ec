// Property lists and string tables of arbitrary bytes: what Foundation makes of them stays in it, and what is answered
// can be read and written.
#include <cstdint>
#include <cstdlib>

#include "desktop/foundation/property_list.h"

namespace {

void readEverything(objc::Object item) {
    if (objc::isKindOf(item, objc::classNamed<"NSString">()) && !objc::send<"UTF8String", const char*>(item))
        std::abort();
    const bool isDictionary = objc::isKindOf(item, objc::classNamed<"NSDictionary">());
    if (!isDictionary && !objc::isKindOf(item, objc::classNamed<"NSArray">())) return;
    const auto members = isDictionary ? objc::send<"allKeys", objc::Object>(item) : item;
    const auto count = objc::send<"count", unsigned long>(members);
    for (unsigned long i = 0; i < count; ++i) {
        const auto member = objc::send<"objectAtIndex:", objc::Object>(members, i);
        readEverything(member);
        if (isDictionary) readEverything(objc::send<"objectForKey:", objc::Object>(item, member));
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const objc::AutoreleasePool pool;
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    if (const auto list = foundation::dictionaryInPropertyList(bytes)) {
        readEverything(list);
        const auto written = foundation::xmlPropertyList(list);
        if (written.empty() || !foundation::dictionaryInPropertyList(written)) std::abort();
    }
    if (const auto table = foundation::dictionaryInStringTable(bytes)) readEverything(table);
    return 0;
}
