// What the fuzzer does to a log: a run is a list of steps of one size, so that the mutator changes steps and not bytes.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace quorvel::store::fuzz {

/// How a step is carried out depends on its kind; numbers too large are taken modulo what there is.
enum class Kind : std::uint8_t {
    // Past the store, with SQLite or as bytes.
    changeCell,
    changeRowId,
    deleteRow,
    copyRow,
    changeSchema,
    swapRoots,
    runPragma,
    changeByte,
    changeHeader,
    changePage,
    cutOff,
    // Through the store.
    open,
    openForReading,
    close,
    page,
    search,
    history,
    remove,
    undelete,
    append,
    import,
    link,
    query,
    rebuild,
    check,
    mend,
    restore,
    backUp,
    setAside,
    kinds,
};

struct Step {
    std::uint8_t kind = 0;
    std::uint8_t which = 0;
    std::uint16_t row = 0;
    std::uint16_t column = 0;
    std::uint16_t extra = 0;
    std::int64_t value = 0;
};
static_assert(sizeof(Step) == 16);

constexpr std::size_t mostSteps = 24;

/// The whole steps in the bytes, `mostSteps` at most.
std::vector<Step> stepsOf(const std::uint8_t* data, std::size_t size);

/// Changes the steps a little, the same for the same seed.
void mutate(std::vector<Step>& steps, unsigned seed);

}  // namespace quorvel::store::fuzz
