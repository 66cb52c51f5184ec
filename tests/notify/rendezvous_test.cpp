// The rendezvous: processes hear each other and themselves, nothing is lost, and odd directories are told.
#include "desktop/notify/rendezvous.h"

#include <signal.h>
#include <sys/mman.h>
#include <sys/stat.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <fstream>
#include <memory>
#include <new>
#include <stdexcept>

#include "tests/notify/support.h"

namespace notify_tests {
namespace {

using notify::Rendezvous;
using Names = std::vector<std::string>;
namespace fs = std::filesystem;

Rendezvous opened(const fs::path& directory) {
    auto result = Rendezvous::open(directory);
    if (auto* failure = std::get_if<notify::Failure>(&result)) throw std::runtime_error(failure->text);
    return std::move(std::get<Rendezvous>(result));
}

std::string failureOf(const fs::path& directory) {
    const auto result = Rendezvous::open(directory);
    const auto* failure = std::get_if<notify::Failure>(&result);
    return failure ? failure->text : "";
}

bool post(const fs::path& directory, const std::string& name) {
    const auto failure = notify::postInto(directory, name);
    EXPECT_FALSE(failure) << failure->text;
    return !failure;
}

std::size_t filesIn(const fs::path& directory) {
    return static_cast<std::size_t>(std::distance(fs::directory_iterator(directory), {}));
}

TEST(TheRendezvous, isMadeWhereItIsMissing) {
    const Directory directory;
    EXPECT_EQ(opened(directory / "handset/notifications").directory(), directory / "handset/notifications");
    EXPECT_TRUE(fs::is_directory(directory / "handset/notifications"));
}

TEST(TheRendezvous, ownPostsArriveOnceInTheOrderOfTheFirst) {
    const Directory directory;
    auto rendezvous = opened(directory.path());
    EXPECT_EQ(rendezvous.collect(), Names());
    EXPECT_FALSE(readable(rendezvous.descriptor()));
    for (const char* name : {"B", "A", "B", "B", "C", "A"}) post(directory.path(), name);
    EXPECT_TRUE(readable(rendezvous.descriptor()));
    EXPECT_EQ(rendezvous.collect(), (Names{"B", "A", "C"}));
    EXPECT_FALSE(readable(rendezvous.descriptor()));
    EXPECT_EQ(rendezvous.collect(), Names());
    post(directory.path(), "A");
    EXPECT_EQ(rendezvous.collect(), (Names{"A"}));
}

TEST(TheRendezvous, whatWasPostedBeforeItWasOpenedDoesNotArrive) {
    const Directory directory;
    post(directory.path(), "Before");
    auto rendezvous = opened(directory.path());
    EXPECT_EQ(rendezvous.collect(), Names());
    post(directory.path(), "Before");
    EXPECT_EQ(rendezvous.collect(), (Names{"Before"}));
}

TEST(TheRendezvous, everyListenerHearsAndOtherDirectoriesDoNot) {
    const Directory directory;
    auto first = opened(directory / "one");
    auto second = opened(directory / "one");
    auto other = opened(directory / "two");
    post(directory / "one", "Name");
    EXPECT_EQ(first.collect(), (Names{"Name"}));
    EXPECT_EQ(second.collect(), (Names{"Name"}));
    EXPECT_EQ(other.collect(), Names());
}

TEST(TheRendezvous, twoProcessesHearEachOther) {
    const Directory directory;
    const Signal isOpen;
    Process other([&] {
        auto rendezvous = opened(directory.path());
        isOpen.give();
        const bool heard =
            pollUntil(rendezvous.descriptor(), [&] { return rendezvous.collect() == Names{"Question"}; });
        return heard && !notify::postInto(directory.path(), "Answer") ? 0 : 1;
    });
    auto rendezvous = opened(directory.path());
    ASSERT_TRUE(isOpen.wait());
    post(directory.path(), "Question");
    bool own = false;
    EXPECT_TRUE(pollUntil(rendezvous.descriptor(), [&] {
        const Names names = rendezvous.collect();
        own = own || (!names.empty() && names.front() == "Question");
        return !names.empty() && names.back() == "Answer";
    }));
    EXPECT_TRUE(own);
    EXPECT_EQ(other.exitStatus(), 0);
}

TEST(TheRendezvous, namesOfAnyBytesArriveAsTheyAre) {
    const Directory directory;
    auto rendezvous = opened(directory.path());
    const Names names{"../../etc/passwd", "with space", "%2F", std::string("nul\0inside", 10),
                      "\xF0\x9F\x93\x9E", ".",          "-"};
    for (const auto& name : names) post(directory.path(), name);
    EXPECT_EQ(rendezvous.collect(), names);
    EXPECT_EQ(filesIn(directory.path()), names.size());
}

TEST(TheRendezvous, manyPostsOfFourProcessesLoseNoLastPost) {
    constexpr std::size_t nameCount = 40;
    constexpr std::size_t postsEach = 2500;
    using Counters = std::array<std::atomic<unsigned>, nameCount>;
    void* memory = mmap(nullptr, sizeof(Counters), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
    ASSERT_NE(memory, MAP_FAILED);
    auto* posted = new (memory) Counters{};
    const Directory directory;
    auto rendezvous = opened(directory.path());
    std::vector<std::unique_ptr<Process>> posters;
    for (std::size_t poster = 0; poster < 4; ++poster) {
        posters.push_back(std::make_unique<Process>([&, poster] {
            for (std::size_t i = 0; i < postsEach; ++i) {
                const std::size_t name = (i * 7 + poster * 11 + i / 100) % nameCount;
                ++(*posted)[name];  // counted before the post: who hears the post sees this count or a later one
                if (notify::postInto(directory.path(), "Name" + std::to_string(name))) return 1;
            }
            return 0;
        }));
    }
    std::array<unsigned, nameCount> heard{};
    const auto everyLastPostHeard = [&] {
        for (const auto& name : rendezvous.collect()) {
            const auto index = std::stoul(name.substr(4));
            heard.at(index) = (*posted)[index];
        }
        unsigned sum = 0;
        for (unsigned count : heard) sum += count;
        return sum == 4 * postsEach;
    };
    EXPECT_TRUE(pollUntil(rendezvous.descriptor(), everyLastPostHeard));
    for (auto& poster : posters) EXPECT_EQ(poster->exitStatus(), 0);
    EXPECT_EQ(rendezvous.collect(), Names());
    EXPECT_EQ(filesIn(directory.path()), nameCount);
    munmap(memory, sizeof(Counters));
}

TEST(TheRendezvous, anOverflowOfTheKernelsQueueLosesNothing) {
    std::size_t limit = 0;
    std::ifstream("/proc/sys/fs/inotify/max_queued_events") >> limit;
    ASSERT_GT(limit, 0U);
    const Directory directory;
    auto rendezvous = opened(directory.path());
    post(directory.path(), "Known");
    post(directory.path(), "Quiet");
    EXPECT_EQ(rendezvous.collect(), (Names{"Known", "Quiet"}));
    for (std::size_t i = 0; i < limit; ++i) post(directory.path(), i % 2 ? "Flood1" : "Flood2");
    post(directory.path(), "Known");
    post(directory.path(), "New");
    Names names = rendezvous.collect();
    std::sort(names.begin(), names.end());
    EXPECT_EQ(names, (Names{"Flood1", "Flood2", "Known", "New"}));
}

TEST(TheRendezvous, foreignAndHalfWrittenFilesAreIgnored) {
    const Directory directory;
    fs::create_directory(directory / "Folder.post");
    auto rendezvous = opened(directory.path());
    std::ofstream(directory / "notes.txt") << "hello";
    std::ofstream(directory / "Rubbish.post") << "hello";
    std::ofstream(directory / "Empty.post").flush();
    std::ofstream(directory / "odd%zz.post") << std::string(60, 'x');
    ASSERT_EQ(mkfifo((directory / "Pipe.post").c_str(), 0600), 0);
    EXPECT_EQ(rendezvous.collect(), Names());
    post(directory.path(), "Rubbish");
    post(directory.path(), "Empty");
    EXPECT_EQ(rendezvous.collect(), (Names{"Rubbish", "Empty"}));
}

TEST(TheRendezvous, aProcessKilledWhilePostingHarmsNobody) {
    const Directory directory;
    auto rendezvous = opened(directory.path());
    Process victim([&] {
        for (int i = 0;; ++i) {
            if (i == 200) kill(getpid(), SIGKILL);
            if (notify::postInto(directory.path(), "Name")) return 1;
        }
    });
    EXPECT_EQ(victim.exitStatus(), -1);
    EXPECT_EQ(rendezvous.collect(), (Names{"Name"}));
    post(directory.path(), "Name");
    EXPECT_EQ(rendezvous.collect(), (Names{"Name"}));
}

TEST(TheRendezvous, namesThatNobodyPostedForADayLeaveNoFile) {
    const Directory directory;
    for (const char* name : {"Old", "New"}) post(directory.path(), name);
    std::ofstream(directory / "old.txt") << "not ours";
    const auto twoDaysAgo = fs::file_time_type::clock::now() - std::chrono::hours(48);
    fs::last_write_time(directory / "Old.post", twoDaysAgo);
    fs::last_write_time(directory / "old.txt", twoDaysAgo);
    auto listener = opened(directory.path());
    EXPECT_FALSE(fs::exists(directory / "Old.post"));
    EXPECT_TRUE(fs::exists(directory / "New.post"));
    EXPECT_TRUE(fs::exists(directory / "old.txt"));
    post(directory.path(), "Old");
    EXPECT_EQ(listener.collect(), (Names{"Old"}));
}

TEST(TheRendezvous, aPostWhoseFileWasRemovedAtOnceStillArrives) {
    const Directory directory;
    auto rendezvous = opened(directory.path());
    post(directory.path(), "Name");
    fs::remove(directory / "Name.post");
    EXPECT_EQ(rendezvous.collect(), (Names{"Name"}));
}

TEST(TheRendezvous, postsWhileFilesAreRemovedAllTheTimeLoseNoLastPost) {
    const Directory directory;
    auto rendezvous = opened(directory.path());
    Process remover([&] {
        for (int i = 0; i < 3000; ++i) unlink((directory / "Name.post").c_str());
        return 0;
    });
    for (int i = 0; i < 1000; ++i) {
        post(directory.path(), "Name");
        ASSERT_EQ(rendezvous.collect(), (Names{"Name"})) << i;
    }
    EXPECT_EQ(remover.exitStatus(), 0);
}

TEST(AnUnusableDirectory, isToldWithItsPathAndWhatToDo) {
    const Directory directory;
    std::ofstream(directory / "file") << "in the way";
    for (const auto& path : {directory / "file", directory / "file/below"}) {
        const std::string failure = failureOf(path);
        EXPECT_NE(failure.find(path.string()), std::string::npos) << failure;
        EXPECT_NE(failure.find("Choose another data directory"), std::string::npos) << failure;
    }
}

TEST(AnUnusableDirectory, isOneThatMayNotBeWritten) {
    const Directory directory;
    fs::permissions(directory.path(),
                    fs::perms::owner_read | fs::perms::owner_exec | fs::perms::others_read | fs::perms::others_exec);
    // Nothing is forbidden to root, so the process becomes somebody else.
    Process nobody([&] {
        if (geteuid() == 0 && setuid(65534) != 0) return 2;
        return failureOf(directory.path()).find("Make it readable and writable") != std::string::npos ? 0 : 1;
    });
    EXPECT_EQ(nobody.exitStatus(), 0);
    fs::permissions(directory.path(), fs::perms::owner_all);
}

TEST(AnUnusableDirectory, failsThePost) {
    const Directory directory;
    const auto missing = notify::postInto(directory / "missing", "Name");
    ASSERT_TRUE(missing);
    EXPECT_NE(missing->text.find("missing/Name.post: No such file or directory"), std::string::npos) << missing->text;
    fs::create_directory(directory / "Folder.post");
    EXPECT_TRUE(notify::postInto(directory.path(), "Folder"));
    fs::create_symlink("/tmp/elsewhere", directory / "Link.post");
    EXPECT_TRUE(notify::postInto(directory.path(), "Link"));
}

TEST(ANameThatCannotBePosted, isTold) {
    const Directory directory;
    EXPECT_TRUE(notify::postInto(directory.path(), ""));
    EXPECT_FALSE(notify::postInto(directory.path(), std::string(250, 'n')));
    const auto tooLong = notify::postInto(directory.path(), std::string(251, 'n'));
    ASSERT_TRUE(tooLong);
    EXPECT_NE(tooLong->text.find("too long"), std::string::npos);
}

}  // namespace
}  // namespace notify_tests
