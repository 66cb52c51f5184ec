// The images of the product's application: which symbol each shows.
#pragma once

#include <optional>
#include <span>
#include <string_view>

#include "desktop/graphics/icons.h"

namespace graphics {

struct ProductImage {
    std::string_view name;  ///< of the file, without ending
    Symbol symbol;
};

std::span<const ProductImage> productImages();

/// The symbol of the image of that name; nothing for a name that is none of the product's.
std::optional<Symbol> symbolOfProductImage(std::string_view name);

}  // namespace graphics
