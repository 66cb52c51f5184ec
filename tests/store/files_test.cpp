// Files that are no call log, are damaged, or belong to another version: said clearly, and left as they are.
#include <gtest/gtest.h>

#include "log_model.h"
#include "raw_file.h"

namespace quorvel::store {
namespace {

void expectRefused(const std::filesystem::path& path, ErrorKind kind, const char* words) {
    const std::string before = contentOf(path);
    for (const Access access : {Access::readWrite, Access::readOnly}) {
        const auto store = CallStore::open(path, {.access = access});
        ASSERT_FALSE(store) << path;
        EXPECT_EQ(store.error().kind, kind) << store.error().message;
        EXPECT_NE(store.error().message.find(words), std::string::npos) << store.error().message;
        EXPECT_NE(store.error().message.find(path.string()), std::string::npos) << store.error().message;
    }
    EXPECT_EQ(contentOf(path), before);
}

TEST(Files, aTextFileIsForeign) {
    Folder folder;
    writeFile(folder.file(), "date,address\n1,2\n");
    expectRefused(folder.file(), ErrorKind::foreign, "is not a call log");
}

TEST(Files, aDatabaseOfAnotherProgramIsForeign) {
    Folder folder;
    runOn(folder.file(), "create table recipe (title text)");
    expectRefused(folder.file(), ErrorKind::foreign, "another program");
}

TEST(Files, aLogOfALaterVersionIsNotTouched) {
    Folder folder;
    makeLog(folder.file(), 5);
    runOn(folder.file(), "pragma user_version = 5");
    expectRefused(folder.file(), ErrorKind::newer, "Update the program");
}

TEST(Files, aLogWithoutOneOfItsIndicesIsDamaged) {
    Folder folder;
    makeLog(folder.file(), 5);
    runOn(folder.file(), "drop index call_by_kind");
    expectRefused(folder.file(), ErrorKind::damaged, "Set the file aside");
}

TEST(Files, aLogWhoseFirstPageIsOverwrittenIsDamaged) {
    Folder folder;
    makeLog(folder.file(), 5);
    std::string content = contentOf(folder.file());
    std::fill(content.begin() + 100, content.begin() + 4096, '\xee');
    writeFile(folder.file(), content);
    expectRefused(folder.file(), ErrorKind::damaged, "Set the file aside");
}

TEST(Files, damageInTheMiddleIsReportedByTheOperationOrTheCheck) {
    Folder folder;
    makeLog(folder.file(), 3000);
    std::string content = contentOf(folder.file());
    std::fill(content.begin() + 40960, content.end() - 4096, '\xee');
    writeFile(folder.file(), content);
    auto opened = CallStore::open(folder.file());
    if (!opened) {
        EXPECT_EQ(opened.error().kind, ErrorKind::damaged) << opened.error().message;
        return;
    }
    const auto page = opened->page(Filter::all, {}, Cursor::top(), noLimit);
    const auto findings = opened->verify();
    ASSERT_FALSE(page);
    EXPECT_EQ(page.error().kind, ErrorKind::damaged);
    EXPECT_TRUE(!findings || !findings->empty());
}

TEST(Files, aCutOffLogIsDamaged) {
    Folder folder;
    makeLog(folder.file(), 3000);
    writeFile(folder.file(), contentOf(folder.file()).substr(0, 2000));
    expectRefused(folder.file(), ErrorKind::damaged, "Set the file aside");
}

TEST(Files, aFolderInThePlaceOfTheFileIsUnreadable) {
    Folder folder;
    std::filesystem::create_directory(folder.file());
    const auto store = CallStore::open(folder.file());
    ASSERT_FALSE(store);
    EXPECT_EQ(store.error().kind, ErrorKind::unreadable) << store.error().message;
}

TEST(Files, aFileInAMissingFolderIsUnreadable) {
    Folder folder;
    const auto store = CallStore::open(folder.file("missing/calls.db"));
    ASSERT_FALSE(store);
    EXPECT_EQ(store.error().kind, ErrorKind::unreadable) << store.error().message;
}

TEST(Files, readingOnlyNeedsAFileAndMakesNone) {
    Folder folder;
    const auto store = CallStore::open(folder.file(), {.access = Access::readOnly});
    ASSERT_FALSE(store);
    EXPECT_EQ(store.error().kind, ErrorKind::unreadable) << store.error().message;
    EXPECT_FALSE(std::filesystem::exists(folder.file()));
}

TEST(Files, aStoreOpenedForReadingReadsAndRefusesEveryChange) {
    Folder folder;
    makeLog(folder.file(), 20);
    CallStore store = openStore(folder.file(), {.access = Access::readOnly});
    EXPECT_EQ(valueOf(store.page(Filter::all, {}, Cursor::top(), 50)).rows.size(), 20U);
    const std::vector<ErrorKind> kinds = {store.append({}).error().kind,
                                          store.deleteAll(Filter::all).error().kind,
                                          store.deleteCalls(std::vector<std::int64_t>{1}).error().kind,
                                          store.link("1", 1, "", "").error().kind,
                                          store.beginImport().error().kind,
                                          store.rebuild().error().kind};
    EXPECT_EQ(kinds, std::vector<ErrorKind>(6, ErrorKind::readOnly));
    EXPECT_EQ(valueOf(store.totals(Filter::all, {})).calls, 20);
}

TEST(Files, anEmptyFileBecomesALog) {
    Folder folder;
    writeFile(folder.file(), "");
    CallStore store = openStore(folder.file());
    EXPECT_EQ(valueOf(store.append({})), 1);
}

TEST(Files, aDamagedFileIsSetAsideUnderAFreeName) {
    Folder folder;
    for (const char* content : {"first", "second"}) {
        writeFile(folder.file(), content);
        valueOf(CallStore::setAside(folder.file()));
        EXPECT_FALSE(std::filesystem::exists(folder.file()));
    }
    EXPECT_EQ(contentOf(folder.file("calls.db.damaged-1")), "first");
    EXPECT_EQ(contentOf(folder.file("calls.db.damaged-2")), "second");
    const auto nothing = CallStore::setAside(folder.file());
    ASSERT_FALSE(nothing);
    EXPECT_EQ(nothing.error().kind, ErrorKind::unreadable);
}

TEST(Files, aCallThatMakesNoSenseIsRefusedByName) {
    Folder folder;
    CallStore store = openStore(folder.file());
    NewCall call;
    call.date = 2147483648;
    EXPECT_NE(store.append(call).error().message.find("date"), std::string::npos);
    call.date = -1;
    EXPECT_EQ(store.append(call).error().kind, ErrorKind::badInput);
    call.date = 2147483647;
    call.duration = -1;
    EXPECT_NE(store.append(call).error().message.find("duration"), std::string::npos);
    call.duration = 0;
    call.name = "\xff";
    EXPECT_NE(store.append(call).error().message.find("UTF-8"), std::string::npos);
    call.name = "";
    call.address = std::string("a\0b", 3);
    EXPECT_EQ(store.append(call).error().kind, ErrorKind::badInput);
    EXPECT_EQ(store.deleteDay(Filter::all, "yesterday").error().kind, ErrorKind::badInput);
    EXPECT_EQ(valueOf(store.totals(Filter::all, {})).calls, 0);
}

}  // namespace
}  // namespace quorvel::store
