// The mutator: whole steps come, go and change places, or one of them changes a part.
#include "steps.h"

#include <algorithm>
#include <cstring>
#include <random>

namespace quorvel::store::fuzz {
namespace {

constexpr std::int64_t edges[] = {0,          1,         -1,        2,          3,          4,          5,
                                  9,          17,        -7,        INT32_MAX,  INT32_MIN,  UINT32_MAX, 4294967296,
                                  4294967297, INT64_MAX, INT64_MIN, 1700000000, 2147483648, 86400,      19675,
                                  2932896,    2932897,   -719528,   -719529,    100001,     1048576};

std::int64_t valueOf(std::mt19937& random) {
    if (random() % 4 != 0) return edges[random() % std::size(edges)];
    return random() % 2 == 0 ? static_cast<std::int64_t>(random() % 64)
                             : static_cast<std::int64_t>(std::uint64_t{random()} << 32U | random());
}

Step stepOf(std::mt19937& random) {
    // Changes past the store are what matters most.
    constexpr unsigned changes = static_cast<unsigned>(Kind::open);
    const unsigned kind = random() % 3 != 0 ? random() % changes : random() % static_cast<unsigned>(Kind::kinds);
    return {static_cast<std::uint8_t>(kind),      static_cast<std::uint8_t>(random()),
            static_cast<std::uint16_t>(random()), static_cast<std::uint16_t>(random()),
            static_cast<std::uint16_t>(random()), valueOf(random)};
}

void changePart(Step& step, std::mt19937& random) {
    switch (random() % 6) {
        case 0:
            step.which = static_cast<std::uint8_t>(random());
            return;
        case 1:
            step.row = static_cast<std::uint16_t>(random());
            return;
        case 2:
            step.column = static_cast<std::uint16_t>(random());
            return;
        case 3:
            step.extra = static_cast<std::uint16_t>(random());
            return;
        case 4:
            step.kind = stepOf(random).kind;
            return;
        default:
            step.value = valueOf(random);
    }
}

void mutateOnce(std::vector<Step>& steps, std::mt19937& random) {
    const auto place = [&] { return steps.begin() + static_cast<std::ptrdiff_t>(random() % steps.size()); };
    const unsigned way = steps.empty() ? 0 : random() % 8;
    if (way <= 2 && steps.size() < mostSteps) {
        steps.insert(steps.begin() + static_cast<std::ptrdiff_t>(random() % (steps.size() + 1)), stepOf(random));
    } else if (way == 3 && steps.size() > 1) {
        steps.erase(place());
    } else if (way == 4 && steps.size() < mostSteps) {
        const Step again = *place();
        steps.insert(place(), again);
    } else if (way == 5) {
        std::iter_swap(place(), place());
    } else {
        changePart(*place(), random);
    }
}

}  // namespace

std::vector<Step> stepsOf(const std::uint8_t* data, std::size_t size) {
    std::vector<Step> steps(std::min(size / sizeof(Step), mostSteps));
    if (!steps.empty()) std::memcpy(steps.data(), data, steps.size() * sizeof(Step));
    return steps;
}

void mutate(std::vector<Step>& steps, unsigned seed) {
    std::mt19937 random(seed);
    for (unsigned times = 1 + random() % 3; times > 0; --times) mutateOnce(steps, random);
}

}  // namespace quorvel::store::fuzz
