// The companion's services.
#include "tests/messages/rows_companion.h"

#include "desktop/uikit/text.h"

namespace rowsmessages {
namespace {

template <class T>
objc::Object sharedOf() {
    static const auto one = objc::make<objc::Object>(objc::classOf<T>());
    return one;
}

objc::Strong<> textOf(const char* literal) {
    return literal ? objc::Strong<>(uikit::nsString(literal)) : objc::Strong<>();
}

class Entry : public objc::PeerBase {
  public:
    using Super = objc::Foreign<"NSObject">;
    static constexpr objc::Name className{"QVCallEntry"};

    template <auto field>
    auto get() {
        return this->*field;
    }
    template <objc::Strong<> Entry::*field>
    void setText(objc::Object text) {
        this->*field = objc::Strong<>(text);
    }
    template <bool Call::*field>
    bool isOfKind() {
        return call.*field;
    }
    void setRecord(int of) { record = of; }
    int duration() { return 0; }

    static void define(objc::ClassDefinition<Entry>& definition) {
        definition.method<"phoneNumber", &Entry::get<&Entry::number>>()
            .method<"name", &Entry::get<&Entry::name>>()
            .method<"setName:", &Entry::setText<&Entry::name>>()
            .method<"phoneLabel", &Entry::get<&Entry::label>>()
            .method<"setPhoneLabel:", &Entry::setText<&Entry::label>>()
            .method<"location", &Entry::get<&Entry::location>>()
            .method<"abRecID", &Entry::get<&Entry::record>>()
            .method<"setAbRecID:", &Entry::setRecord>()
            .method<"date", &Entry::get<&Entry::date>>()
            .method<"duration", &Entry::duration>()
            .method<"isOutGoing", &Entry::isOfKind<&Call::isOutgoing>>()
            .method<"isMissed", &Entry::isOfKind<&Call::isMissed>>()
            .method<"isFaceTime", &Entry::isOfKind<&Call::isFaceTime>>()
            .method<"isFaceTimeVideo", &Entry::isOfKind<&Call::isFaceTimeVideo>>();
    }

    Call call;
    int record = -1;
    int date = 0;
    objc::Strong<> number;
    objc::Strong<> name;
    objc::Strong<> label;
    objc::Strong<> location;
};

class Settings : public objc::PeerBase {
  public:
    using Super = objc::Foreign<"NSObject">;
    static constexpr objc::Name className{"QVSettingsDataController"};
    static objc::Object sharedInstance(Class) { return sharedOf<Settings>(); }
    template <bool Companion::*field>
    bool setting() {
        return companion().*field;
    }
    bool no() { return false; }
    objc::Object pageSize() { return NSNumber::numberWithInt(companion().pageSize); }
    void setIsNeedToLoadData(bool need) {
        events().push_back(std::string("setIsNeedToLoadData: ") + (need ? "YES" : "NO"));
    }
    static void define(objc::ClassDefinition<Settings>& definition) {
        definition.classMethod<"sharedInstance", &Settings::sharedInstance>()
            .method<"isReplaceRecentsOn", &Settings::setting<&Companion::isReplaceRecentsOn>>()
            .method<"isGroupContacts_Call", &Settings::no>()
            .method<"isCallOnTap_Call", &Settings::setting<&Companion::isCallOnTap>>()
            .method<"isGroupByDate", &Settings::setting<&Companion::isGroupByDate>>()
            .method<"isFaceTimeEnabled", &Settings::setting<&Companion::isFaceTimeEnabled>>()
            .method<"minRec_Call", &Settings::pageSize>()
            .method<"setIsNeedToLoadData:", &Settings::setIsNeedToLoadData>();
    }
};

class Calls : public objc::PeerBase {
  public:
    using Super = objc::Foreign<"NSObject">;
    static constexpr objc::Name className{"QVDataController"};
    static objc::Object sharedInstance(Class) { return sharedOf<Calls>(); }
    objc::Object list() { return companion().calls.get(); }
    std::int64_t count() { return static_cast<std::int64_t>(companion().calls->count()); }
    std::int64_t seconds() { return 1; }
    objc::Object secondsText(std::int64_t) { return text<"1 s">(); }
    bool isAnyRecDeleted() { return false; }
    void readDay(objc::Object, std::int64_t, std::int64_t, objc::Object) {}
    objc::Strong<> result(objc::Object query) {
        events().push_back("getResult: " + utf8(query));
        if (companion().answersNoList) return {};
        auto found = NSMutableArray::make();
        if (companion().result)
            for (const auto& call : companion().result(utf8(query))) found->addObject(entryOf(call).get());
        return objc::Strong<>(found.get());
    }
    static void define(objc::ClassDefinition<Calls>& definition) {
        definition.classMethod<"sharedInstance", &Calls::sharedInstance>()
            .method<"callList", &Calls::list>()
            .method<"dateCallsList", &Calls::list>()
            .method<"allCallsCount", &Calls::count>()
            .method<"allCallsDuration", &Calls::seconds>()
            .method<"getAllCallsDuration:", &Calls::secondsText>()
            .method<"isAnyRecDeleted", &Calls::isAnyRecDeleted>()
            .method<"readCallsForDate:offset:flag:date:", &Calls::readDay>()
            .method<"getResult:", &Calls::result>();
    }
};

std::string nameOfPerson(objc::Object person) {
    if (!person) return "nil";
    return utf8(objc::Strong<>(objc::as<ABPerson>(person).compositeName().get()));
}

class Utilities : public objc::PeerBase {
  public:
    using Super = objc::Foreign<"NSObject">;
    static constexpr objc::Name className{"QuorvelUtils"};

    static objc::Object localizedString(Class, objc::Object key) { return key; }
    static objc::Object formatter(Class) {
        static const auto one = [] {
            auto made = objc::make<objc::Object>(objc::classNamed<"NSDateFormatter">());
            objc::send<"setTimeZone:">(made.get(),
                                       objc::sendClass<"NSTimeZone", "timeZoneForSecondsFromGMT:", objc::Object>(0L));
            return made;
        }();
        return one;
    }
    static objc::Object book(Class) {
        static const auto one = objc::make<objc::Object>(objc::classNamed<"NSObject">());
        return one;
    }
    static objc::Object person(Class, int record) {
        events().push_back("getPersonRecordFromDB: " + std::to_string(record));
        return companion().person ? companion().person(record) : objc::Object{};
    }
    static long numberIndex(Class, objc::Object, objc::Object) { return companion().numberIndex; }
    static long emailIndex(Class, objc::Object, objc::Object) { return companion().emailIndex; }
    static void linkCalls(Class, objc::Object person, int record) {
        events().push_back("updateQuorvelCallsHistory: " + nameOfPerson(person) + " " + std::to_string(record));
    }
    static objc::Object picture(Class, int record) {
        events().push_back("getContactImage: " + std::to_string(record));
        return {};
    }
    static bool isEmail(Class, objc::Object text) { return utf8(text).find('@') != std::string::npos; }
    static objc::Object formatted(Class, objc::Object number) { return uikit::nsString("formatted " + utf8(number)); }
    static bool canAccessAddressBook(Class) { return true; }
    static bool isPreIOS4(Class) { return companion().isPreIOS4; }
    static bool isIOS7(Class) { return companion().isIOS7; }

    static void define(objc::ClassDefinition<Utilities>& definition) {
        definition.classMethod<"getLocalizedString:", &Utilities::localizedString>()
            .classMethod<"dateFormatter", &Utilities::formatter>()
            .classMethod<"getAddressBook", &Utilities::book>()
            .classMethod<"getPersonRecordFromDB:", &Utilities::person>()
            .classMethod<"getHighlitedPhoneNumberPropertyIndex:entry:", &Utilities::numberIndex>()
            .classMethod<"getHighlitedEmailPropertyIndex:entry:", &Utilities::emailIndex>()
            .classMethod<"updateQuorvelCallsHistory:rowID:", &Utilities::linkCalls>()
            .classMethod<"getContactImage:", &Utilities::picture>()
            .classMethod<"isEmailAddress:", &Utilities::isEmail>()
            .classMethod<"getFormattedPhoneNumber:", &Utilities::formatted>()
            .classMethod<"canAccessAddressBook", &Utilities::canAccessAddressBook>()
            .classMethod<"isPreIOS_4", &Utilities::isPreIOS4>()
            .classMethod<"isIOS_7_0", &Utilities::isIOS7>();
    }
};

Companion& kept() {
    static auto* const one = new Companion();
    return *one;
}

}  // namespace

std::vector<std::string>& events() {
    static std::vector<std::string> recorded;
    return recorded;
}

objc::Strong<QVCallEntry> entryOf(const Call& call) {
    auto made = objc::Ref<Entry>::make();
    made->call = call;
    made->record = call.record;
    made->date = call.date;
    made->number = textOf(call.number);
    made->name = textOf(call.name);
    made->location = textOf(call.location);
    return objc::Strong<QVCallEntry>(objc::as<QVCallEntry>(made.self()));
}

Companion& companion() { return kept(); }

std::string sharedDateFormat() {
    const auto formatter = objc::sendClass<"QuorvelUtils", "dateFormatter", objc::Object>();
    return utf8(objc::send<"dateFormat", objc::Object>(formatter));
}

void registerCompanion() { objc::registerClasses<Entry, Settings, Calls, Utilities>(); }

void resetCompanion() {
    kept() = Companion{};
    events().clear();
}

std::string utf8(objc::Object text) { return text ? uikit::utf8(text) : "(nil)"; }

}  // namespace rowsmessages
