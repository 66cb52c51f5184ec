// Reading a call entry by its messages.
#include "desktop/quorvel/visual/call_facts.h"

#include "desktop/uikit/text.h"

namespace quorvel {
namespace {

template <objc::Name field>
std::string textOf(objc::Object entry) {
    return uikit::utf8(objc::send<field, objc::Object>(entry));
}

Direction directionOf(objc::Object entry) {
    if (objc::send<"isMissed", bool>(entry)) return Direction::Missed;
    return objc::send<"isOutGoing", bool>(entry) ? Direction::Outgoing : Direction::Incoming;
}

}  // namespace

CallFacts readCall(objc::Object entry) {
    CallFacts facts;
    if (!entry) return facts;
    facts.name = textOf<"name">(entry);
    facts.number = textOf<"phoneNumber">(entry);
    facts.label = textOf<"phoneLabel">(entry);
    facts.location = textOf<"location">(entry);
    facts.day = textOf<"grpByDate">(entry);
    facts.date = objc::send<"date", int>(entry);
    facts.duration = objc::send<"duration", int>(entry);
    facts.contact = objc::send<"abRecID", int>(entry);
    facts.count = objc::send<"count", int>(entry);
    facts.direction = directionOf(entry);
    facts.faceTime = objc::send<"isFaceTime", bool>(entry);
    facts.faceTimeVideo = objc::send<"isFaceTimeVideo", bool>(entry);
    facts.dialled = objc::send<"dldCallsCnt", std::int64_t>(entry);
    facts.received = objc::send<"rcdCallsCnt", std::int64_t>(entry);
    facts.missed = objc::send<"msdCallsCnt", std::int64_t>(entry);
    facts.dialledSeconds = objc::send<"dldCallsDuration", std::int64_t>(entry);
    facts.receivedSeconds = objc::send<"rcdCallsDuration", std::int64_t>(entry);
    return facts;
}

}  // namespace quorvel
