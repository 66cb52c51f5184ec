// Comma-separated values: what is read, and where what cannot be read is.
#include "tools/csv/csv_reader.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <vector>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using tools::CsvComplaint;
using tools::CsvReader;
using tools::CsvRecord;
using tools::Place;

using Row = std::vector<std::string>;

/// Gives the text in pieces of that many bytes.
CsvReader readerOf(const std::string& text, std::size_t piece = 1000) {
    return CsvReader([text, piece, at = std::size_t{0}](std::span<char> space) mutable {
        const std::size_t count = std::min({piece, space.size(), text.size() - at});
        std::copy_n(text.begin() + static_cast<std::ptrdiff_t>(at), count, space.begin());
        at += count;
        return count;
    });
}

struct Read {
    std::vector<Row> rows;
    std::vector<std::pair<Place, std::string>> complaints;
};

Read readAll(const std::string& text, std::size_t piece = 1000) {
    Read result;
    auto reader = readerOf(text, piece);
    for (;;) {
        auto item = reader.next();
        if (std::holds_alternative<CsvReader::End>(item)) return result;
        if (auto* complaint = std::get_if<CsvComplaint>(&item)) {
            result.complaints.emplace_back(complaint->place, complaint->what);
            continue;
        }
        Row row;
        for (const auto& field : std::get<CsvRecord>(item).fields) row.push_back(field.text);
        result.rows.push_back(std::move(row));
    }
}

TEST(CsvReader, readsFieldsOfEveryForm) {
    const auto read = readAll("a,b\r\n\"c,d\",\"e \"\"f\"\"\"\n,\n\"line\nbreak\",x");
    EXPECT_THAT(read.rows, ElementsAre(Row{"a", "b"}, Row{"c,d", "e \"f\""}, Row{"", ""}, Row{"line\nbreak", "x"}));
    EXPECT_THAT(read.complaints, IsEmpty());
}

TEST(CsvReader, passesOverAByteOrderMarkAndEmptyLines) {
    EXPECT_THAT(readAll("\xEF\xBB\xBF"
                        "a,b\n\n\r\n\nc,d\n")
                    .rows,
                ElementsAre(Row{"a", "b"}, Row{"c", "d"}));
    EXPECT_THAT(readAll("").rows, IsEmpty());
    EXPECT_THAT(readAll("\n\n").rows, IsEmpty());
}

TEST(CsvReader, countsColumnsInCharacters) {
    auto reader = readerOf("größe,\"ё\n\",x\n");
    const auto record = std::get<CsvRecord>(reader.next());
    EXPECT_EQ(record.fields[1].place, (Place{1, 7}));
    EXPECT_EQ(record.fields[2].place, (Place{2, 3}));
    EXPECT_EQ(record.end, (Place{2, 4}));
}

TEST(CsvReader, saysWhereALineIsWrongAndGoesOnBelowIt) {
    const auto read = readAll("a,b\nc,d\"e\nf,g\n\"h\"i,j\nk,l\n");
    EXPECT_THAT(read.rows, ElementsAre(Row{"a", "b"}, Row{"f", "g"}, Row{"k", "l"}));
    ASSERT_EQ(read.complaints.size(), 2U);
    EXPECT_EQ(read.complaints[0].first, (Place{2, 4}));
    EXPECT_EQ(read.complaints[1].first, (Place{4, 4}));
}

TEST(CsvReader, saysWhereAQuotationMarkThatIsNeverClosedBegan) {
    const auto read = readAll("a,b\nc,\"d\ne,f\n");
    ASSERT_EQ(read.complaints.size(), 1U);
    EXPECT_EQ(read.complaints[0].first, (Place{2, 3}));
}

TEST(CsvReader, refusesWhatIsNotUtf8AtItsPlace) {
    for (const char* bytes : {"\xFF", "\xC3", "\xC0\x80", "\xED\xA0\x80", "\xF4\x90\x80\x80", "\xE2\x82"}) {
        const auto read = readAll(std::string("a,x") + bytes + "\nb,c\n");
        ASSERT_EQ(read.complaints.size(), 1U);
        EXPECT_EQ(read.complaints[0].first, (Place{1, 4}));
        EXPECT_THAT(read.rows, ElementsAre(Row{"b", "c"}));
    }
}

TEST(CsvReader, refusesARecordLongerThanAMebibyteAndGoesOn) {
    const std::string longField(std::size_t{3} << 20, 'x');
    const auto read = readAll("a," + longField + "\nb,c\n", 4096);
    EXPECT_EQ(read.complaints.size(), 1U);
    EXPECT_THAT(read.rows, ElementsAre(Row{"b", "c"}));
}

std::string written(const std::vector<Row>& rows) {
    std::string text;
    for (const auto& row : rows) {
        for (std::size_t i = 0; i < row.size(); ++i) {
            if (i > 0) text += ',';
            text += '"';
            for (char letter : row[i]) text += letter == '"' ? std::string("\"\"") : std::string(1, letter);
            text += '"';
        }
        text += '\n';
    }
    return text;
}

RC_GTEST_PROP(CsvReader, readsWhatWasWrittenHoweverItComesInPieces, ()) {
    const auto letters = rc::gen::container<std::string>(rc::gen::elementOf(std::string("ab,\"\n\r ;")));
    auto rows = *rc::gen::container<std::vector<Row>>(rc::gen::nonEmpty(rc::gen::container<Row>(letters)));
    const auto piece = *rc::gen::inRange<std::size_t>(1, 9);
    RC_ASSERT(readAll(written(rows), piece).rows == rows);
}

RC_GTEST_PROP(CsvReader, endsOnAnyBytes, (const std::string& text)) {
    const auto read = readAll(text, 3);
    RC_ASSERT(read.rows.size() + read.complaints.size() <= text.size());
}

}  // namespace
