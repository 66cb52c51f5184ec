// What rows say, text by text, with the clock at Saturday, 21 November 2026, 15:00 in Berlin.
#include "desktop/quorvel/visual/call_cell.h"
#include "desktop/quorvel/visual/call_time.h"
#include "desktop/quorvel/visual/contact_picture.h"
#include "desktop/quorvel/visual/row_parts.h"
#include "tests/quorvel_visual/fixture.h"

namespace quorvel::test {
namespace {

class RowTest : public VisualTest {
  protected:
    static objc::Ref<CallCell> cell(Entry::Fields fields) {
        auto made = objc::Ref<CallCell>::make<"initWithStyle:reuseIdentifier:">(0L, objc::Object{});
        made->setCallEntry(Entry::make(std::move(fields))->object());
        return made;
    }
    static Texts textsOf(Entry::Fields fields) { return cell(std::move(fields))->drawnTexts(); }
};

TEST_F(RowTest, aCallSaysItsNameItsLabelAndItsTime) {
    EXPECT_EQ(textsOf({.name = "Anna Berg", .number = "+4930123456", .label = "mobile", .date = now - 58 * minute}),
              (Texts{"Anna Berg", "mobile", "14:02"}));
}

TEST_F(RowTest, aCallWithoutAContactSaysItsNumberAndThePlace) {
    EXPECT_EQ(textsOf({.number = "+4930123456", .location = "Berlin", .date = now}),
              (Texts{"+4930123456", "Berlin", "15:00"}));
    EXPECT_EQ(textsOf({.number = "+4930123456", .date = now}), (Texts{"+4930123456", "15:00"}));
}

TEST_F(RowTest, theNumberIsWrittenAsTheCompanionWritesIt) {
    sources().number = [](const std::string& number) { return "<" + number + ">"; };
    EXPECT_EQ(textsOf({.number = "110", .date = now}), (Texts{"<110>", "15:00"}));
}

TEST_F(RowTest, aCallWithoutANumberSaysSo) { EXPECT_EQ(textsOf({.date = now}), (Texts{"UNKNOWN", "15:00"})); }

TEST_F(RowTest, aFaceTimeCallSaysItsKindInPlaceOfTheLabel) {
    EXPECT_EQ(textsOf({.name = "Kim", .label = "home", .date = now, .faceTime = true}),
              (Texts{"Kim", "FaceTime Audio", "15:00"}));
    EXPECT_EQ(textsOf({.name = "Kim", .label = "home", .date = now, .faceTime = true, .faceTimeVideo = true}),
              (Texts{"Kim", "FaceTime", "15:00"}));
}

TEST_F(RowTest, theCountIsShownWhenAskedForAndMoreThanOne) {
    const auto three = cell({.name = "Kim", .date = now, .count = 3});
    EXPECT_EQ(three->drawnTexts(), (Texts{"Kim", "15:00"}));
    three->setShowGroupCount(true);
    EXPECT_EQ(three->drawnTexts(), (Texts{"Kim (3)", "15:00"}));
    const auto one = cell({.name = "Kim", .date = now, .count = 1});
    one->setShowGroupCount(true);
    EXPECT_EQ(one->drawnTexts(), (Texts{"Kim", "15:00"}));
}

TEST_F(RowTest, underItsDayACallSaysTheTimeAlone) {
    sources().groupsByDay = [] { return true; };
    EXPECT_EQ(textsOf({.number = "110", .date = now - 9 * day}), (Texts{"110", "15:00"}));
}

TEST_F(RowTest, theTimeFollowsTheLocalDay) {
    EXPECT_EQ(listTime(now - 15 * hour), "00:00");
    EXPECT_EQ(listTime(now - 15 * hour - 1), "Yesterday");
    EXPECT_EQ(listTime(now - 39 * hour), "Yesterday");
    EXPECT_EQ(listTime(now - 39 * hour - 1), "Thursday");
    EXPECT_EQ(listTime(now - 6 * day), "Sunday");
    EXPECT_EQ(listTime(now - 7 * day), "11/14/26");
    EXPECT_EQ(listTime(now + day), "11/22/26");
}

TEST_F(RowTest, aDayOfTwentyFiveHoursIsStillOneDay) {
    // The clocks went back on 25 October 2026 at three in the morning.
    now_ = 1793000000;                             // Monday, 26 October, 08:33
    EXPECT_EQ(listTime(1792879200), "Yesterday");  // Sunday, 00:00, in summer time
    EXPECT_EQ(listTime(1792879199), "Saturday");
}

TEST_F(RowTest, timesAreInTheUsersLanguageWithTheDigitsOfTheProduct) {
    const auto yesterday = now - day;
    const auto lastWeek = now - 7 * day;
    const struct {
        const char* language;
        const char* yesterday;
        const char* lastWeek;
    } cases[] = {{"de", "Gestern", "14.11.26"}, {"es", "Ayer", "14/11/26"}, {"ru", "Вчера", "14.11.2026"}};
    for (const auto& each : cases) {
        language_ = each.language;
        EXPECT_EQ(listTime(yesterday), each.yesterday);
        EXPECT_EQ(listTime(lastWeek), each.lastWeek);
        EXPECT_EQ(listTime(now), "15:00");
    }
    language_ = "ar";
    EXPECT_EQ(listTime(yesterday), "أمس");
    EXPECT_EQ(listTime(now), "15:00");
}

TEST_F(RowTest, aDaySaysItsDateThenItsCountsAndDurations) {
    const auto made = cell({.day = "2026-11-21",
                            .date = now,
                            .dialled = 12,
                            .received = 8,
                            .missedCalls = 3,
                            .dialledSeconds = 3723,
                            .receivedSeconds = 65});
    made->setShowGroupByDateCell(true);
    EXPECT_EQ(made->drawnTexts(), (Texts{"Saturday, November 21", "12", "1:02:03", "8", "1:05", "3"}));
}

TEST_F(RowTest, aDayOfAnotherYearSaysTheYear) {
    EXPECT_EQ(dayHeadline("2025-09-03"), "Wednesday, September 3, 2025");
    EXPECT_EQ(dayHeadline("2026-01-01"), "Thursday, January 1");
    EXPECT_EQ(dayHeadline("1 January"), "");
    EXPECT_EQ(dayHeadline("2026-02-31"), "");
}

TEST_F(RowTest, aDayWithoutADateTextIsNamedByItsNewestCall) {
    const auto made = cell({.date = now - 3 * day});
    made->setShowGroupByDateCell(true);
    EXPECT_EQ(made->drawnTexts().front(), "Wednesday, November 18");
}

TEST_F(RowTest, aHistorysCallSaysItsExactTimeItsNumberAndItsLength) {
    const auto made = cell({.name = "Anna", .number = "+4930123456", .date = now, .duration = 185, .outgoing = true});
    made->setShowLogCell(true);
    EXPECT_EQ(made->drawnTexts(), (Texts{"Nov 21, 2026, 15:00", "+4930123456", "3:05"}));
}

TEST_F(RowTest, aHistorysMissedFaceTimeCallHasNoLength) {
    const auto made = cell({.number = "a@b.example", .date = now, .missed = true, .faceTime = true});
    made->setShowLogCell(true);
    EXPECT_EQ(made->drawnTexts(), (Texts{"Nov 21, 2026, 15:00", "FaceTime Audio · a@b.example"}));
}

TEST_F(RowTest, durationsCountHoursOnlyWhereThereAreAny) {
    EXPECT_EQ(durationText(-5), "0:00");
    EXPECT_EQ(durationText(0), "0:00");
    EXPECT_EQ(durationText(59), "0:59");
    EXPECT_EQ(durationText(3599), "59:59");
    EXPECT_EQ(durationText(3600), "1:00:00");
    EXPECT_EQ(durationText(360000), "100:00:00");
}

TEST_F(RowTest, drawingAsksTheEntryNothing) {
    const auto entry = Entry::make({.name = "Kim", .date = now, .contact = 4, .count = 2});
    auto made = objc::Ref<CallCell>::make<"initWithStyle:reuseIdentifier:">(0L, objc::Object{});
    made->setFrame({{}, {320, 50}});
    made->setCallEntry(entry->object());
    const int asked = entry->asked;
    EXPECT_EQ(asked, 18);
    const graphics::Image image({320, 50}, 2);
    graphics::Canvas canvas(image);
    for (const bool shows : {true, false}) {
        made->setShowGroupCount(shows);
        made->setShowGroupByDateCell(shows);
        made->render(canvas);
        made->drawnTexts();
    }
    EXPECT_EQ(entry->asked, asked);
}

TEST_F(RowTest, aCellThatIsUsedAgainForgetsItsEntryAndItsFlags) {
    const auto made = cell({.name = "Kim", .date = now, .count = 2});
    made->setShowGroupCount(true);
    made->setShowLogCell(true);
    made->setShowGroupByDateCell(true);
    made->prepareForReuse();
    EXPECT_FALSE(made->callEntry());
    EXPECT_FALSE(made->showGroupCount() || made->showLogCell() || made->showGroupByDateCell());
    EXPECT_EQ(made->drawnTexts(), Texts{});
}

TEST_F(RowTest, aPictureIsAskedForOnlyForAContactAndWhereTheSettingIsOn) {
    std::vector<int> asked;
    sources().picture = [&](int record) {
        asked.push_back(record);
        return objc::Object{};
    };
    cell({.contact = 5});
    EXPECT_EQ(asked, std::vector<int>{});
    sources().showsPictures = [] { return true; };
    cell({.contact = 0});
    cell({.contact = -1});
    EXPECT_EQ(asked, std::vector<int>{});
    cell({.contact = 5});
    EXPECT_EQ(asked, std::vector<int>{5});
}

TEST_F(RowTest, aPictureThatCameLaterIsDrawnAfterSetNeedsDisplay) {
    sources().showsPictures = [] { return true; };
    graphics::Image green({34, 34}, 1);
    graphics::Canvas(green).fill({{}, {34, 34}}, graphics::Color::fromHex(0x00FF00));
    bool isLoaded = false;
    sources().picture = [&](int) { return isLoaded ? uikit::uiImage(green) : objc::Object{}; };
    const auto made = cell({.name = "Kim", .date = now, .contact = 5});
    made->setFrame({{}, {320, 50}});
    auto middleOfPicture = [&] {
        const graphics::Image image({320, 50}, 1);
        graphics::Canvas canvas(image);
        made->layoutIfNeeded();
        made->render(canvas);
        return image.pixel(42, 32);
    };
    EXPECT_NE(middleOfPicture(), 0xFF00FF00);
    isLoaded = true;
    objc::send<"setNeedsDisplay">(made->object());
    EXPECT_EQ(middleOfPicture(), 0xFF00FF00);
}

/// Rows under each other look alike: a long name is cut where a long number would be written smaller.
TEST_F(RowTest, everyNameStandsInOneSize) {
    const auto inkAboveTheMiddle = [](const std::string& name, const std::string& number) {
        const auto made = cell({.name = name, .number = number, .label = "mobile", .date = now});
        made->setFrame({{}, {160, 50}});
        const graphics::Image image({160, 50}, 1);
        graphics::Canvas canvas(image);
        made->layoutIfNeeded();
        made->render(canvas);
        // The first letter's column, from the top of the row to the subtitle.
        int height = 0;
        for (int y = 0; y < 26; ++y) {
            bool isInk = false;
            for (int x = 30; x < 36; ++x) isInk |= (image.pixel(x, y) & 0xFF) < 0x80;
            height += isInk;
        }
        return height;
    };
    const int usual = inkAboveTheMiddle("HH", "+4930");
    ASSERT_GT(usual, 0);
    EXPECT_EQ(inkAboveTheMiddle("HHHHHHHHHHHHHHHHHHHH", "+4930"), usual);
    EXPECT_LT(inkAboveTheMiddle("", "HHHHHHHHHHHHHHHHHHHH"), usual);
}

TEST_F(RowTest, aNumberIsWrittenSmallerBeforeItIsCut) {
    const auto whole = graphics::Font::system(16);
    const std::string number = "+49 30 55510006";
    const double width = textWidth(number, whole);
    EXPECT_EQ(fittedFont(number, whole, 14, width), whole);
    const auto smaller = fittedFont(number, whole, 14, width - 6);
    EXPECT_LT(smaller.size, 16);
    EXPECT_GE(smaller.size, 14);
    EXPECT_LE(textWidth(number, smaller), width - 6);
    EXPECT_EQ(fittedFont(number, whole, 14, 20).size, 14);
}

TEST_F(RowTest, initialsAreOfTheFirstAndTheLastWord) {
    EXPECT_EQ(initialsOf("Anna Berg"), "AB");
    EXPECT_EQ(initialsOf("anna maria von berg"), "AB");
    EXPECT_EQ(initialsOf("Ölaf"), "Ö");
    EXPECT_EQ(initialsOf("Élodie Žižek"), "ÉŽ");
    EXPECT_EQ(initialsOf("王小明"), "王");
    EXPECT_EQ(initialsOf("ليلى منصور"), "ل");
    EXPECT_EQ(initialsOf("🎸 Max Müller"), "MM");
    EXPECT_EQ(initialsOf("Dr. Petra Hollmann-Winterfeld"), "PH");
    EXPECT_EQ(initialsOf("J. Doe"), "JD");
    EXPECT_EQ(initialsOf("Dr."), "D");
    EXPECT_EQ(initialsOf("+49 30"), "");
    EXPECT_EQ(initialsOf(""), "");
}

}  // namespace
}  // namespace quorvel::test
