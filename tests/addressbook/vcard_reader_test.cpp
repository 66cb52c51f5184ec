// How vCards are read: every version's own ways, and what programs make of them.
#include <gmock/gmock.h>

#include "vcard_support.h"

namespace vcard::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TEST(VCardReader, anEmptyFileHasNoCards) {
    EXPECT_THAT(readText("").cards, IsEmpty());
    EXPECT_THAT(readText("").problems, IsEmpty());
    EXPECT_THAT(readText("\r\n\n\r").problems, IsEmpty());
}

TEST(VCardReader, linesEndInAnyOfTheFourWays) {
    for (const std::string end : {"\n", "\r\n", "\r", "\r\r\n"}) {
        const auto outcome = readText("BEGIN:VCARD" + end + "VERSION:3.0" + end + "FN:An" + end + " na" + end +
                                      "NOTE:x" + end + "END:VCARD" + end);
        ASSERT_EQ(outcome.cards.size(), 1U) << end.size();
        EXPECT_EQ(text(outcome, "FN"), "Anna");
        EXPECT_EQ(text(outcome, "NOTE"), "x");
        EXPECT_THAT(outcome.problems, IsEmpty());
    }
}

TEST(VCardReader, aMarkOfTheByteOrderIsNoText) {
    EXPECT_EQ(text(readText("\xEF\xBB\xBF"
                            "BEGIN:VCARD\nFN:Anna\nEND:VCARD\n"),
                   "FN"),
              "Anna");
}

TEST(VCardReader, bothOrdersOfUtf16AreRead) {
    std::string little("\xFF\xFE", 2);
    std::string big("\xFE\xFF", 2);
    for (const char16_t unit : std::u16string(u"BEGIN:VCARD\r\nFN:Zoë 中 🎂\r\nEND:VCARD\r\n")) {
        little += {static_cast<char>(unit & 0xFF), static_cast<char>(unit >> 8)};
        big += {static_cast<char>(unit >> 8), static_cast<char>(unit & 0xFF)};
    }
    EXPECT_EQ(text(readText(little), "FN"), "Zoë 中 🎂");
    EXPECT_EQ(text(readText(big), "FN"), "Zoë 中 🎂");
}

TEST(VCardReader, halfACharacterOfUtf16IsReplaced) {
    const std::string lone("\xFE\xFF\0F\0N\0:\xD8\x3C\0x\0\n", 14);
    EXPECT_EQ(text(readText(lone), "FN"), "\xEF\xBF\xBD");
}

TEST(VCardReader, namesAndMarksAreReadWhateverTheirCase) {
    const auto outcome = readText("begin:vCard\nversion:3.0\nfn:Anna\ntel;type=cell:1\nend:Vcard\n");
    EXPECT_EQ(text(outcome, "FN"), "Anna");
    EXPECT_TRUE(outcome.cards[0].find("TEL")->hasType("CELL"));
    EXPECT_THAT(outcome.problems, IsEmpty());
}

TEST(VCardReader, aGroupStandsBeforeTheName) {
    const auto outcome = readLines("item1.TEL:1\nitem1.X-ABLabel:_$!<Mobile>!$_\n");
    EXPECT_EQ(outcome.cards[0].find("TEL")->group, "item1");
    EXPECT_EQ(text(outcome, "X-ABLABEL"), "_$!<Mobile>!$_");
}

TEST(VCardReader, typesAreTheSameInEveryForm) {
    for (const char* line :
         {"TEL;WORK;FAX:1\n", "TEL;TYPE=WORK;TYPE=FAX:1\n", "TEL;TYPE=WORK,FAX:1\n", "TEL;TYPE=\"WORK,FAX\":1\n",
          "TEL; WORK ; type = FAX :1\n", "TEL;TYPE=\"WORK\",\"FAX\":1\n", "TEL;;TYPE=;WORK;FAX;:1\n"}) {
        const auto outcome = readLines(line);
        ASSERT_NE(outcome.cards[0].find("TEL"), nullptr) << line;
        EXPECT_THAT(outcome.cards[0].find("TEL")->parameter("TYPE"), ElementsAre("WORK", "FAX")) << line;
    }
}

TEST(VCardReader, quotedParametersMayHoldWhatSeparates) {
    const auto outcome = readLines("ADR;LABEL=\"a;b:c,d é\";TYPE=HOME:;;x;;;;\nX;P=A^^B^'C^nD^x:v\n");
    EXPECT_THAT(outcome.cards[0].find("ADR")->parameter("LABEL"), ElementsAre("a;b:c,d é"));
    EXPECT_TRUE(outcome.cards[0].find("ADR")->hasType("home"));
    EXPECT_THAT(outcome.cards[0].find("X")->parameter("P"), ElementsAre("A^B\"C\nD^x"));
}

TEST(VCardReader, aQuoteThatIsNeverClosedIsACharacter) {
    const auto outcome = readLines("TEL;TYPE=\"HOME:1\n");
    EXPECT_EQ(text(outcome, "TEL"), "1");
    EXPECT_THAT(outcome.cards[0].find("TEL")->parameter("TYPE"), ElementsAre("\"HOME"));
}

TEST(VCardReader, escapesAreUndoneOnceAndOnlyThese) {
    EXPECT_EQ(text(readLines("NOTE:a\\nb\\Nc\\,d\\;e\\:f\\\\n\\x\\\n"), "NOTE"), "a\nb\nc,d;e:f\\n\\x\\");
    EXPECT_THAT(split("a\\;b;c,d;;e\\\\;f", ';'), ElementsAre("a;b", "c,d", "", "e\\", "f"));
    EXPECT_THAT(split("", ';'), ElementsAre(""));
}

TEST(VCardReader, earlyTextsEscapeTheSemicolonAlone) {
    const auto outcome =
        readLines("N:Doe;John;Richter,James\\;Jr;Mr.;\nNOTE;QUOTED-PRINTABLE:C:\\new=0D=0Aline, two\n", "2.1");
    EXPECT_THAT(split(outcome.cards[0].find("N")->value, ';'),
                ElementsAre("Doe", "John", "Richter,James;Jr", "Mr.", ""));
    EXPECT_EQ(text(outcome, "NOTE"), "C:\\new\nline, two");
}

TEST(VCardReader, quotedPrintableGoesOnAfterASoftLineBreak) {
    EXPECT_EQ(text(readLines("FN;ENCODING=QUOTED-PRINTABLE:J=C3=BCrg=\r\nen =\r\nB=\r\n", "2.1"), "FN"), "Jürgen B=");
    EXPECT_EQ(text(readLines("FN;QUOTED-PRINTABLE:Ren=C3=A9 =\n Dupont\n", "2.1"), "FN"), "René Dupont");
    EXPECT_EQ(text(readLines("FN;QUOTED-PRINTABLE:Ren=C3=A9=\n Dupont\n", "2.1"), "FN"), "René Dupont");
    EXPECT_EQ(text(readLines("FN;QUOTED-PRINTABLE:Ren=C3=A9= \t\n Dupont\n", "2.1"), "FN"), "René Dupont");
}

TEST(VCardReader, anEqualsSignAtTheEndOfTheLastPropertyEndsNoCard) {
    const auto outcome = readLines("NOTE;QUOTED-PRINTABLE:a=\n", "2.1");
    EXPECT_EQ(outcome.cards.size(), 1U);
    EXPECT_THAT(outcome.problems, IsEmpty());
}

TEST(VCardReader, whatIsNoQuotedPrintableStaysAsItIs) {
    EXPECT_EQ(text(readLines("NOTE;QUOTED-PRINTABLE:1=2 =zz =e4=b8=ad =\n", "2.1"), "NOTE"), "1=2 =zz 中 =");
}

TEST(VCardReader, foldsOfTheLaterVersionsLoseTheirBlankAndOfTheEarlyOneKeepIt) {
    EXPECT_EQ(text(readLines("NOTE:one\n  two\n\tthree\n"), "NOTE"), "one twothree");
    EXPECT_EQ(text(readLines("NOTE:one\n two\n", "2.1"), "NOTE"), "one two");
}

TEST(VCardReader, aHeaderMayFold) {
    EXPECT_EQ(text(readLines("TEL;TY\n PE=CE\n LL:12\n 3\n"), "TEL"), "123");
    EXPECT_TRUE(readLines("TEL;TY\n PE=CE\n LL:12\n 3\n").cards[0].find("TEL")->hasType("CELL"));
    EXPECT_EQ(readLines("PHOTO;ENCOD\n ING=b:QUJ\n D\n").cards[0].find("PHOTO")->value, "ABC");
}

TEST(VCardReader, picturesAreReadInEveryForm) {
    for (const char* lines : {
             "PHOTO;ENCODING=BASE64;TYPE=JPEG:QUJD\n REVG\n\nTEL:1\n",
             "PHOTO;ENCODING=BASE64;TYPE=JPEG:QUJD\n REVG\nTEL:1\n",
             "PHOTO;JPEG;BASE64:\n QUJD\n REVG\n\n\nTEL:1\n",
             "PHOTO;TYPE=JPEG;ENCODING=b:QUJDREVG\nTEL:1\n",
             "PHOTO;type=jpeg;encoding=B:QUJDR\n EVG\nTEL:1\n",
             "PHOTO;JPEG;BASE64:QUJD\nREVG\nTEL:1\n",
             "PHOTO;JPEG;BASE64:\n\nQUJD\nREVG\n\nTEL:1\n",
             "PHOTO:data:image/jpeg;base64,QUJDREVG\nTEL:1\n",
         }) {
        const auto outcome = readLines(lines, "2.1");
        const Property* photo = outcome.cards[0].find("PHOTO");
        ASSERT_NE(photo, nullptr) << lines;
        EXPECT_TRUE(photo->isBinary) << lines;
        EXPECT_EQ(photo->value, "ABCDEF") << lines;
        EXPECT_TRUE(photo->hasType("JPEG")) << lines;
        EXPECT_EQ(text(outcome, "TEL"), "1") << lines;
        EXPECT_THAT(outcome.problems, IsEmpty()) << lines;
    }
}

TEST(VCardReader, aPictureWithoutItsEndIsKeptAsFarAsItGoes) {
    const auto outcome = readText("BEGIN:VCARD\nFN:Anna\nPHOTO;ENCODING=b:QUJDRE\n");
    ASSERT_EQ(outcome.cards.size(), 1U);
    EXPECT_EQ(outcome.cards[0].find("PHOTO")->value, "ABCD");
    EXPECT_THAT(outcome.problems, ElementsAre("1:1: the card is cut off: END:VCARD is missing"));
}

TEST(VCardReader, whatIsNotBase64IsKeptAsTextAndTold) {
    const auto outcome = readLines("PHOTO;ENCODING=b:http://example.com/a.png\n");
    EXPECT_EQ(text(outcome, "PHOTO"), "http://example.com/a.png");
    EXPECT_THAT(outcome.problems,
                ElementsAre("3:18: the value is not base64, as its header says, and is kept as text"));
}

TEST(VCardReader, aCharsetIsReadPerProperty) {
    const auto outcome = readLines(
        "FN;CHARSET=SHIFT_JIS:\x8E\x52\x93\x63\nORG;CHARSET=windows-1251:\xCC\xE8\xF0\n"
        "NOTE;CHARSET=ISO-8859-1;QUOTED-PRINTABLE:Z=FCrich\nTITLE;CHARSET=UTF-8:Zoë\n",
        "2.1");
    EXPECT_EQ(text(outcome, "FN"), "山田");
    EXPECT_EQ(text(outcome, "ORG"), "Мир");
    EXPECT_EQ(text(outcome, "NOTE"), "Zürich");
    EXPECT_EQ(text(outcome, "TITLE"), "Zoë");
    EXPECT_THAT(outcome.problems, IsEmpty());
}

TEST(VCardReader, aBackslashWithinACharacterOfShiftJisIsNoEscape) {
    // The second byte of the first character is a backslash.
    EXPECT_EQ(text(readLines("FN;CHARSET=SHIFT_JIS:\x95\x5C\x8E\x52\n", "2.1"), "FN"), "表山");
}

TEST(VCardReader, whatIsNotUtf8IsWindows1252UnlessAnotherIsGiven) {
    EXPECT_EQ(text(readLines("FN:Z\xFCrich \x80\n"), "FN"), "Zürich €");
    EXPECT_EQ(text(readText("BEGIN:VCARD\nFN:\x8E\x52\x93\x63\nEND:VCARD\n", {.charset = "SHIFT_JIS"}), "FN"), "山田");
}

TEST(VCardReader, anUnknownCharsetIsTold) {
    const auto outcome = readLines("FN;CHARSET=KLINGON:Anna\n", "2.1");
    EXPECT_EQ(text(outcome, "FN"), "Anna");
    EXPECT_THAT(outcome.problems,
                ElementsAre("3:1: the charset KLINGON is not known; the text is read as UTF-8 or windows-1252"));
}

TEST(VCardReader, aMissingBeginIsToldAndTheCardKept) {
    const auto outcome = readText("VERSION:3.0\nFN:Anna\nEND:VCARD\nBEGIN:VCARD\nFN:Ben\nEND:VCARD\n");
    ASSERT_EQ(outcome.cards.size(), 2U);
    EXPECT_EQ(text(outcome, "FN"), "Anna");
    EXPECT_THAT(outcome.problems, ElementsAre("1:1: BEGIN:VCARD is missing before this line"));
}

TEST(VCardReader, aMissingEndIsToldAndBothCardsKept) {
    const auto outcome = readText("BEGIN:VCARD\nFN:Anna\nBEGIN:VCARD\nFN:Ben\nEND:VCARD\n");
    ASSERT_EQ(outcome.cards.size(), 2U);
    EXPECT_EQ(text(outcome, "FN"), "Anna");
    EXPECT_EQ(unescaped(outcome.cards[1].find("FN")->value), "Ben");
    EXPECT_THAT(outcome.problems, ElementsAre("3:1: END:VCARD is missing before this line"));
}

TEST(VCardReader, aCardWithinACardIsNotMistakenForItsOwner) {
    const auto outcome = readLines(
        "FN:Anna\nAGENT:\nBEGIN:VCARD\nFN:Ben\nAGENT:\nBEGIN:VCARD\nFN:Carl\nEND:VCARD\n"
        "END:VCARD\nTEL:1\n",
        "2.1");
    ASSERT_EQ(outcome.cards.size(), 1U);
    EXPECT_EQ(text(outcome, "FN"), "Anna");
    EXPECT_EQ(text(outcome, "TEL"), "1");
    EXPECT_THAT(outcome.problems, IsEmpty());
}

TEST(VCardReader, commentsArePassedOverAndOtherLinesTold) {
    const auto outcome = readLines("# a comment: yes\nno colon here\nFN:Anna\n: nothing\nä:1\n");
    EXPECT_EQ(text(outcome, "FN"), "Anna");
    EXPECT_THAT(outcome.problems,
                ElementsAre("4:1: the line has no colon and is passed over",
                            "6:1: the line does not begin with the name of a property and is passed over",
                            "7:1: the line does not begin with the name of a property and is passed over"));
}

TEST(VCardReader, linesOutsideOfCardsMakeNoCard) {
    const auto outcome = readText("Subject: my contacts\nBEGIN:VCARD\nFN:Anna\nEND:VCARD\nEND:VCARD\n");
    EXPECT_EQ(outcome.cards.size(), 1U);
    EXPECT_THAT(outcome.problems, ElementsAre("1:1: the line SUBJECT stands outside of a card and is left out",
                                              "5:1: there is no card that END:VCARD could end"));
}

TEST(VCardReader, problemsInFoldedLinesAreFoundWhereTheyStand) {
    const auto outcome = readLines("PHOTO;ENCODING=b;\n TYPE=JPEG:?\n");
    EXPECT_THAT(outcome.problems,
                ElementsAre("4:12: the value is not base64, as its header says, and is kept as text"));
}

TEST(VCardReader, anUnknownVersionIsReadAsTheUsualOne) {
    EXPECT_THAT(readLines("FN:Anna\n", "9").problems,
                ElementsAre("2:1: the version is none of 2.1, 3.0 and 4.0; the card is read as 3.0"));
}

TEST(VCardReader, overlongPropertiesAreLeftOutAndTold) {
    ReadOptions options;
    options.longestProperty = 1 << 20;
    const std::string large(3 << 20, 'x');
    const auto outcome = readText("BEGIN:VCARD\nNOTE:" + large + "\n " + large + "\nFN:Anna\nEND:VCARD\n", options);
    ASSERT_EQ(outcome.cards.size(), 1U);
    EXPECT_EQ(text(outcome, "FN"), "Anna");
    EXPECT_EQ(text(outcome, "NOTE"), "(none)");
    EXPECT_THAT(outcome.problems, ElementsAre("2:1: the property NOTE is longer than 1 MB and is left out"));
}

TEST(VCardReader, aCardHoldsABoundedAmount) {
    ReadOptions options;
    options.longestCard = 1 << 20;
    std::string lines;
    for (int i = 0; i < 20000; ++i) lines += "TEL:1\n";
    const auto outcome = readText("BEGIN:VCARD\n" + lines + "END:VCARD\n", options);
    ASSERT_EQ(outcome.cards.size(), 1U);
    EXPECT_LT(outcome.cards[0].properties.size(), 4097U);
    EXPECT_EQ(outcome.cards[0].properties.size() + outcome.problems.size(), 20000U);
}

TEST(VCardReader, nullCharactersAreNoText) { EXPECT_EQ(text(readLines(std::string("FN:An\0na\n", 9)), "FN"), "Anna"); }

}  // namespace
}  // namespace vcard::test
