// The scroll offsets that are remembered for each filter.
#pragma once

#include "plugin/companion/filter.h"

extern "C" {
// Exported under these names: the vertical offset last seen, in points, for each of the four filters.
extern float allCallsOffSetY;
extern float dldCallsOffSetY;
extern float rcdCallsOffSetY;
extern float msdCallsOffSetY;
}

namespace recents {

/// The height that hides the search bar above the first row.
inline constexpr float searchBarOffset = 44.0F;

struct ScrollOffsets {
    float all;
    float dialled;
    float received;
    float missed;
};

/// Offsets of exactly 44 become 0, but only while at least one of the four is 0: four that all hold something keep
/// their 44, on purpose.
constexpr ScrollOffsets normalised(ScrollOffsets offsets) {
    if (offsets.all != 0 && offsets.dialled != 0 && offsets.received != 0 && offsets.missed != 0) return offsets;
    auto withoutBar = [](float offset) { return offset == searchBarOffset ? 0.0F : offset; };
    return {withoutBar(offsets.all), withoutBar(offsets.dialled), withoutBar(offsets.received),
            withoutBar(offsets.missed)};
}

/// The offsets after one was remembered for the filter (codes outside the four remember nothing).
constexpr ScrollOffsets remembered(ScrollOffsets offsets, Filter filter, double offset) {
    const auto narrowed = static_cast<float>(offset);
    switch (filter) {
        case Filter::All:
            offsets.all = narrowed;
            break;
        case Filter::Dialled:
            offsets.dialled = narrowed;
            break;
        case Filter::Received:
            offsets.received = narrowed;
            break;
        case Filter::Missed:
            offsets.missed = narrowed;
            break;
        default:
            break;
    }
    return normalised(offsets);
}

/// Starts all four over: 0 where days are shown or there is no search bar, else the bar's height.
void resetScrollOffsets();
/// Remembers the offset for the filter, then normalises.
void rememberScrollOffset(Filter filter, double offset);

}  // namespace recents
