// QVCallEntry.
#include "desktop/quorvel/services/call_entry.h"

#include "desktop/addressbook/names.h"
#include "desktop/quorvel/services/phone_number.h"
#include "desktop/uikit/text.h"

namespace quorvel {
namespace {

objc::Strong<> textOrNil(const std::string& text, SharedTexts& texts) {
    return text.empty() ? objc::Strong<>() : texts.of(text);
}

/// Where the log says nothing of the place, that of the number.
std::string placeOfCall(const store::CallRecord& record) {
    if (!record.location.empty() || record.address.empty()) return record.location;
    return placeOf(record.address, contacts::language());
}

}  // namespace

void CallEntry::define(objc::ClassDefinition<CallEntry>& definition) {
    using Self = CallEntry;
    definition.method<"ROWID", &Self::get32<&Self::rowId>>()
        .method<"setROWID:", &Self::set32<&Self::rowId>>()
        .method<"iLogOID", &Self::get32<&Self::logId>>()
        .method<"setILogOID:", &Self::set32<&Self::logId>>()
        .method<"abRecID", &Self::get32<&Self::contact>>()
        .method<"setAbRecID:", &Self::set32<&Self::contact>>()
        .method<"date", &Self::get32<&Self::date>>()
        .method<"setDate:", &Self::set32<&Self::date>>()
        .method<"duration", &Self::get32<&Self::duration>>()
        .method<"setDuration:", &Self::set32<&Self::duration>>()
        .method<"flag", &Self::get32<&Self::flag>>()
        .method<"setFlag:", &Self::set32<&Self::flag>>()
        .method<"count", &Self::get32<&Self::count>>()
        .method<"setCount:", &Self::set32<&Self::count>>()
        .method<"isDeleted", &Self::isDeleted>()
        .method<"setIsDeleted:", &Self::setIsDeleted>()
        .method<"isDialed", &Self::isDialed>()
        .method<"isReceived", &Self::isReceived>()
        .method<"isMissed", &Self::isMissed>()
        .method<"isCanceled", &Self::isCanceled>()
        .method<"isOutGoing", &Self::isOutGoing>()
        .method<"isFaceTime", &Self::isFaceTime>()
        .method<"isFaceTimeVideo", &Self::isFaceTimeVideo>();
    definition.method<"dldCallsCnt", &Self::get64<&Self::dialledCount>>()
        .method<"setDldCallsCnt:", &Self::set64<&Self::dialledCount>>()
        .method<"rcdCallsCnt", &Self::get64<&Self::receivedCount>>()
        .method<"setRcdCallsCnt:", &Self::set64<&Self::receivedCount>>()
        .method<"msdCallsCnt", &Self::get64<&Self::missedCount>>()
        .method<"setMsdCallsCnt:", &Self::set64<&Self::missedCount>>()
        .method<"dldCallsDuration", &Self::get64<&Self::dialledDuration>>()
        .method<"setDldCallsDuration:", &Self::set64<&Self::dialledDuration>>()
        .method<"rcdCallsDuration", &Self::get64<&Self::receivedDuration>>()
        .method<"setRcdCallsDuration:", &Self::set64<&Self::receivedDuration>>()
        .method<"phoneNumber", &Self::getText<&Self::phoneNumber>>()
        .method<"setPhoneNumber:", &Self::setText<&Self::phoneNumber>>()
        .method<"name", &Self::getText<&Self::name>>()
        .method<"setName:", &Self::setText<&Self::name>>()
        .method<"phoneLabel", &Self::getText<&Self::phoneLabel>>()
        .method<"setPhoneLabel:", &Self::setText<&Self::phoneLabel>>()
        .method<"location", &Self::getText<&Self::location>>()
        .method<"setLocation:", &Self::setText<&Self::location>>()
        .method<"grpByDate", &Self::getText<&Self::day>>()
        .method<"setGrpByDate:", &Self::setText<&Self::day>>();
}

objc::Ref<CallEntry> CallEntry::of(const store::CallRecord& record, SharedTexts& texts) {
    auto entry = objc::Ref<CallEntry>::make();
    entry->fill(record, texts);
    return entry;
}

void CallEntry::fill(const store::CallRecord& record, SharedTexts& texts) {
    rowId = static_cast<std::int32_t>(record.rowId);
    logId = static_cast<std::int32_t>(record.logId);
    contact = record.contactId;
    date = static_cast<std::int32_t>(record.date);
    duration = record.duration;
    flag = record.flags;
    count = static_cast<std::int32_t>(record.count);
    dialledCount = record.dialledCount;
    receivedCount = record.receivedCount;
    missedCount = record.missedCount;
    dialledDuration = record.dialledDuration;
    receivedDuration = record.receivedDuration;
    phoneNumber.store(texts.of(record.address));
    name.store(textOrNil(record.name, texts));
    phoneLabel.store(textOrNil(record.label, texts));
    location.store(textOrNil(placeOfCall(record), texts));
    day.store(texts.of(record.day));
    // Remembered from here on, so that no row works it out while it is drawn.
    if (!record.address.empty()) formattedNumber(record.address);
}

store::CallRecord CallEntry::record() const {
    store::CallRecord record;
    record.rowId = rowId;
    record.logId = logId;
    record.contactId = contact;
    record.date = date;
    record.duration = duration;
    record.flags = flag;
    record.count = count;
    record.address = uikit::utf8(phoneNumber.load());
    record.name = uikit::utf8(name.load());
    record.label = uikit::utf8(phoneLabel.load());
    record.location = uikit::utf8(location.load());
    record.day = uikit::utf8(day.load());
    return record;
}

}  // namespace quorvel
