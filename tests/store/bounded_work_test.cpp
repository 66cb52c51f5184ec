// What the store does with a whole log takes a bounded amount of work, whatever other processes write meanwhile, and
// keeps them waiting for its changes alone.
#include <gmock/gmock.h>
#include <sqlite3.h>
#include <sys/wait.h>
#include <unistd.h>

#include "desktop/quorvel/store/backup.h"
#include "desktop/quorvel/store/database.h"
#include "log_model.h"

namespace quorvel::store {
namespace {

using testing::IsEmpty;

constexpr unsigned nobody = 65534;
constexpr std::int64_t pagesOfAStep = 1024;

NewCall callOf(int number) {
    NewCall call;
    call.address = "+49301" + std::to_string(number % 500);
    call.date = 1'600'000'000 + number;
    call.duration = 1;
    return call;
}

/// Calls enough for several steps of a copy, with texts that make them few.
void fillManyPages(CallStore& store) {
    ImportSession session = valueOf(store.beginImport());
    NewCall call = callOf(0);
    call.extra = std::string(60'000, 'x');
    for (int at = 0; at < 300; ++at) {
        call.date += 1;
        valueOf(session.add(call));
    }
    valueOf(session.finish());
}

std::int64_t pagesOf(const std::filesystem::path& log) {
    return static_cast<std::int64_t>(std::filesystem::file_size(log)) / 4096;
}

/// What the work answers in a process of the folder's owner, who is not root; -1 where it was killed.
template <class Work>
int asOwnerWithoutPrivileges(const std::filesystem::path& folder, const Work& work) {
    if (geteuid() == 0) {
        for (const auto& entry : std::filesystem::recursive_directory_iterator(folder))
            EXPECT_EQ(chown(entry.path().c_str(), nobody, nobody), 0);
        EXPECT_EQ(chown(folder.c_str(), nobody, nobody), 0);
    }
    const pid_t child = fork();
    if (child == 0) {
        if (geteuid() == 0 && (setgid(nobody) != 0 || setuid(nobody) != 0)) _exit(100);
        _exit(work());
    }
    int status = -1;
    waitpid(child, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

TEST(BoundedWork, aBackupIsOfTheMomentOfItsBeginningThoughAnotherStoreWritesAtEachStep) {
    Folder folder;
    CallStore store = openStore(folder.file());
    fillManyPages(store);
    CallStore writer = openStore(folder.file());
    std::int64_t steps = 0;
    BackupOptions options;
    options.progress = [&](double) {
        // A copy that begins anew would never end otherwise.
        if (++steps < 50) valueOf(writer.append(callOf(static_cast<int>(steps))));
    };
    const std::int64_t pages = pagesOf(folder.file());
    ASSERT_GT(pages, 2 * pagesOfAStep);
    ASSERT_TRUE(backUp(folder.file(), folder.file("kept"), options).ok());
    EXPECT_LE(steps, pages / pagesOfAStep + 2);
    const CallStore kept = openStore(folder.file("kept"));
    EXPECT_EQ(valueOf(kept.totals(Filter::all, {})).calls, 300);
}

TEST(BoundedWork, whileARestoreCopiesTheFormerLogOthersWriteAndThatIsKeptToo) {
    Folder folder;
    {
        CallStore store = openStore(folder.file());
        for (int at = 0; at < 20; ++at) valueOf(store.append(callOf(at)));
        ASSERT_TRUE(backUp(folder.file(), folder.file("kept")).ok());
    }
    OpenOptions hasty;
    hasty.busyBound = std::chrono::milliseconds(20);
    CallStore writer = openStore(folder.file(), hasty);
    std::vector<Result<std::int64_t>> appended;
    Connection::observeTexts([&](std::string_view text) {
        if (appended.empty() && text.starts_with("select exists")) appended.push_back(writer.append(callOf(30)));
    });
    const auto restored = restore(folder.file("kept"), folder.file());
    Connection::observeTexts({});
    ASSERT_EQ(appended.size(), 1U);
    EXPECT_TRUE(appended[0].ok()) << appended[0].error().message;
    EXPECT_EQ(valueOf(restored).calls, 20);
    EXPECT_EQ(valueOf(openStore(valueOf(restored).former).totals(Filter::all, {})).calls, 21);
}

TEST(BoundedWork, aLogThatItsOwnerMayNotWriteIsBackedUpAgainAndAgainAndNotReplaced) {
    Folder folder;
    {
        CallStore store = openStore(folder.file());
        fillManyPages(store);
        ASSERT_TRUE(backUp(folder.file(), folder.file("kept")).ok());
    }
    std::filesystem::permissions(folder.file(), std::filesystem::perms::owner_read);
    const auto most = 4 * pagesOf(folder.file()) / pagesOfAStep;
    const int failed = asOwnerWithoutPrivileges(folder.file().parent_path(), [&] {
        BackupOptions options;
        std::int64_t steps = 0;
        options.progress = [&](double) {
            if (++steps > most) _exit(50);
        };
        // The first leaves a shared memory beside the log that may not be written either.
        if (!backUp(folder.file(), folder.file("first"), options).ok()) return 1;
        steps = 0;
        if (!backUp(folder.file(), folder.file("second"), options).ok()) return 2;
        steps = 0;
        const auto restored = restore(folder.file("kept"), folder.file(), options);
        if (restored.ok()) return 3;
        if (steps > 0) return 4;
        return restored.error().kind == ErrorKind::readOnly ? 0 : 5;
    });
    EXPECT_EQ(failed, 0);
    std::filesystem::permissions(folder.file(), std::filesystem::perms::owner_all);
    EXPECT_EQ(valueOf(openStore(folder.file()).totals(Filter::all, {})).calls, 300);
}

}  // namespace
}  // namespace quorvel::store
