// A call entry for tests: it answers what a QVCallEntry answers, and counts how often it is asked.
#pragma once

#include "desktop/uikit/text.h"
#include "objc/layer.h"

namespace quorvel::test {

class Entry : public objc::PeerBase {
  public:
    using Super = objc::Foreign<"NSObject">;
    static constexpr objc::Name className{"TestCallEntry"};
    static void define(objc::ClassDefinition<Entry>& definition) {
        definition.method<"name", &Entry::name>()
            .method<"phoneNumber", &Entry::phoneNumber>()
            .method<"phoneLabel", &Entry::phoneLabel>()
            .method<"location", &Entry::location>()
            .method<"grpByDate", &Entry::grpByDate>()
            .method<"date", &Entry::date>()
            .method<"duration", &Entry::duration>()
            .method<"abRecID", &Entry::abRecID>()
            .method<"count", &Entry::count>();
        definition.method<"isMissed", &Entry::isMissed>()
            .method<"isOutGoing", &Entry::isOutGoing>()
            .method<"isFaceTime", &Entry::isFaceTime>()
            .method<"isFaceTimeVideo", &Entry::isFaceTimeVideo>()
            .method<"dldCallsCnt", &Entry::dldCallsCnt>()
            .method<"rcdCallsCnt", &Entry::rcdCallsCnt>()
            .method<"msdCallsCnt", &Entry::msdCallsCnt>()
            .method<"dldCallsDuration", &Entry::dldCallsDuration>()
            .method<"rcdCallsDuration", &Entry::rcdCallsDuration>();
    }

    struct Fields {
        std::string name = {};
        std::string number = {};
        std::string label = {};
        std::string location = {};
        std::string day = {};
        int date = 0;
        int duration = 0;
        int contact = -1;
        int count = 1;
        bool missed = false;
        bool outgoing = false;
        bool faceTime = false;
        bool faceTimeVideo = false;
        std::int64_t dialled = 0;
        std::int64_t received = 0;
        std::int64_t missedCalls = 0;
        std::int64_t dialledSeconds = 0;
        std::int64_t receivedSeconds = 0;
    };
    static objc::Ref<Entry> make(Fields fields) {
        auto made = objc::Ref<Entry>::make();
        made->fields = std::move(fields);
        return made;
    }
    objc::Object object() const { return objc::Object{self}; }

    Fields fields;
    mutable int asked = 0;

  private:
    static objc::Object text(const std::string& value) {
        return value.empty() ? objc::Object{} : uikit::nsString(value);
    }
    template <class T>
    T ask(T value) const {
        ++asked;
        return value;
    }
    objc::Object name() const { return ask(text(fields.name)); }
    objc::Object phoneNumber() const { return ask(text(fields.number)); }
    objc::Object phoneLabel() const { return ask(text(fields.label)); }
    objc::Object location() const { return ask(text(fields.location)); }
    objc::Object grpByDate() const { return ask(text(fields.day)); }
    int date() const { return ask(fields.date); }
    int duration() const { return ask(fields.duration); }
    int abRecID() const { return ask(fields.contact); }
    int count() const { return ask(fields.count); }
    bool isMissed() const { return ask(fields.missed); }
    bool isOutGoing() const { return ask(fields.outgoing); }
    bool isFaceTime() const { return ask(fields.faceTime); }
    bool isFaceTimeVideo() const { return ask(fields.faceTimeVideo); }
    std::int64_t dldCallsCnt() const { return ask(fields.dialled); }
    std::int64_t rcdCallsCnt() const { return ask(fields.received); }
    std::int64_t msdCallsCnt() const { return ask(fields.missedCalls); }
    std::int64_t dldCallsDuration() const { return ask(fields.dialledSeconds); }
    std::int64_t rcdCallsDuration() const { return ask(fields.receivedSeconds); }
};

}  // namespace quorvel::test
