// QVCallEntry: fields, kinds, copies.
#include "desktop/quorvel/services/phone_number.h"
#include "fixture.h"

namespace quorvel::test {
namespace {

class EntryTest : public CompanionTest {
  protected:
    objc::Strong<> entry_ = objc::make<objc::Object>(objc::classNamed<"QVCallEntry">());

    template <objc::Name getter, objc::Name setter, class T>
    T through(T value) {
        objc::send<setter>(entry_.get(), value);
        return objc::send<getter, T>(entry_.get());
    }
    template <objc::Name name>
    bool is() {
        return objc::send<name, bool>(entry_.get());
    }
    void be(int flag, int duration) {
        objc::send<"setFlag:">(entry_.get(), flag);
        objc::send<"setDuration:">(entry_.get(), duration);
    }
};

TEST_F(EntryTest, aNewEntryHasNoContactAndStandsForOneCall) {
    EXPECT_EQ((objc::send<"abRecID", int>(entry_.get())), -1);
    EXPECT_EQ((objc::send<"count", int>(entry_.get())), 1);
    EXPECT_FALSE((objc::send<"name", NSString>(entry_.get())));
    EXPECT_FALSE(is<"isDeleted">());
}

TEST_F(EntryTest, everyFieldComesBackAsItWasSet) {
    EXPECT_EQ((through<"ROWID", "setROWID:">(7)), 7);
    EXPECT_EQ((through<"iLogOID", "setILogOID:">(8)), 8);
    EXPECT_EQ((through<"abRecID", "setAbRecID:">(-1)), -1);
    EXPECT_EQ((through<"date", "setDate:">(1718452800)), 1718452800);
    EXPECT_EQ((through<"duration", "setDuration:">(61)), 61);
    EXPECT_EQ((through<"flag", "setFlag:">(9)), 9);
    EXPECT_EQ((through<"count", "setCount:">(-2)), -2);
    EXPECT_TRUE((through<"isDeleted", "setIsDeleted:">(true)));
    EXPECT_EQ((through<"dldCallsCnt", "setDldCallsCnt:">(std::int64_t{5000000000})), 5000000000);
    EXPECT_EQ((through<"rcdCallsCnt", "setRcdCallsCnt:">(std::int64_t{2})), 2);
    EXPECT_EQ((through<"msdCallsCnt", "setMsdCallsCnt:">(std::int64_t{3})), 3);
    EXPECT_EQ((through<"dldCallsDuration", "setDldCallsDuration:">(std::int64_t{4})), 4);
    EXPECT_EQ((through<"rcdCallsDuration", "setRcdCallsDuration:">(std::int64_t{5})), 5);
    EXPECT_EQ(uikit::utf8(through<"phoneNumber", "setPhoneNumber:">(ns("+4930123"))), "+4930123");
    EXPECT_EQ(uikit::utf8(through<"name", "setName:">(ns("Zoë"))), "Zoë");
    EXPECT_EQ(uikit::utf8(through<"phoneLabel", "setPhoneLabel:">(ns("home"))), "home");
    EXPECT_EQ(uikit::utf8(through<"location", "setLocation:">(ns("Berlin"))), "Berlin");
    EXPECT_EQ(uikit::utf8(through<"grpByDate", "setGrpByDate:">(ns("2024-06-15"))), "2024-06-15");
}

TEST_F(EntryTest, kindsHaveNoSetter) {
    for (const char* name : {"setIsDialed:", "setIsMissed:", "setIsReceived:", "setIsCanceled:", "setIsOutGoing:",
                             "setIsFaceTime:", "setIsFaceTimeVideo:"})
        EXPECT_FALSE(objc::respondsTo(entry_.get(), sel_registerName(name))) << name;
}

TEST_F(EntryTest, aTextIsCopiedWhenItIsSet) {
    auto text = objc::make<objc::Object, "initWithUTF8String:">(objc::classNamed<"NSMutableString">(),
                                                                static_cast<const char*>("Anna"));
    objc::send<"setName:">(entry_.get(), text.get());
    objc::send<"appendString:">(text.get(), ns(" Weber"));
    EXPECT_EQ(uikit::utf8(objc::send<"name", NSString>(entry_.get())), "Anna");
}

TEST_F(EntryTest, callsOfOneNumberShareTheirTextsUntilOneIsSet) {
    add({{"100", noon, 0, 4, 1, "Anna"}, {"100", noon - 1, 0, 4, 1, "Anna"}});
    read(10, 0, all);
    const auto& first = entry(list(all), 0);
    const auto& second = entry(list(all), 1);
    EXPECT_EQ(first.text<&CounterpartTexts::name>().self(), second.text<&CounterpartTexts::name>().self());
    objc::send<"setName:">(objc::Object{second.self}, ns("Berta"));
    EXPECT_EQ(uikit::utf8(first.text<&CounterpartTexts::name>()), "Anna");
    EXPECT_EQ(uikit::utf8(second.text<&CounterpartTexts::name>()), "Berta");
    EXPECT_EQ(uikit::utf8(second.phoneNumber()), "100");
    objc::send<"setName:">(objc::Object{second.self}, objc::Object{});
    EXPECT_FALSE(second.text<&CounterpartTexts::name>());
}

TEST_F(EntryTest, directionAndDurationDecideTheKind) {
    be(5, 10);
    EXPECT_TRUE(is<"isDialed">() && is<"isOutGoing">() && !is<"isCanceled">() && !is<"isReceived">());
    be(5, 0);
    EXPECT_TRUE(is<"isCanceled">() && is<"isOutGoing">() && !is<"isDialed">() && !is<"isMissed">());
    be(4, 10);
    EXPECT_TRUE(is<"isReceived">() && !is<"isOutGoing">() && !is<"isMissed">());
    be(0, 0);
    EXPECT_TRUE(is<"isMissed">() && !is<"isOutGoing">() && !is<"isReceived">());
    be(9, 10);
    EXPECT_TRUE(is<"isDialed">());
}

TEST_F(EntryTest, bitFourIsFaceTimeAndBitFiveBesideItAudio) {
    be(4, 10);
    EXPECT_FALSE(is<"isFaceTime">() || is<"isFaceTimeVideo">());
    be(20, 10);
    EXPECT_TRUE(is<"isFaceTime">() && is<"isFaceTimeVideo">());
    be(52, 10);
    EXPECT_TRUE(is<"isFaceTime">() && !is<"isFaceTimeVideo">());
}

TEST_F(EntryTest, aCallThatNamesNoPlaceHasThatOfItsNumber) {
    setHomeRegion("DE");
    add({{"03020930", noon}, {"", noon - 1}, {"110", noon - 2}, {"anna@b.example", noon - 3}});
    read(10, 0, all);
    EXPECT_EQ(uikit::utf8(entry(list(all), 0).text<&CounterpartTexts::location>()), "Berlin");
    for (const unsigned long placeless : {1UL, 2UL, 3UL})
        EXPECT_FALSE(entry(list(all), placeless).text<&CounterpartTexts::location>()) << placeless;
}

TEST_F(EntryTest, aNumberIsPlacedAnewWhenTheHomeIsAnother) {
    setHomeRegion("DE");
    add({{"03020930", noon}});
    read(10, 0, all);
    EXPECT_EQ(uikit::utf8(entry(list(all), 0).text<&CounterpartTexts::location>()), "Berlin");
    setHomeRegion("US");
    list(all).removeAllObjects();
    read(10, 0, all);
    EXPECT_FALSE(entry(list(all), 0).text<&CounterpartTexts::location>());
}

TEST_F(EntryTest, thePlaceThatACallNamesStays) {
    setHomeRegion("DE");
    store::NewCall call;
    call.address = "03020930";
    call.date = noon;
    call.location = "At sea";
    ASSERT_TRUE(callStore()->append(call));
    read(10, 0, all);
    EXPECT_EQ(uikit::utf8(entry(list(all), 0).text<&CounterpartTexts::location>()), "At sea");
}

}  // namespace
}  // namespace quorvel::test
