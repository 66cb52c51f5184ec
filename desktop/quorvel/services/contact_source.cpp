// Who fills in the address book.
#include "desktop/quorvel/services/contact_source.h"

#include "desktop/quorvel/services/phone_number.h"

namespace quorvel {
namespace {

ContactSource& slot() {
    static auto* const one = new ContactSource();
    return *one;
}

}  // namespace

void setContactSource(ContactSource source) { slot() = std::move(source); }

const ContactSource& contactSource() { return slot(); }

int indexOfAddress(const std::vector<std::string>& values, const std::string& address) {
    if (address.empty()) return -1;
    const std::string wanted = canonicalAddress(address);
    for (std::size_t i = 0; i < values.size(); ++i)
        if (canonicalAddress(values[i]) == wanted) return static_cast<int>(i);
    return -1;
}

}  // namespace quorvel
