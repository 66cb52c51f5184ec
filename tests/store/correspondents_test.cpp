// Calls of one contact, or of any of several spellings of a number: paged, deleted within bounds, and linked at once.
#include <gtest/gtest.h>

#include <thread>

#include "desktop/quorvel/store/database.h"
#include "log_model.h"

namespace quorvel::store {
namespace {

const Correspondent anna{1, {"5551234", "anna@example.com", "5551234"}};

bool isAnna(const CallRecord& call) {
    if (call.contactId != noContact) return call.contactId == 1;
    return call.address == "5551234" || call.address == "anna@example.com";
}

/// A store with its model.
struct Log {
    Folder folder;
    CallStore store = openStore(folder.file());
    LogModel model;

    explicit Log(int calls) {
        ImportSession session = valueOf(store.beginImport());
        CallMaker maker(21);
        for (int at = 0; at < calls; ++at) {
            const NewCall call = maker.call();
            model.add(valueOf(session.add(call)), call);
        }
        valueOf(session.finish());
    }
};

TEST(Correspondents, callsOfTheContactAndOfEachSpellingArePagedNewestFirst) {
    const Log log(300);
    for (const Filter filter : allFilters) {
        const auto expected = log.model.where(filter, isAnna);
        ASSERT_GT(expected.size(), 10U);
        for (const std::int64_t size : {std::int64_t{1}, std::int64_t{7}, noLimit}) {
            std::vector<CallRecord> read;
            Cursor cursor = Cursor::top();
            for (bool atEnd = false; !atEnd;) {
                const Page page = valueOf(log.store.history(filter, anna, cursor, size));
                read.insert(read.end(), page.rows.begin(), page.rows.end());
                cursor = page.next;
                atEnd = page.atEnd;
            }
            EXPECT_EQ(read, expected) << size << " at a time";
        }
    }
}

TEST(Correspondents, oneWhomNobodyCalledHasNoCalls) {
    const Log log(20);
    for (const Correspondent& nobody : {Correspondent{}, Correspondent{99, {}}, Correspondent{noContact, {"0"}}}) {
        const Page page = valueOf(log.store.history(Filter::all, nobody, Cursor::top(), 5));
        EXPECT_TRUE(page.rows.empty());
        EXPECT_TRUE(page.atEnd);
    }
}

TEST(Correspondents, oneCallAllOfAKindAndAllAreDeletedAndOthersStay) {
    Log log(300);
    const auto one = log.model.where(Filter::all, isAnna)[3];
    EXPECT_EQ(valueOf(log.store.deleteCalls({&one.rowId, 1})), log.model.remove({one}));
    const auto missed = log.model.where(Filter::missed, isAnna);
    EXPECT_EQ(valueOf(log.store.deleteHistory(Filter::missed, anna)), log.model.remove(missed));
    const auto rest = log.model.where(Filter::all, isAnna);
    EXPECT_EQ(valueOf(log.store.deleteHistory(Filter::all, anna, 200)), log.model.remove(rest, 200));
    EXPECT_EQ(valueOf(log.store.deleteHistory(Filter::all, anna)), log.model.remove(rest));
    expectSame(log.store, log.model);
}

TEST(Correspondents, severalAddressesAreLinkedInOneTransaction) {
    Log log(100);
    const std::int64_t before = valueOf(log.store.revision());
    const std::vector<NamedAddress> links = {{"5551234", 8, "Eight", ""},
                                             {"5559876", 9, "Nine", "home"},
                                             {"5551234", 9, "Nine", "work"},
                                             {"nobody", 9, "Nine", ""}};
    const auto linked = valueOf(log.store.link(links));
    EXPECT_EQ(linked, log.model.link("5551234", 9, "Nine", "work") + log.model.link("5559876", 9, "Nine", "home"));
    EXPECT_EQ(valueOf(log.store.revision()), before + 1);
    expectSame(log.store, log.model);
}

TEST(Correspondents, readersSeeTheLogAsItWasWhileTenThousandCallsAreLinked) {
    Folder folder;
    CallStore store = openStore(folder.file());
    ImportSession session = valueOf(store.beginImport());
    NewCall call;
    call.address = "5551234";
    for (int at = 0; at < 10000; ++at) {
        call.date = 1'700'000'000 + at;
        valueOf(session.add(call));
    }
    valueOf(session.finish());
    const CallStore other = openStore(folder.file());
    const auto contactOfTheNewest = [](const CallStore& from) {
        return valueOf(from.page(Filter::all, {}, Cursor::top(), 1)).rows.at(0).contactId;
    };
    EXPECT_EQ(contactOfTheNewest(store), noContact);
    EXPECT_EQ(contactOfTheNewest(other), noContact);

    std::vector<std::int32_t> seen;
    Connection::observeTexts([&](std::string_view text) {
        // The transaction has begun and no call has been changed yet.
        if (!text.starts_with("update call set id")) return;
        seen = {contactOfTheNewest(store), contactOfTheNewest(other)};
    });
    std::int64_t linked = 0;
    std::thread background([&] { linked = store.link("5551234", 4, "Four", "").valueOr(-1); });
    background.join();
    Connection::observeTexts({});
    EXPECT_EQ(linked, 10000);
    EXPECT_EQ(seen, (std::vector<std::int32_t>{noContact, noContact}));
    EXPECT_EQ(contactOfTheNewest(store), 4);
    EXPECT_EQ(contactOfTheNewest(other), 4);
    EXPECT_EQ(valueOf(store.history(Filter::all, Correspondent{4, {}}, Cursor::top(), noLimit)).rows.size(), 10000U);
    EXPECT_EQ(valueOf(store.verify()), std::vector<std::string>());
}

}  // namespace
}  // namespace quorvel::store
