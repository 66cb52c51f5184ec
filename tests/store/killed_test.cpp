// A process that is killed at any point leaves the log as before the change it was making, or as after.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <optional>

#include "killed_steps.h"

extern char** environ;

namespace quorvel::store {
namespace {

struct State {
    std::vector<CallRecord> calls;
    std::vector<DeletedCall> deleted;
    friend bool operator==(const State&, const State&) = default;
};

State stateOf(const CallStore& store) {
    return {valueOf(store.page(Filter::all, {}, Cursor::top(), noLimit)).rows,
            valueOf(store.deletedCalls(Cursor::top(), noLimit)).rows};
}

/// The states before the first step and after each.
std::vector<State> statesOfSteps() {
    Folder folder;
    CallStore store = openStore(folder.file(), killedOptions());
    std::vector<State> states{stateOf(store)};
    for (std::size_t step = 0; step < killedSteps; ++step) {
        EXPECT_TRUE(takeStep(store, step));
        states.push_back(stateOf(store));
        EXPECT_NE(states[step], states[step + 1]) << "step " << step << " changes nothing";
    }
    return states;
}

/// The process that takes the steps, with what it says.
class Writer {
  public:
    Writer(const std::filesystem::path& log, int operation) {
        int ends[2];
        if (pipe2(ends, O_CLOEXEC) != 0) throw std::runtime_error("no pipe for the test");
        posix_spawn_file_actions_t actions;
        posix_spawn_file_actions_init(&actions);
        posix_spawn_file_actions_adddup2(&actions, ends[1], STDOUT_FILENO);
        std::string program = KILLED_WRITER, path = log, number = std::to_string(operation);
        char* arguments[] = {program.data(), path.data(), number.data(), nullptr};
        if (posix_spawn(&process_, program.c_str(), &actions, nullptr, arguments, environ) != 0)
            throw std::runtime_error(program + " cannot be started");
        posix_spawn_file_actions_destroy(&actions);
        close(ends[1]);
        output_ = ends[0];
    }
    ~Writer() {
        close(output_);
        if (process_ > 0) end();
    }
    Writer(const Writer&) = delete;
    Writer& operator=(const Writer&) = delete;

    /// Reads what it has said until it has said so much, or for so long, or until its end.
    void listen(int bytes, std::optional<std::chrono::microseconds> bound) {
        pollfd said{output_, POLLIN, 0};
        while (bytes_ < bytes) {
            timespec time{0, bound ? bound->count() * 1000 : 0};
            if (ppoll(&said, 1, bound ? &time : nullptr, nullptr) != 1) return;
            char byte = 0;
            if (read(output_, &byte, 1) != 1) return;
            ++bytes_;
        }
    }
    /// Kills it, where it has not ended by itself, and reads the rest of what it has said. Answers its status.
    int end() {
        kill(process_, SIGKILL);
        int status = -1;
        waitpid(process_, &status, 0);
        process_ = 0;
        listen(INT32_MAX, {});
        return status;
    }
    /// Steps that it has finished for certain.
    std::size_t steps() const { return bytes_ > 0 ? static_cast<std::size_t>(bytes_ - 1) : 0; }

  private:
    pid_t process_ = 0;
    int output_ = -1;
    int bytes_ = 0;
};

void expectBeforeOrAfter(const std::filesystem::path& log, const std::vector<State>& states, std::size_t steps) {
    const CallStore store = openStore(log, killedOptions());
    ASSERT_EQ(valueOf(store.verify()), std::vector<std::string>()) << "after step " << steps;
    const State left = stateOf(store);
    const bool isBefore = left == states[steps];
    const bool isAfter = steps + 1 < states.size() && left == states[steps + 1];
    ASSERT_TRUE(isBefore || isAfter) << "between the steps " << steps << " and " << steps + 1;
}

int operationsOfAllSteps() {
    // Doubles until the process lives through all of it, then halves towards the first such operation.
    int dies = 0, lives = 1;
    const auto livesThrough = [](int operation) {
        Folder folder;
        Writer writer(folder.file(), operation);
        writer.listen(INT32_MAX, {});
        const int status = writer.end();
        EXPECT_TRUE(status == 0 || (WIFSIGNALED(status) && WTERMSIG(status) == SIGKILL)) << status;
        return writer.steps() == killedSteps;
    };
    while (!livesThrough(lives)) {
        dies = lives;
        lives *= 2;
    }
    while (lives - dies > 16) {
        const int middle = (lives + dies) / 2;
        (livesThrough(middle) ? lives : dies) = middle;
    }
    return dies;
}

TEST(Killed, beforeAnyOperationOfItsDiskALogIsBeforeOrAfterAChange) {
    const std::vector<State> states = statesOfSteps();
    const int operations = operationsOfAllSteps();
    ASSERT_GT(operations, 100);
    std::mt19937 random(1);
    for (int round = 0; round < 100; ++round) {
        Folder folder;
        const int operation = 1 + static_cast<int>(random() % static_cast<unsigned>(operations));
        Writer writer(folder.file(), operation);
        writer.listen(INT32_MAX, {});
        const int status = writer.end();
        ASSERT_TRUE(WIFSIGNALED(status)) << "operation " << operation;
        ASSERT_NO_FATAL_FAILURE(expectBeforeOrAfter(folder.file(), states, writer.steps()));
    }
}

TEST(Killed, atAnyMomentALogIsBeforeOrAfterAChange) {
    const std::vector<State> states = statesOfSteps();
    std::mt19937 random(2);
    for (int round = 0; round < 100; ++round) {
        Folder folder;
        Writer writer(folder.file(), 0);
        writer.listen(1 + static_cast<int>(random() % killedSteps), {});
        // What follows the step lasts about as long as this at most.
        writer.listen(INT32_MAX, std::chrono::microseconds(random() % 2000));
        writer.end();
        ASSERT_NO_FATAL_FAILURE(expectBeforeOrAfter(folder.file(), states, writer.steps()));
    }
}

}  // namespace
}  // namespace quorvel::store
