// What taps on rows do.
#include "desktop/substrate/trace.h"
#include "tests/messages/rows_screens.h"

namespace rowsmessages {
namespace {

using Selection = RowsMessages;

constexpr const char* person = "ABPersonViewController_Modern";
constexpr const char* unknownPerson = "ABUnknownPersonViewController_Modern";
constexpr const char* day = "QVDateLogViewController";

TEST_F(Selection, ofACallOpensItsContact) {
    companion().person = [](int record) { return addPerson(record, "Anna Berg"); };
    load({{.record = 7}});
    tap(0);
    EXPECT_THAT(opened(), ElementsAre(person));
    EXPECT_THAT(addresses(), IsEmpty());
}

TEST_F(Selection, isTheScreensOwnMessageAndTakesTheMarkOffTheRowAtOnce) {
    load({{}});
    std::vector<std::string> lines;
    ASSERT_FALSE(substrate::trace::begin({"PHRecentsViewController", "UITableView"}, [&](const std::string& line) {
        for (const char* name : {"handleTableRowSelection:", "handleDidSelectRowAtIndexAction:", "deselectRow"})
            if (line.find(name) != std::string::npos) lines.push_back(line.substr(0, line.find(']') + 1));
        if (line.find("deselectRow") != std::string::npos) lines.push_back(line.substr(line.rfind(' ') + 1));
    }));
    tap(0);
    EXPECT_THAT(lines, ElementsAre("-[PHRecentsViewController handleTableRowSelection:]",
                                   "-[PHRecentsViewController handleDidSelectRowAtIndexAction:]",
                                   "-[UITableView deselectRowAtIndexPath:animated:]", "NO"));
}

TEST_F(Selection, callsBackWhereTheUserWantsThatOfATap) {
    companion().isCallOnTap = true;
    load({{.number = "+4930100"}});
    tap(0);
    EXPECT_THAT(addresses(), ElementsAre("tel://+4930100"));
    EXPECT_THAT(opened(), IsEmpty());
}

TEST_F(Selection, callsAFaceTimeCallBackTheWayItCame) {
    companion().isCallOnTap = true;
    load({{.number = "anna@example.com", .isFaceTime = true, .isFaceTimeVideo = true},
          {.number = "anna@example.com", .isFaceTime = true}});
    tap(0);
    tap(1);
    EXPECT_THAT(addresses(), ElementsAre("facetime://anna@example.com", "facetime-audio://anna@example.com"));
}

TEST_F(Selection, ofAFaceTimeCallWhileFaceTimeIsOffCallsTheStoredAddressByTelephone) {
    companion().isCallOnTap = true;
    companion().isFaceTimeEnabled = false;
    load({{.number = "anna@example.com", .isFaceTime = true, .isFaceTimeVideo = true}});
    tap(0);
    EXPECT_THAT(addresses(), ElementsAre("tel://anna@example.com"));
}

TEST_F(Selection, ofADayOpensTheDayAsIfTapsDidNotCallBack) {
    companion().isCallOnTap = true;
    companion().isGroupByDate = true;
    load({{.record = 7}});
    tap(0);
    EXPECT_THAT(addresses(), IsEmpty());
    ASSERT_THAT(opened(), ElementsAre(day));
    EXPECT_EQ(ask<"dateEntry">(top()), call(0));
    EXPECT_THAT(events(), IsEmpty()) << "no person is looked for, no call is queried";
}

TEST_F(Selection, ofTheLoadMoreRowDoesNothing) {
    companion().pageSize = 2;
    load({{}, {}, {}});
    ASSERT_EQ((send<"tableView:numberOfRowsInSection:", long>(table(), 0L)), 3);
    tap(2);
    EXPECT_THAT(opened(), IsEmpty());
    EXPECT_THAT(addresses(), IsEmpty());
}

TEST_F(Selection, ofTheLoadMoreRowCallsTheEntryThatWaitsThereWhileTapsCallBackOnPurpose) {
    companion().isCallOnTap = true;
    companion().pageSize = 2;
    load({{.number = "1"}, {.number = "2"}, {.number = "3"}});
    tap(2);
    EXPECT_THAT(addresses(), ElementsAre("tel://3"));
}

TEST_F(Selection, ofARowBehindTheListDoesNothingWhileTapsCallBack) {
    companion().isCallOnTap = true;
    load({{.number = "1"}});
    tap(1);
    EXPECT_THAT(addresses(), IsEmpty());
    EXPECT_THAT(opened(), IsEmpty());
}

TEST_F(Selection, ofACallWithoutANumberDoesNothingWhileTapsCallBack) {
    companion().isCallOnTap = true;
    load({{.number = nullptr}});
    tap(0);
    EXPECT_THAT(addresses(), IsEmpty());
    EXPECT_THAT(opened(), IsEmpty());
}

TEST_F(Selection, ofANumberThatMakesNoAddressAsItIsStoredCallsNobodyOnPurpose) {
    companion().isCallOnTap = true;
    load({{.number = "030 1234"}, {.number = "*31#0301234"}});
    tap(0);
    tap(1);
    EXPECT_THAT(addresses(), IsEmpty());
    EXPECT_THAT(opened(), IsEmpty());
}

TEST_F(Selection, byTheDetailButtonOpensTheContactWhateverTapsDo) {
    companion().isCallOnTap = true;
    load({{}});
    tapDetail(0);
    EXPECT_THAT(opened(), ElementsAre(unknownPerson));
    EXPECT_THAT(addresses(), IsEmpty());
}

TEST_F(Selection, byTheDetailButtonOpensADayWhateverTapsDo) {
    companion().isCallOnTap = true;
    companion().isGroupByDate = true;
    load({{}});
    tapDetail(0);
    EXPECT_THAT(opened(), ElementsAre(day));
}

TEST_F(Selection, byTheDetailButtonBehindTheListOpensNothing) {
    load({{}});
    tapDetail(5);
    EXPECT_THAT(opened(), IsEmpty());
}

TEST_F(Selection, ofACallWithoutAContactAfterOneWithAContactShowsNobodysCard) {
    companion().person = [](int record) { return addPerson(record, "Anna Berg"); };
    load({{.record = 7}, {.record = -1}});
    tap(0);
    tap(1);
    EXPECT_THAT(opened(), ElementsAre(person, unknownPerson));
}

TEST_F(Selection, ofACallWhoseContactIsGoneShowsNobodysCard) {
    load({{.record = 7}});
    tap(0);
    EXPECT_THAT(opened(), ElementsAre(unknownPerson));
    EXPECT_THAT(events(), testing::Contains("getPersonRecordFromDB: 7"));
}

TEST_F(Selection, asksForThePersonOfAnyRecordButThatOfNobody) {
    load({{.record = 0}, {.record = -2}, {.record = -1}});
    for (long row : {0, 1, 2}) tap(row);
    std::vector<std::string> asked;
    for (const auto& event : events())
        if (event.starts_with("getPerson")) asked.push_back(event);
    EXPECT_THAT(asked, ElementsAre("getPersonRecordFromDB: 0", "getPersonRecordFromDB: -2"));
}

TEST_F(Selection, keepsTheHostFromCallingByItself) {
    auto index = path(0);
    EXPECT_FALSE((send<"callAtTableViewIndex:", objc::Object>(index)));
    EXPECT_THAT(events(), IsEmpty());
}

TEST_F(Selection, isTheHostsOwnWhileReplaceRecentsIsOff) {
    companion().isReplaceRecentsOn = false;
    auto index = path(0);
    EXPECT_EQ((send<"callAtTableViewIndex:", objc::Object>(index)), index);
    tap(0);
    tapDetail(0);
    EXPECT_THAT(events(), ElementsAre("host callAtTableViewIndex", "host didSelectRow", "host accessoryButtonTapped"));
    EXPECT_THAT(opened(), IsEmpty());
}

struct Added {
    const char* selector;
    const char* types;
};
// The product's type strings, letter for letter; they are not the runtime's own form, on purpose.
constexpr Added added[] = {
    {"handleTableRowSelection:", "v@:@@"},
    {"callListForSelectedCall:", "v@:@@"},
    {"handleDidSelectRowAtIndexAction:", "v@:@@"},
    {"showLogAction:", "v@:@@"},
    {"detailsButotnClicked", "v@"},
    {"personViewController:shouldPerformDefaultActionForPerson:property:identifier:", "i@:@@:@@:i@:i@"},
    {"unknownPersonViewController:didResolveToPerson:", "v@:@@:@@"},
    {"updateCallEntry:", "v@:@@"},
    {"saveNewContactAndPresentABPersonViewController", "v@"},
    {"entryDeleted:", "v@:@@"},
};

TEST_F(Selection, isInstalledWithTheProductsOwnTypeStrings) {
    for (const auto& row : added) {
        auto* method =
            class_getInstanceMethod(objc::classNamed<"PHRecentsViewController">(), sel_registerName(row.selector));
        ASSERT_NE(method, nullptr) << row.selector;
        EXPECT_STREQ(method_getTypeEncoding(method), row.types) << row.selector;
    }
}

}  // namespace
}  // namespace rowsmessages
