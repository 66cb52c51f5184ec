// How long the Phone takes from the start of its process until its first screen is complete and it has left, on logs of
// three sizes.
#include <benchmark/benchmark.h>
#include <spawn.h>
#include <sys/wait.h>

#include <cstdlib>
#include <filesystem>
#include <map>
#include <string>

#include "desktop/quorvel/directory/data_directory.h"
#include "desktop/quorvel/generate/generate.h"
#include "desktop/quorvel/store/call_store.h"
#include "desktop/quorvel/store/import_session.h"

namespace {

/// A data directory with that many calls, removed at the end of the run.
class FilledDirectory {
  public:
    explicit FilledDirectory(std::int64_t calls) {
        std::string name = (std::filesystem::temp_directory_path() / "start-XXXXXX").string();
        if (!mkdtemp(name.data())) std::abort();
        path_ = name;
        auto directory = quorvel::DataDirectory::open(path_);
        auto opened = quorvel::store::CallStore::open(std::get<quorvel::DataDirectory>(directory).calls());
        if (!opened) std::abort();
        auto session = (*opened).beginImport();
        if (!session) std::abort();
        quorvel::generateCalls(
            {.calls = calls, .seed = 7, .until = 1718452800},
            [&](const quorvel::store::NewCall& call) { return static_cast<bool>((*session).add(call)); });
        if (!(*session).finish()) std::abort();
    }
    FilledDirectory(const FilledDirectory&) = delete;
    FilledDirectory& operator=(const FilledDirectory&) = delete;
    ~FilledDirectory() {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }
    const std::filesystem::path& path() const { return path_; }

  private:
    std::filesystem::path path_;
};

const std::filesystem::path& directoryOf(std::int64_t calls) {
    static std::map<std::int64_t, FilledDirectory> made;
    return made.try_emplace(calls, calls).first->second.path();
}

/// Whether the program ended well.
bool run(const std::filesystem::path& data) {
    std::string program = PHONE_PROGRAM;
    std::string option = "--data";
    std::string directory = data.string();
    std::string script = "--script";
    std::string empty = "/dev/null";
    char* const arguments[] = {program.data(), option.data(), directory.data(), script.data(), empty.data(), nullptr};
    pid_t child = 0;
    if (posix_spawn(&child, program.c_str(), nullptr, nullptr, arguments, environ) != 0) return false;
    int status = 0;
    return waitpid(child, &status, 0) == child && WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

void startToFirstScreen(benchmark::State& state) {
    const auto& data = directoryOf(state.range(0));
    for (auto _ : state)
        if (!run(data)) state.SkipWithError("the Phone did not leave well");
}
BENCHMARK(startToFirstScreen)
    ->Arg(1000)
    ->Arg(100'000)
    ->Arg(1'000'000)
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime()
    ->MinTime(3);

}  // namespace

BENCHMARK_MAIN();
