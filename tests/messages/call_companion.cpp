// The companion's services over arrays.
#include "tests/messages/call_companion.h"

#include <algorithm>
#include <memory>

#include "desktop/uikit/text.h"

namespace callcompanion {
namespace {

std::unique_ptr<Companion>& kept() {
    static std::unique_ptr<Companion> one;
    return one;
}

objc::Object shared(Class cls) {
    static std::vector<std::pair<Class, objc::Strong<>>> instances;
    static std::mutex mutex;
    const std::lock_guard lock(mutex);
    for (auto& [known, instance] : instances)
        if (known == cls) return instance;
    instances.emplace_back(cls, objc::make<objc::Object>(cls));
    return instances.back().second;
}

std::string n(std::int64_t number) { return std::to_string(number); }

std::size_t placeOf(std::int64_t filter) {
    return filter >= 2 && filter <= 4 ? static_cast<std::size_t>(filter - 1) : 0;
}
std::size_t listPlaceOf(std::int64_t filter) {
    constexpr std::size_t days = 4;
    return placeOf(filter) == 0 && companion().isGroupByDate ? days : placeOf(filter);
}

class Entry : public objc::PeerBase {
  public:
    using Super = objc::Foreign<"NSObject">;
    static constexpr objc::Name className{"QVCallEntry"};

    int id() const { return call.id; }
    int record() const { return call.record != 0 ? call.record : call.id; }
    objc::Object name() const { return call.name ? name_.get() : objc::Object{}; }
    objc::Object number() const { return number_.get(); }
    template <std::size_t i>
    std::int64_t ofDay() const {
        return ofDay_[i];
    }
    template <std::size_t i>
    void setOfDay(std::int64_t value) {
        ofDay_[i] = value;
    }
    objc::Object day() const { return day_.get(); }
    int count() const { return count_; }
    void setCount(int count) { count_ = count; }
    int contact() const { return call.contact; }
    int duration() const { return call.duration; }
    bool isDialed() const { return call.isDialed; }
    bool isReceived() const { return call.isReceived; }
    bool isMissed() const { return call.isMissed; }
    bool isCanceled() const { return call.isCanceled; }
    void takeNumber(int) {}
    void takeFlag(bool) {}
    void takeText(objc::Object) {}
    int none() const { return 0; }
    bool no() const { return false; }
    objc::Object nothing() const { return {}; }
    void fill(const Call& of) {
        call = of;
        count_ = of.count;
        name_ = objc::Strong<>(uikit::nsString(of.name ? of.name : ""));
        number_ = objc::Strong<>(uikit::nsString(of.number));
        day_ = objc::Strong<>(uikit::nsString(of.day));
    }
    static void define(objc::ClassDefinition<Entry>& definition) {
        definition.method<"ROWID", &Entry::id>()
            .method<"iLogOID", &Entry::record>()
            .method<"name", &Entry::name>()
            .method<"phoneNumber", &Entry::number>()
            .method<"grpByDate", &Entry::day>()
            .method<"count", &Entry::count>()
            .method<"setCount:", &Entry::setCount>()
            .method<"abRecID", &Entry::contact>()
            .method<"duration", &Entry::duration>()
            .method<"isDialed", &Entry::isDialed>()
            .method<"isReceived", &Entry::isReceived>()
            .method<"isMissed", &Entry::isMissed>()
            .method<"isCanceled", &Entry::isCanceled>();
        // What a day's entry takes over is read on the trace.
        definition.method<"setILogOID:", &Entry::takeNumber>()
            .method<"setROWID:", &Entry::takeNumber>()
            .method<"setPhoneNumber:", &Entry::takeText>()
            .method<"setDate:", &Entry::takeNumber>()
            .method<"setDuration:", &Entry::takeNumber>()
            .method<"setFlag:", &Entry::takeNumber>()
            .method<"setAbRecID:", &Entry::takeNumber>()
            .method<"setPhoneLabel:", &Entry::takeText>()
            .method<"setIsDeleted:", &Entry::takeFlag>()
            .method<"setName:", &Entry::takeText>()
            .method<"date", &Entry::none>()
            .method<"flag", &Entry::none>()
            .method<"phoneLabel", &Entry::nothing>()
            .method<"isDeleted", &Entry::no>();
        definition.method<"dldCallsCnt", &Entry::ofDay<0>>()
            .method<"rcdCallsCnt", &Entry::ofDay<1>>()
            .method<"msdCallsCnt", &Entry::ofDay<2>>()
            .method<"dldCallsDuration", &Entry::ofDay<3>>()
            .method<"rcdCallsDuration", &Entry::ofDay<4>>()
            .method<"setDldCallsCnt:", &Entry::setOfDay<0>>()
            .method<"setRcdCallsCnt:", &Entry::setOfDay<1>>()
            .method<"setMsdCallsCnt:", &Entry::setOfDay<2>>()
            .method<"setDldCallsDuration:", &Entry::setOfDay<3>>()
            .method<"setRcdCallsDuration:", &Entry::setOfDay<4>>();
    }

    Call call;

  private:
    std::atomic<int> count_{1};
    objc::Strong<> name_;
    objc::Strong<> number_;
    objc::Strong<> day_;
    std::array<std::atomic<std::int64_t>, 5> ofDay_{};  // counts by kind, then durations
};

class Settings : public objc::PeerBase {
  public:
    using Super = objc::Foreign<"NSObject">;
    static constexpr objc::Name className{"QVSettingsDataController"};
    static objc::Object sharedInstance(Class cls) { return shared(cls); }
    objc::Object pageSize() { return NSNumber::numberWithInt(companion().pageSize); }
    template <bool Companion::*field>
    bool setting() {
        return companion().*field;
    }
    template <std::atomic<bool> Companion::*field>
    bool flag() {
        return companion().*field;
    }
    template <std::atomic<bool> Companion::*field>
    void setFlag(bool value) {
        companion().*field = value;
    }
    static void define(objc::ClassDefinition<Settings>& definition) {
        definition.classMethod<"sharedInstance", &Settings::sharedInstance>()
            .method<"minRec_Call", &Settings::pageSize>()
            .method<"isReplaceRecentsOn", &Settings::setting<&Companion::isReplaceRecentsOn>>()
            .method<"isGroupByDate", &Settings::setting<&Companion::isGroupByDate>>()
            .method<"isGroupContacts_Call", &Settings::setting<&Companion::isGroupContacts>>()
            .method<"isEnableCallSearch", &Settings::setting<&Companion::isSearchEnabled>>()
            .method<"isShowHeader_Call", &Settings::setting<&Companion::isHeaderShown>>()
            .method<"isShowFooter_Call", &Settings::setting<&Companion::isFooterShown>>()
            .method<"isShowContactImage", &Settings::setting<&Companion::areImagesShown>>()
            .method<"isNeedToLoadData", &Settings::flag<&Companion::isNeedToLoadData>>()
            .method<"setIsNeedToLoadData:", &Settings::setFlag<&Companion::isNeedToLoadData>>()
            .method<"isCallSettingsChanged", &Settings::flag<&Companion::isSettingsChanged>>()
            .method<"setIsCallSettingsChanged:", &Settings::setFlag<&Companion::isSettingsChanged>>();
    }
};

class Calls : public objc::PeerBase {
  public:
    using Super = objc::Foreign<"NSObject">;
    static constexpr objc::Name className{"QVDataController"};
    static objc::Object sharedInstance(Class cls) { return shared(cls); }

    template <std::size_t i>
    objc::Strong<NSMutableArray> list() {
        return companion().lists[i].load();
    }
    template <std::size_t i>
    void setList(objc::Object list) {
        log().add("list " + n(i + 1) + (list ? " set" : " dropped"));
        companion().lists[i].store(objc::as<NSMutableArray>(list));
        if (!list && companion().duringDropping) companion().duringDropping();
    }
    template <std::size_t i>
    std::int64_t count() {
        return companion().counts[i];
    }
    template <std::size_t i>
    void setCount(std::int64_t count) {
        companion().counts[i] = count;
    }
    template <std::size_t i>
    std::int64_t duration() {
        return companion().keptDurations[i];
    }
    template <std::size_t i>
    void setDuration(std::int64_t seconds) {
        companion().keptDurations[i] = seconds;
    }
    bool isAnyRecDeleted() { return companion().isAnyRecordDeleted; }
    void setIsAnyRecDeleted(bool deleted) { companion().isAnyRecordDeleted = deleted; }

    void read(std::int64_t count, std::int64_t offset, std::int64_t filter) {
        log().add("read " + n(count) + " from " + n(offset) + " of " + n(filter));
        if (companion().duringReading) companion().duringReading();
        // As the companion itself: several threads may ask for the same rows, and no list is given a row twice.
        static std::mutex filling;
        const std::lock_guard lock(filling);
        const std::size_t place = listPlaceOf(filter);
        auto& slot = companion().lists[place];
        if (!slot.load()) slot.store(arrayOf({}));
        const auto& rows = companion().rows[place];
        const auto end = std::min<std::int64_t>(offset + std::min(count, companion().mostPerReading),
                                                static_cast<std::int64_t>(rows.size()));
        for (auto i = static_cast<std::int64_t>(slot.load()->count()); i < end; ++i)
            slot.load()->addObject(rows[static_cast<std::size_t>(i)].get());
    }
    void readDay(objc::Object, std::int64_t offset, std::int64_t filter, objc::Object day) {
        log().add("read from " + n(offset) + " of " + n(filter) + " on " + uikit::utf8(day));
        auto& slot = companion().lists[placeOf(filter)];
        if (!slot.load()) slot.store(arrayOf({}));
        for (const auto& row : companion().rows[placeOf(filter)]) slot.load()->addObject(row.get());
    }
    std::int64_t totalCount(std::int64_t filter) {
        log().add("count of " + n(filter));
        return static_cast<std::int64_t>(companion().rows[listPlaceOf(filter)].size());
    }
    std::int64_t totalDuration(std::int64_t filter) {
        log().add("duration of " + n(filter));
        return companion().durations[placeOf(filter)];
    }
    objc::Object durationText(std::int64_t seconds) { return uikit::nsString(n(seconds) + " s"); }
    objc::Strong<NSArray> search(std::int64_t filter, objc::Object text, objc::Object day) {
        log().add("search " + n(filter) + " for \"" + uikit::utf8(text) + (day ? "\" on a day" : "\""));
        if (companion().duringSearch) companion().duringSearch();
        auto found = NSMutableArray::make();
        for (const auto& entry : companion().matches) found->addObject(entry.get());
        return objc::Strong<NSArray>(found.get());
    }
    bool removeAll(std::int64_t filter, objc::Object day) {
        log().add("delete filter " + n(filter) + (day ? " on " + uikit::utf8(day) : ""));
        if (companion().duringDeletion) companion().duringDeletion();
        if (companion().refusesDeletions) return false;
        if (!day) companion().rows[placeOf(filter)].clear();
        return true;
    }
    bool removeListed(objc::Object entries, std::int64_t filter, bool forDate) {
        log().add("delete listed " + n(static_cast<std::int64_t>(objc::as<NSArray>(entries).count())) + " of " +
                  n(filter) + (forDate ? " YES" : " NO"));
        if (companion().duringDeletion) companion().duringDeletion();
        if (companion().refusesDeletions) return false;
        const auto ids = idsIn(objc::as<NSArray>(entries));
        for (auto& rows : companion().rows)
            std::erase_if(rows, [&](const auto& each) { return std::ranges::find(ids, each->ROWID()) != ids.end(); });
        return true;
    }
    bool remove(objc::Object entry, std::int64_t filter, objc::Object day) {
        const int id = objc::as<QVCallEntry>(entry).ROWID();
        log().add("delete entry " + n(id) + " of " + n(filter) + (day ? " on a day" : ""));
        if (companion().duringDeletion) companion().duringDeletion();
        if (companion().refusesDeletions) return false;
        for (auto& rows : companion().rows) std::erase_if(rows, [&](const auto& each) { return each->ROWID() == id; });
        for (auto& list : companion().lists) list.load()->removeObject(entry);
        for (auto& count : companion().counts) count = count - 1;
        return true;
    }
    void forget(objc::Object entry, std::int64_t filter) {
        log().add("forget entry " + n(objc::as<QVCallEntry>(entry).ROWID()) + " of " + n(filter));
    }
    void sort(objc::Object) { log().add("sort"); }
    void showError(objc::Object text) { log().add("error \"" + uikit::utf8(text) + "\""); }

    static void define(objc::ClassDefinition<Calls>& definition);
};

void Calls::define(objc::ClassDefinition<Calls>& definition) {
    definition.classMethod<"sharedInstance", &Calls::sharedInstance>();
    definition.method<"callList", &Calls::list<0>>().method<"setCallList:", &Calls::setList<0>>();
    definition.method<"dldCallList", &Calls::list<1>>().method<"setDldCallList:", &Calls::setList<1>>();
    definition.method<"rcdCallList", &Calls::list<2>>().method<"setRcdCallList:", &Calls::setList<2>>();
    definition.method<"msdCallList", &Calls::list<3>>().method<"setMsdCallList:", &Calls::setList<3>>();
    definition.method<"dateCallsList", &Calls::list<4>>().method<"setDateCallsList:", &Calls::setList<4>>();
    definition.method<"allCallsCount", &Calls::count<0>>().method<"setAllCallsCount:", &Calls::setCount<0>>();
    definition.method<"dldCallsCount", &Calls::count<1>>().method<"setDldCallsCount:", &Calls::setCount<1>>();
    definition.method<"rcdCallsCount", &Calls::count<2>>().method<"setRcdCallsCount:", &Calls::setCount<2>>();
    definition.method<"msdCallsCount", &Calls::count<3>>().method<"setMsdCallsCount:", &Calls::setCount<3>>();
    definition.method<"allCallsDuration", &Calls::duration<0>>()
        .method<"setAllCallsDuration:", &Calls::setDuration<0>>()
        .method<"dldCallsDuration", &Calls::duration<1>>()
        .method<"rcdCallsDuration", &Calls::duration<2>>()
        .method<"msdCallsDuration", &Calls::duration<3>>();
    definition.method<"isAnyRecDeleted", &Calls::isAnyRecDeleted>()
        .method<"setIsAnyRecDeleted:", &Calls::setIsAnyRecDeleted>()
        .method<"readCallsFromDB:offset:flag:", &Calls::read>()
        .method<"readCallsForDate:offset:flag:date:", &Calls::readDay>()
        .method<"getTotalCallCount:", &Calls::totalCount>()
        .method<"getTotalCallDuration:", &Calls::totalDuration>()
        .method<"getAllCallsDuration:", &Calls::durationText>()
        .method<"getSearchedRecordsFromDB:searchString:date:", &Calls::search>()
        .method<"removeCallsFromDB:date:", &Calls::removeAll>()
        .method<"removeDataFromDB:calFilterType:forDate:", &Calls::removeListed>()
        .method<"removeData:calFilterType:date:", &Calls::remove>()
        .method<"removeEntriesFromCallList:calFilterType:", &Calls::forget>()
        .method<"sortArray:", &Calls::sort>()
        .method<"showErrorMessage:", &Calls::showError>();
}

/// Texts are their keys; those that are formats say what they were given.
class Utilities : public objc::PeerBase {
  public:
    using Super = objc::Foreign<"NSObject">;
    static constexpr objc::Name className{"QuorvelUtils"};
    static objc::Object localizedString(Class, objc::Object key) {
        const std::string text = uikit::utf8(key);
        if (text == "ALL_SHOWING_D") return uikit::nsString("%ld shown");
        if (text.ends_with("_SHOWING_D")) return uikit::nsString("%ld of " + text.substr(0, 3) + " shown");
        if (text == "CALLS_D_D") return uikit::nsString("of %ld, %@");
        if (text == "CALLS_D") return uikit::nsString("of %ld");
        if (text == "DAYS_D_D") return uikit::nsString("of %ld days, %@");
        if (text == "DAYS_D") return uikit::nsString("of %ld days");
        if (text.ends_with("_CONTACT_CONFIRM_MSG")) return uikit::nsString(text + " %@");
        return key;
    }
    static bool mayReadContacts(Class) { return companion().mayReadContacts; }
    static objc::Object imageFromCache(Class, int contact) {
        log().add("picture of " + n(contact) + " in the cache?");
        return imageIf(companion().cachedImages.contains(contact));
    }
    static objc::Object image(Class, int contact) {
        log().add("picture of " + n(contact));
        return imageIf(companion().images.contains(contact));
    }
    /// Any object stands for the picture: it is only asked for, never drawn.
    static objc::Object imageIf(bool is) { return is ? objc::Object(uikit::nsString("picture")) : objc::Object{}; }
    static void define(objc::ClassDefinition<Utilities>& definition) {
        definition.classMethod<"getLocalizedString:", &Utilities::localizedString>()
            .classMethod<"canAccessAddressBook", &Utilities::mayReadContacts>()
            .classMethod<"getContactImageFromCache:", &Utilities::imageFromCache>()
            .classMethod<"getContactImage:", &Utilities::image>();
    }
};

}  // namespace

objc::Strong<QVCallEntry> entryOf(const Call& call) {
    const auto made = objc::Ref<Entry>::make();
    made->fill(call);
    return objc::Strong<QVCallEntry>(objc::as<QVCallEntry>(made.self()));
}

objc::Strong<NSMutableArray> arrayOf(const std::vector<Call>& calls) {
    auto array = objc::make<NSMutableArray>(objc::classOf<CallArray>());
    for (const auto& call : calls) array->addObject(entryOf(call).get());
    return array;
}

std::vector<int> idsIn(NSArray entries) {
    std::vector<int> ids;
    for (NSUInteger i = 0; i < entries.count(); ++i) ids.push_back(entries.objectAtIndex<QVCallEntry>(i).ROWID());
    return ids;
}

void Log::add(const std::string& what) {
    const std::lock_guard lock(mutex_);
    lines_.push_back(std::string(place()) + ": " + what);
}

std::vector<std::string> Log::lines() const {
    const std::lock_guard lock(mutex_);
    return lines_;
}

std::vector<std::string> Log::linesWith(const std::string& words) const {
    auto found = lines();
    std::erase_if(found, [&](const std::string& line) { return line.find(words) == std::string::npos; });
    return found;
}

void Log::clear() {
    const std::lock_guard lock(mutex_);
    lines_.clear();
}

Log& log() {
    static Log one;
    return one;
}

void Companion::setRows(int filter, const std::vector<Call>& calls) {
    auto& into = rows[static_cast<std::size_t>(filter - 1)];
    into.clear();
    for (const auto& call : calls) into.push_back(entryOf(call));
}

NSMutableArray Companion::list(int filter) const { return lists[static_cast<std::size_t>(filter - 1)].load(); }

Companion& companion() { return *kept(); }

void startOver() {
    kept() = std::make_unique<Companion>();
    log().clear();
}

void registerClasses() {
    objc::registerClasses<Settings, Calls, Utilities, Entry>();
    objc::classOf<CallArray>();
}

}  // namespace callcompanion
