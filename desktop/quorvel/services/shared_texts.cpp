// SharedTexts: what is remembered, and how places are found.
#include "desktop/quorvel/services/shared_texts.h"

#include <functional>

#include "desktop/addressbook/labels.h"
#include "desktop/addressbook/names.h"
#include "desktop/quorvel/services/phone_number.h"
#include "desktop/uikit/text.h"

namespace quorvel {
namespace {

/// Where the log says nothing of the place, that of the number.
std::string placeOfCall(const store::CallRecord& record) {
    if (!record.location.empty() || record.address.empty()) return record.location;
    return placeOf(record.address, contacts::language());
}

}  // namespace

void SharedTexts::forgetCounterparts() {
    for (Counterpart& each : counterparts_) each.texts.reset();
}

const objc::Strong<>& SharedTexts::of(const std::string& text) {
    Text& known = texts_[std::hash<std::string>()(text) % texts_.size()];
    if (!known.object || known.text != text) {
        known.object = objc::Strong<>(uikit::nsString(text));
        known.text = text;
    }
    return known.object;
}

const std::shared_ptr<const CounterpartTexts>& SharedTexts::ofCall(const store::CallRecord& record) {
    if (const auto revision = homeRevision(); revision != revision_) {
        forgetCounterparts();
        revision_ = revision;
    }
    if (counterparts_[latest_].isOf(record)) return counterparts_[latest_].texts;
    const std::hash<std::string> hash;
    latest_ = (hash(record.address) * 31 + hash(record.name)) % counterparts_.size();
    Counterpart& known = counterparts_[latest_];
    if (known.isOf(record)) return known.texts;
    const std::string label = contacts::label::ofLog(record.label, contacts::language());
    known = {record.address, record.name, record.label, record.location,
             std::make_shared<CounterpartTexts>(CounterpartTexts{of(record.address), orNull(record.name), orNull(label),
                                                                 orNull(placeOfCall(record))})};
    // Remembered from here on, so that no row works it out while it is drawn.
    if (!record.address.empty()) formattedNumber(record.address);
    return known.texts;
}

}  // namespace quorvel
