// A Mach-O image as a file: what it says of its segments, fix-ups and initialisers, each checked against the file's
// size. Nothing is mapped here.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <variant>
#include <vector>

namespace substrate::mach {

using Bytes = std::span<const std::byte>;

struct Segment {
    std::string name;
    std::uint64_t address = 0;  ///< As linked.
    std::uint64_t size = 0;     ///< In memory; what the file does not fill is zero.
    Bytes content;              ///< In the file; never longer than `size`.
    bool isWritable = false;
    bool isExecutable = false;
};

/// Pointers to functions that take nothing, to be called in order.
struct Initialisers {
    std::uint64_t address = 0;
    std::uint64_t count = 0;
};

struct Image {
    std::string installName;
    std::vector<std::string> libraries;
    std::vector<Segment> segments;
    Bytes rebases;
    Bytes binds;
    Bytes lazyBinds;
    std::vector<Initialisers> initialisers;
    std::uint64_t lowest = 0;  ///< The address of the lowest segment.
    std::uint64_t extent = 0;  ///< From there to the end of the highest, in whole pages.
};

/// The processor that an image is for.
enum class Processor : std::uint32_t { x86_64 = 0x01000007, arm64 = 0x0100000C };

/// Reads the image, or answers what is wrong with it: "is cut short", "is for another processor". The image's spans
/// point into `file`. `wanted` is the processor that it has to be for.
std::variant<Image, std::string> parse(Bytes file, Processor wanted = Processor::x86_64);

/// Where a pointer of the image has to be filled in: a place within a writable segment.
struct Place {
    std::size_t segment = 0;
    std::uint64_t offset = 0;
};
struct Bind {
    Place place;
    std::string symbol;  ///< With the underscore that the platform puts before C names.
    std::int64_t addend = 0;
    bool isWeak = false;  ///< It may be missing.
};

/// The places of the rebase opcodes in order, or what is wrong with them.
std::variant<std::vector<Place>, std::string> rebasesOf(const Image& image);
/// The binds of the opcodes, those of lazy pointers behind the others, or what is wrong with them.
std::variant<std::vector<Bind>, std::string> bindsOf(const Image& image);

}  // namespace substrate::mach
