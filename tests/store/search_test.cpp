// Searching finds names and numbers whatever the case and however rare the term, as looking at every call would.
#include <gtest/gtest.h>

#include "desktop/quorvel/store/search_index.h"
#include "log_model.h"

namespace quorvel::store {
namespace {

TEST(FoldCase, lettersOfEveryScriptLoseTheirCase) {
    EXPECT_EQ(foldCase("GRÜSSE"), foldCase("grüße"));
    EXPECT_EQ(foldCase("БОРИС"), foldCase("борис"));
    EXPECT_EQ(foldCase("Anna"), "anna");
    EXPECT_NE(foldCase("Anna"), foldCase("Anne"));
}

TEST(FoldCase, aLetterWithASeparateMarkIsTheComposedLetter) { EXPECT_EQ(foldCase("Gru\u0308n"), foldCase("grün")); }

/// The calls that contain the term, by looking at each.
std::vector<CallRecord> matching(const LogModel& model, Filter filter, const std::string& term,
                                 const std::string& day) {
    const std::string folded = foldCase(term);
    return model.where(filter, [&](const CallRecord& call) {
        if (!day.empty() && call.day != day) return false;
        return foldCase(call.name).find(folded) != std::string::npos ||
               foldCase(call.address).find(folded) != std::string::npos;
    });
}

void expectFound(const CallStore& store, const LogModel& model, const std::string& term, const std::string& day,
                 std::int64_t pageSize) {
    for (const Filter filter : allFilters) {
        const auto expected = matching(model, filter, term, day);
        const auto onDay = day.empty() ? std::nullopt : std::optional<std::string_view>(day);
        std::vector<CallRecord> found, each;
        Cursor cursor = Cursor::top();
        for (bool atEnd = false; !atEnd;) {
            const Page page = valueOf(store.search(filter, term, onDay, cursor, pageSize));
            found.insert(found.end(), page.rows.begin(), page.rows.end());
            cursor = page.next;
            atEnd = page.atEnd;
            ASSERT_TRUE(atEnd || static_cast<std::int64_t>(page.rows.size()) == pageSize);
        }
        ASSERT_EQ(found, expected) << "\"" << term << "\" on " << day << ", " << pageSize << " at a time";
        ASSERT_EQ(valueOf(store.eachFound(filter, term, onDay, [&](const CallRecord& call) { each.push_back(call); })),
                  static_cast<std::int64_t>(expected.size()));
        ASSERT_EQ(each, expected) << "\"" << term << "\" on " << day << ", one by one";
    }
}

TEST(Search, everyTermFindsWhatLookingAtEachCallFinds) {
    Folder folder;
    CallStore store = openStore(folder.file());
    LogModel model;
    CallMaker maker(7);
    ImportSession session = valueOf(store.beginImport());
    for (int at = 0; at < 300; ++at) {
        const NewCall call = maker.call();
        model.add(valueOf(session.add(call)), call);
    }
    valueOf(session.finish());
    const std::string day = model.days()[1].day;
    for (const char* term :
         {"555", "1", "anna", "GRÖSSE", "борис", "strasse", "o'n", "%", "_", "", "nobody", "@EXAMPLE", "\"1\""}) {
        for (const std::int64_t pageSize : {std::int64_t{1}, std::int64_t{7}, noLimit}) {
            expectFound(store, model, term, "", pageSize);
            expectFound(store, model, term, day, pageSize);
        }
    }
}

TEST(Search, aRareTermAndACommonOneAreFoundAmongManyParties) {
    Folder folder;
    CallStore store = openStore(folder.file());
    LogModel model;
    ImportSession session = valueOf(store.beginImport());
    for (int at = 0; at < 3000; ++at) {
        NewCall call;
        call.address = "555" + std::to_string(1000 + at % 700);
        if (at % 700 == 3) call.name = "Zoë";
        call.date = 1'700'000'000 + at / 3;
        call.duration = at % 2;
        model.add(valueOf(session.add(call)), call);
    }
    valueOf(session.finish());
    expectFound(store, model, "ZOË", "", 2);
    expectFound(store, model, "555", "", 500);
    expectFound(store, model, "51699", "", 50);
}

TEST(Search, aTermDoesNotReachFromANameIntoTheNumber) {
    Folder folder;
    CallStore store = openStore(folder.file());
    NewCall call;
    call.address = "123";
    call.name = "abc";
    valueOf(store.append(call));
    EXPECT_EQ(valueOf(store.search(Filter::all, "c1", {}, Cursor::top(), noLimit)).rows.size(), 0U);
    EXPECT_EQ(valueOf(store.search(Filter::all, std::string_view("c\0001", 3), {}, Cursor::top(), noLimit)).rows.size(),
              0U);
    EXPECT_EQ(valueOf(store.search(Filter::all, "BC", {}, Cursor::top(), noLimit)).rows.size(), 1U);
}

TEST(Search, aNewNameIsFoundAtOnceAndTheOldOneNoMore) {
    Folder folder;
    CallStore store = openStore(folder.file());
    CallStore other = openStore(folder.file());
    NewCall call;
    call.address = "123";
    call.name = "Old";
    valueOf(store.append(call));
    EXPECT_EQ(valueOf(other.search(Filter::all, "old", {}, Cursor::top(), noLimit)).rows.size(), 1U);
    EXPECT_EQ(valueOf(store.link("123", 5, "New", "home")), 1);
    EXPECT_EQ(valueOf(other.search(Filter::all, "old", {}, Cursor::top(), noLimit)).rows.size(), 0U);
    const Page found = valueOf(other.search(Filter::all, "NEW", {}, Cursor::top(), noLimit));
    ASSERT_EQ(found.rows.size(), 1U);
    EXPECT_EQ(found.rows[0].contactId, 5);
    EXPECT_EQ(found.rows[0].label, "home");
    EXPECT_EQ(valueOf(store.addresses()), (std::vector<NamedAddress>{{"123", 5, "New", "home"}}));
}

}  // namespace
}  // namespace quorvel::store
