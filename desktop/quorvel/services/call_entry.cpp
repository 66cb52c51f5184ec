// QVCallEntry.
#include "desktop/quorvel/services/call_entry.h"

#include "desktop/uikit/text.h"

namespace quorvel {

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
        .method<"phoneNumber", &Self::text<&CounterpartTexts::phoneNumber>>()
        .method<"setPhoneNumber:", &Self::setText<&CounterpartTexts::phoneNumber>>()
        .method<"name", &Self::text<&CounterpartTexts::name>>()
        .method<"setName:", &Self::setText<&CounterpartTexts::name>>()
        .method<"phoneLabel", &Self::text<&CounterpartTexts::label>>()
        .method<"setPhoneLabel:", &Self::setText<&CounterpartTexts::label>>()
        .method<"location", &Self::text<&CounterpartTexts::location>>()
        .method<"setLocation:", &Self::setText<&CounterpartTexts::location>>()
        .method<"grpByDate", &Self::dayText>()
        .method<"setGrpByDate:", &Self::setDay>();
}

objc::Ref<CallEntry> CallEntry::of(const store::CallRecord& record, SharedTexts& texts) {
    auto entry = objc::Ref<CallEntry>::make();
    entry->fill(record, texts);
    return entry;
}

void CallEntry::fill(const store::CallRecord& record, SharedTexts& texts) {
    // Without an order among each other: each field is read by itself.
    const auto set = [](auto& field, std::int64_t value) {
        field.store(static_cast<typename std::remove_reference_t<decltype(field)>::value_type>(value),
                    std::memory_order_relaxed);
    };
    set(rowId, record.rowId);
    set(logId, record.logId);
    set(contact, record.contactId);
    set(date, record.date);
    set(duration, record.duration);
    set(flag, record.flags);
    set(count, record.count);
    set(dialledCount, record.dialledCount);
    set(receivedCount, record.receivedCount);
    set(missedCount, record.missedCount);
    set(dialledDuration, record.dialledDuration);
    set(receivedDuration, record.receivedDuration);
    texts_.store({texts.ofCall(record), texts.of(record.day)});
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
    record.address = uikit::utf8(text<&CounterpartTexts::phoneNumber>());
    record.name = uikit::utf8(text<&CounterpartTexts::name>());
    record.label = uikit::utf8(text<&CounterpartTexts::label>());
    record.location = uikit::utf8(text<&CounterpartTexts::location>());
    record.day = uikit::utf8(dayText());
    return record;
}

}  // namespace quorvel
