// The reader of Mach-O images on arbitrary bytes.
#include <cstdlib>

#include "desktop/substrate/mach_image.h"

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size) {
    namespace mach = substrate::mach;
    const auto parsed = mach::parse(std::as_bytes(std::span(data, size)));
    const auto* image = std::get_if<mach::Image>(&parsed);
    if (!image) return 0;
    for (const auto& segment : image->segments)
        if (segment.content.size() > segment.size || segment.address < image->lowest ||
            segment.address - image->lowest + segment.size > image->extent)
            std::abort();
    const auto check = [&](mach::Place place) {
        if (place.segment >= image->segments.size() || place.offset + 8 > image->segments[place.segment].size)
            std::abort();
    };
    const auto rebases = mach::rebasesOf(*image);
    if (const auto* places = std::get_if<std::vector<mach::Place>>(&rebases))
        for (const auto& place : *places) check(place);
    const auto binds = mach::bindsOf(*image);
    if (const auto* list = std::get_if<std::vector<mach::Bind>>(&binds))
        for (const auto& bind : *list) check(bind.place);
    return 0;
}
