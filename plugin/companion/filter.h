// Filters: the code that every list, count, duration and deletion takes.
#pragma once

#include <cstdint>

/// One of the four lists of calls. The code is the selected segment plus one; any other code counts as all calls.
enum class Filter : std::int64_t { All = 1, Dialled = 2, Received = 3, Missed = 4 };

/// The filter of a segment or scope index.
inline Filter filterOfSegment(long index) { return static_cast<Filter>(index + 1); }

/// The one of four things that belongs to the filter; the first for every code that is none of the others.
template <class T>
inline T& ofFilter(Filter filter, T& all, T& dialled, T& received, T& missed) {
    switch (filter) {
        case Filter::Dialled:
            return dialled;
        case Filter::Received:
            return received;
        case Filter::Missed:
            return missed;
        default:
            return all;
    }
}
