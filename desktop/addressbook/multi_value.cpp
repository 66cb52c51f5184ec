// Multi-values as objects and as calls.
#include <algorithm>

#include "desktop/addressbook/objects.h"
#include "platform/foundation.h"

namespace addressbook {

objc::Ref<MultiValue> MultiValue::of(Kind kind, std::vector<contacts::LabelledValue> values) {
    auto made = objc::Ref<MultiValue>::make();
    made->kind = kind;
    made->values = std::move(values);
    return made;
}

int MultiValue::nextIdentifier() {
    for (const auto& value : values) next_ = std::max(next_, value.identifier + 1);
    return next_++;
}

namespace {

constexpr ABPropertyType multiBit = 256;

ABPropertyType typeOfKind(Kind kind) {
    if (kind == Kind::text) return kABStringPropertyType;
    return kind == Kind::day ? kABDateTimePropertyType : kABDictionaryPropertyType;
}

}  // namespace
}  // namespace addressbook

using addressbook::given;
using addressbook::Kind;
using addressbook::MultiValue;
using addressbook::objectFrom;
using addressbook::peerFrom;

ABMutableMultiValueRef ABMultiValueCreateMutable(ABPropertyType type) {
    for (const Kind kind : {Kind::text, Kind::day, Kind::parts})
        if (type == (addressbook::typeOfKind(kind) | addressbook::multiBit))
            return given(MultiValue::of(kind, {}).takeOwner());
    return nullptr;
}

ABMutableMultiValueRef ABMultiValueCreateMutableCopy(ABMultiValueRef values) {
    const auto* from = peerFrom<MultiValue>(values);
    return from ? given(MultiValue::of(from->kind, from->values).takeOwner()) : nullptr;
}

ABPropertyType ABMultiValueGetPropertyType(ABMultiValueRef values) {
    const auto* from = peerFrom<MultiValue>(values);
    return from ? addressbook::typeOfKind(from->kind) : kABInvalidPropertyType;
}

long ABMultiValueGetCount(ABMultiValueRef values) {
    const auto* from = peerFrom<MultiValue>(values);
    return from ? static_cast<long>(from->values.size()) : 0;
}

const void* ABMultiValueCopyValueAtIndex(ABMultiValueRef values, long index) {
    auto* from = peerFrom<MultiValue>(values);
    return from && from->has(index) ? given(addressbook::objectOf(from->at(index), from->kind)) : nullptr;
}

const void* ABMultiValueCopyLabelAtIndex(ABMultiValueRef values, long index) {
    auto* from = peerFrom<MultiValue>(values);
    if (!from || !from->has(index) || from->at(index).label.empty()) return nullptr;
    return given(addressbook::stringOf(from->at(index).label));
}

const void* ABMultiValueCopyArrayOfAllValues(ABMultiValueRef values) {
    const auto* from = peerFrom<MultiValue>(values);
    if (!from) return nullptr;
    auto all = NSMutableArray::make();
    for (const auto& value : from->values) {
        const auto object = addressbook::objectOf(value, from->kind);
        all->addObject(object ? object.get() : objc::Object(addressbook::stringOf(value.text).get()));
    }
    return given(std::move(all));
}

ABMultiValueIdentifier ABMultiValueGetIdentifierAtIndex(ABMultiValueRef values, long index) {
    auto* from = peerFrom<MultiValue>(values);
    return from && from->has(index) ? from->at(index).identifier : kABMultiValueInvalidIdentifier;
}

long ABMultiValueGetIndexForIdentifier(ABMultiValueRef values, ABMultiValueIdentifier identifier) {
    const auto* from = peerFrom<MultiValue>(values);
    if (!from) return -1;
    const auto found = std::ranges::find(from->values, identifier, &contacts::LabelledValue::identifier);
    return found == from->values.end() ? -1 : found - from->values.begin();
}

long ABMultiValueGetFirstIndexOfValue(ABMultiValueRef values, const void* value) {
    const auto* from = peerFrom<MultiValue>(values);
    const auto wanted = from ? addressbook::valueOf(objectFrom(value), from->kind) : std::nullopt;
    if (!wanted) return -1;
    const auto found = std::ranges::find_if(from->values, [&wanted](const contacts::LabelledValue& each) {
        return each.text == wanted->text && each.parts == wanted->parts;
    });
    return found == from->values.end() ? -1 : found - from->values.begin();
}

bool ABMultiValueAddValueAndLabel(ABMutableMultiValueRef values, const void* value, const void* label,
                                  ABMultiValueIdentifier* identifier) {
    return ABMultiValueInsertValueAndLabelAtIndex(values, value, label, ABMultiValueGetCount(values), identifier);
}

bool ABMultiValueInsertValueAndLabelAtIndex(ABMutableMultiValueRef values, const void* value, const void* label,
                                            long index, ABMultiValueIdentifier* identifier) {
    auto* to = peerFrom<MultiValue>(values);
    if (!to || index < 0 || index > static_cast<long>(to->values.size())) return false;
    auto made = addressbook::valueOf(objectFrom(value), to->kind);
    if (!made) return false;
    made->label = addressbook::textOf(objectFrom(label));
    made->identifier = to->nextIdentifier();
    if (identifier) *identifier = made->identifier;
    to->values.insert(to->values.begin() + index, *std::move(made));
    return true;
}

bool ABMultiValueRemoveValueAndLabelAtIndex(ABMutableMultiValueRef values, long index) {
    auto* from = peerFrom<MultiValue>(values);
    if (!from || !from->has(index)) return false;
    from->nextIdentifier();
    from->values.erase(from->values.begin() + index);
    return true;
}

bool ABMultiValueReplaceValueAtIndex(ABMutableMultiValueRef values, const void* value, long index) {
    auto* in = peerFrom<MultiValue>(values);
    if (!in || !in->has(index)) return false;
    auto made = addressbook::valueOf(objectFrom(value), in->kind);
    if (!made) return false;
    in->at(index).text = std::move(made->text);
    in->at(index).parts = std::move(made->parts);
    return true;
}

bool ABMultiValueReplaceLabelAtIndex(ABMutableMultiValueRef values, const void* label, long index) {
    auto* in = peerFrom<MultiValue>(values);
    if (!in || !in->has(index)) return false;
    in->at(index).label = addressbook::textOf(objectFrom(label));
    return true;
}
