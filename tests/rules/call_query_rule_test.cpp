// The eight query texts letter by letter, and which of them is asked.
#include "plugin/rows/call_query_rule.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <set>
#include <string>

namespace {

using rows::Columns;
using rows::queryFormat;
using rows::Span;
using rows::Whose;

struct Text {
    Columns columns;
    Whose whose;
    Span span;
    const char* format;
};

// clang-format off
constexpr Text texts[] = {
    {Columns::Full, Whose::Contact, Span::Day,
     "select ROWID, date, duration, flags, face_time_data_size, location from call where id=%d and datetime='%@' order by date desc"},
    {Columns::Full, Whose::Address, Span::Day,
     "select ROWID, date, duration, flags, face_time_data_size, location from call where address='%@' and datetime='%@' order by date desc"},
    {Columns::Full, Whose::Contact, Span::Latest,
     "select ROWID, date, duration, flags, face_time_data_size, location from call where id=%d order by date desc LIMIT 1"},
    {Columns::Full, Whose::Address, Span::Latest,
     "select ROWID, date, duration, flags, face_time_data_size, location from call where address='%@' order by date desc LIMIT 1"},
    {Columns::Short, Whose::Contact, Span::Day,
     "select ROWID, date, duration, flags from call where id=%d and datetime='%@' order by date desc"},
    {Columns::Short, Whose::Address, Span::Day,
     "select ROWID, date, duration, flags from call where address='%@' and datetime='%@' order by date desc"},
    {Columns::Short, Whose::Contact, Span::Latest,
     "select ROWID, date, duration, flags from call where id=%d order by date desc LIMIT 1"},
    {Columns::Short, Whose::Address, Span::Latest,
     "select ROWID, date, duration, flags from call where address='%@' order by date desc LIMIT 1"},
};
// clang-format on

TEST(TheQueryTexts, areTheseLetterByLetter) {
    std::set<std::string> different;
    for (const auto& text : texts) {
        EXPECT_STREQ(queryFormat(text.columns, text.whose, text.span), text.format);
        different.insert(text.format);
    }
    EXPECT_EQ(different.size(), 8U);
}

TEST(TheQuery, ofRecord0AsksByContact) { EXPECT_EQ(rows::whoseCalls(0), Whose::Contact); }

RC_GTEST_PROP(TheQuery, asksByAddressForTheRecordOfNobodyAlone, (int record)) {
    RC_ASSERT((rows::whoseCalls(record) == Whose::Address) == (record == -1));
    RC_ASSERT(rows::whoseCalls(-1) == Whose::Address);
}

/// The text put together from its parts.
std::string model(bool isFull, bool isContact, bool isDay) {
    std::string text = "select ROWID, date, duration, flags";
    if (isFull) text += ", face_time_data_size, location";
    text += " from call where ";
    text += isContact ? "id=%d" : "address='%@'";
    if (isDay) text += " and datetime='%@'";
    text += " order by date desc";
    if (!isDay) text += " LIMIT 1";
    return text;
}

RC_GTEST_PROP(TheQueryTexts, differInColumnsInWhoseCallsAndInTheDay, (bool isFull, bool isContact, bool isDay)) {
    RC_ASSERT(queryFormat(isFull ? Columns::Full : Columns::Short, isContact ? Whose::Contact : Whose::Address,
                          isDay ? Span::Day : Span::Latest) == model(isFull, isContact, isDay));
}

}  // namespace
