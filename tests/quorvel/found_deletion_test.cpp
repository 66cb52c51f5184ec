// Deleting everything that a search found, as the screen does it, against a plain model of the lists.
#include <rapidcheck.h>

#include <algorithm>

#include "desktop/quorvel/store/import_session.h"
#include "fixture.h"
#include "tests/store/failing_disk.h"

namespace quorvel::test {
namespace {

using store::Filter;

/// What a call of the log is, as the model sees it.
struct Logged {
    int rowId;
    std::string address;
    Filter kind;
};

constexpr const char* searched = "10";

bool isOf(std::int64_t filter, const Logged& call) {
    return filter == all || static_cast<std::int64_t>(call.kind) == filter;
}

bool isFound(std::int64_t filter, const Logged& call) {
    return isOf(filter, call) && call.address.find(searched) != std::string::npos;
}

/// The newest rows of a filter's list; calls of one number in a row are one where they are grouped.
std::vector<int> listed(const std::vector<Logged>& log, std::int64_t filter, bool grouped, std::size_t most) {
    std::vector<int> rows;
    std::string above;
    for (auto call = log.rbegin(); call != log.rend() && rows.size() < most; ++call) {
        if (!isOf(filter, *call)) continue;
        if (!grouped || call->address != above) rows.push_back(call->rowId);
        above = call->address;
    }
    return rows;
}

class FoundDeletionTest : public CompanionTest {
  protected:
    /// A log of its own, without lists.
    void beginLog(const store::OpenOptions& options = {}) {
        const auto file = folder() / (std::to_string(++logs_) + ".db");
        service().setStore(std::make_unique<store::CallStore>(*store::CallStore::open(file, options)));
        calls_.clear();
    }
    /// Writes the calls into the new log, the oldest first.
    void addCalls(const std::vector<std::pair<std::string, Filter>>& calls) {
        auto session = *callStore()->beginImport();
        for (const auto& [address, kind] : calls) {
            store::NewCall call;
            call.address = address;
            call.date = noon + static_cast<std::int64_t>(calls_.size());
            call.duration = kind == Filter::missed ? 0 : 9;
            call.flags = kind == Filter::dialled ? 5 : 4;
            EXPECT_TRUE(session.add(call).ok());
            calls_.push_back({static_cast<int>(calls_.size()) + 1, address, kind});
        }
        EXPECT_TRUE(session.finish().ok());
    }
    /// The loaded entries that match, then all other matches, as a search shows them.
    static objc::Strong<NSMutableArray> find(std::int64_t filter) {
        auto found = NSMutableArray::make();
        const auto loaded = list(filter);
        std::vector<int> shown;
        for (unsigned long i = 0; i < loaded.count(); ++i) {
            if (uikit::utf8(entry(loaded, i).phoneNumber()).find(searched) == std::string::npos) continue;
            found->addObject(loaded.objectAtIndex(i));
            shown.push_back(entry(loaded, i).rowId);
        }
        const auto fetched = objc::send<"getSearchedRecordsFromDB:searchString:date:", NSArray>(
            object(), filter, ns(searched), NSString{});
        for (unsigned long i = 0; i < fetched.count(); ++i)
            if (std::find(shown.begin(), shown.end(), entry(fetched, i).rowId) == shown.end())
                found->addObject(fetched.objectAtIndex(i));
        return found;
    }
    static bool deleteFromLog(NSArray found, std::int64_t filter) {
        return objc::send<"removeDataFromDB:calFilterType:forDate:", bool>(object(), found, filter, true);
    }
    static void takeOutOfLists(NSArray found, std::int64_t filter) {
        for (unsigned long i = 0; i < found.count(); ++i)
            objc::send<"removeEntriesFromCallList:calFilterType:">(object(), found.objectAtIndex(i), filter);
    }

    std::vector<Logged> calls_;

  private:
    int logs_ = 0;
};

TEST_F(FoundDeletionTest, theListsLoseWhatWasFoundAndNothingElse) {
    EXPECT_TRUE(rc::check("lists after a deletion", [&] {
        const objc::AutoreleasePool pool;
        const bool grouped = *rc::gen::arbitrary<bool>();
        const auto filter = *rc::gen::inRange<std::int64_t>(all, missed + 1);
        setSetting("isGroupContacts_Call", grouped ? "on" : "off");
        beginLog();
        addCalls(*rc::gen::container<std::vector<std::pair<std::string, Filter>>>(
            rc::gen::pair(rc::gen::element<std::string>("100", "200", "210"),
                          rc::gen::element(Filter::dialled, Filter::received, Filter::missed))));
        std::vector<std::size_t> held(missed + 1);
        for (const auto each : {all, dialled, received, missed}) {
            const auto wanted = *rc::gen::inRange<std::size_t>(0, 20);
            read(static_cast<std::int64_t>(wanted), 0, each);
            held[static_cast<std::size_t>(each)] = list(each).count();
            RC_ASSERT(rowIds(list(each)) == listed(calls_, each, grouped, wanted));
        }

        const auto found = find(filter);
        RC_ASSERT(deleteFromLog(found, filter));
        takeOutOfLists(found, filter);

        const auto remain = [&](auto& from) {
            std::erase_if(from, [&](const Logged& call) { return isFound(filter, call); });
        };
        auto remaining = calls_;
        remain(remaining);
        for (const auto each : {all, dialled, received, missed}) {
            const auto most = held[static_cast<std::size_t>(each)];
            auto expected = listed(remaining, each, grouped, most);
            if (!grouped) {
                // A list of single calls grows by none for those that it loses.
                const auto before = listed(calls_, each, grouped, most);
                std::erase_if(expected,
                              [&](int row) { return std::find(before.begin(), before.end(), row) == before.end(); });
            }
            RC_ASSERT(rowIds(list(each)) == expected);
            RC_ASSERT(static_cast<std::size_t>(count(each)) == listed(remaining, each, grouped, calls_.size()).size());
        }
    }));
}

TEST_F(FoundDeletionTest, anotherEntryOfTheSameCallLeavesTheListsWithIt) {
    beginLog();
    addCalls({{"100", Filter::missed}, {"200", Filter::missed}});
    read(9, 0, all);
    const auto fetched =
        objc::send<"getSearchedRecordsFromDB:searchString:date:", NSArray>(object(), missed, ns(searched), NSString{});
    ASSERT_NE(fetched.objectAtIndex(0).self, list(all).objectAtIndex(1).self);
    EXPECT_TRUE(deleteFromLog(fetched, missed));
    EXPECT_EQ(rowIds(list(all)), (std::vector{2}));
}

TEST_F(FoundDeletionTest, groupedListsLoseItEvenWhereTheyCannotBeReadAgain) {
    setSetting("isGroupContacts_Call", "on");
    store::OpenOptions failing;
    failing.fileSystem = store::FailingDisk::name();
    bool isUnreadableAfterwards = false;
    bool hasFailed = true;
    for (int operation = 1; hasFailed; ++operation) {
        const objc::AutoreleasePool pool;
        beginLog(failing);
        addCalls({{"100", Filter::missed}, {"200", Filter::missed}, {"100", Filter::missed}});
        read(9, 0, all);
        const auto found = find(all);
        store::FailingDisk::failFrom(operation, store::Fault::broken);
        const bool isDeleted = deleteFromLog(found, all);
        hasFailed = store::FailingDisk::hasFailed();
        store::FailingDisk::failFrom(0);
        EXPECT_EQ(rowIds(list(all)), (isDeleted ? std::vector{2} : std::vector{3, 2, 1})) << operation;
        isUnreadableAfterwards = isUnreadableAfterwards || (isDeleted && hasFailed);
    }
    EXPECT_TRUE(isUnreadableAfterwards);
}

}  // namespace
}  // namespace quorvel::test
