// Made-up calls.
#include "desktop/quorvel/generate/generate.h"

#include <algorithm>
#include <string>

#include "desktop/quorvel/generate/people.h"

namespace quorvel {
namespace {

constexpr std::uint64_t unknownNumbers = 40;

/// A generator of our own (a 64-bit linear congruence with its high half mixed), so that every machine agrees.
class Numbers {
  public:
    explicit Numbers(std::uint64_t seed) : state_(seed * 2862933555777941757ULL + 3037000493ULL) {}
    std::uint64_t below(std::uint64_t bound) {
        state_ = state_ * 6364136223846793005ULL + 1442695040888963407ULL;
        const std::uint64_t mixed = (state_ >> 33) ^ (state_ >> 17);
        return mixed % bound;
    }
    bool chance(std::uint64_t percent) { return below(100) < percent; }

  private:
    std::uint64_t state_;
};

/// Who is called: the first ones far more often than the last.
std::size_t pickPerson(Numbers& numbers) {
    const auto first = numbers.below(madeUpPeople().size());
    const auto second = numbers.below(madeUpPeople().size());
    return std::min(first, second);
}

void addParty(store::NewCall& call, Numbers& numbers) {
    if (numbers.chance(18)) {
        call.address = "+4930555" + std::to_string(10000 + numbers.below(unknownNumbers));
        call.location = "Berlin";
        return;
    }
    if (numbers.chance(2)) return;  // withheld
    const std::size_t index = pickPerson(numbers);
    const MadeUpPerson& person = madeUpPeople()[index];
    call.address = person.address;
    call.name = nameOf(person);
    call.label = person.label;
    call.location = person.location;
    call.contactId = static_cast<std::int32_t>(index) + 1;
}

void addKind(store::NewCall& call, Numbers& numbers) {
    const bool outgoing = numbers.chance(45);
    const bool answered = numbers.chance(outgoing ? 80 : 70);
    call.flags = outgoing ? store::flag::outgoing : 0;
    const bool isAddress = call.address.find('@') != std::string::npos;
    if (isAddress || numbers.chance(6)) {
        call.flags |= store::flag::faceTime;
        if (numbers.chance(50)) call.flags |= store::flag::faceTimeAudio;
    }
    if (answered) call.duration = static_cast<std::int32_t>(5 + numbers.below(numbers.chance(15) ? 4000 : 420));
}

}  // namespace

void generateCalls(const GenerateOptions& options, const std::function<bool(const store::NewCall&)>& take) {
    Numbers numbers(options.seed);
    constexpr std::int64_t threeYears = 3LL * 365 * 24 * 3600;
    const std::int64_t step = std::max<std::int64_t>(
        1, std::min<std::int64_t>(threeYears / std::max<std::int64_t>(options.calls, 1), 6 * 3600));
    std::int64_t date = options.until - step * (options.calls - 1);
    store::NewCall call;
    for (std::int64_t i = 0; i < options.calls; ++i, date += step) {
        // A run of calls with the same party, now and then.
        if (i == 0 || !numbers.chance(22)) {
            call = {};
            addParty(call, numbers);
        }
        call.flags = 0;
        call.duration = 0;
        addKind(call, numbers);
        const std::int64_t moment =
            date + static_cast<std::int64_t>(numbers.below(static_cast<std::uint64_t>(step))) - step / 2;
        call.date = std::clamp<std::int64_t>(moment, 0, INT32_MAX);
        if (!take(call)) return;
    }
}

}  // namespace quorvel
