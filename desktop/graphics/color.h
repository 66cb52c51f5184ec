// A colour of four components, each from 0 to 1, not premultiplied.
#pragma once

#include <cstdint>

namespace graphics {

struct Color {
    double red = 0;
    double green = 0;
    double blue = 0;
    double alpha = 1;

    /// From 0xRRGGBB.
    static constexpr Color fromHex(std::uint32_t rgb, double alpha = 1) {
        return {((rgb >> 16) & 0xFF) / 255.0, ((rgb >> 8) & 0xFF) / 255.0, (rgb & 0xFF) / 255.0, alpha};
    }
    static constexpr Color gray(double white, double alpha = 1) { return {white, white, white, alpha}; }
    static constexpr Color black() { return gray(0); }
    static constexpr Color white() { return gray(1); }
    static constexpr Color clear() { return gray(0, 0); }

    constexpr Color withAlpha(double newAlpha) const { return {red, green, blue, newAlpha}; }
    /// This colour at 0, the other one at 1.
    constexpr Color mixed(const Color& other, double amount) const {
        return {red + (other.red - red) * amount, green + (other.green - green) * amount,
                blue + (other.blue - blue) * amount, alpha + (other.alpha - alpha) * amount};
    }

    friend constexpr bool operator==(const Color&, const Color&) = default;
};

}  // namespace graphics
