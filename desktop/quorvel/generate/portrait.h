// Drawn portraits for the cards of made-up people.
#pragma once

#include <cstdint>
#include <string>

namespace quorvel {

enum class Hair { Short, Long, Bun };

/// Colours are 0xRRGGBB.
struct Look {
    std::uint32_t background;
    std::uint32_t skin;
    std::uint32_t hair;
    std::uint32_t clothes;
    Hair style;
    bool wearsGlasses;
};

/// The bytes of a square PNG picture, or nothing where there is no memory for it.
std::string portraitOf(const Look& look);

}  // namespace quorvel
