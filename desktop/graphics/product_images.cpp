// The product's images by name.
#include "desktop/graphics/product_images.h"

#include <algorithm>

namespace graphics {
namespace {

constexpr ProductImage images[] = {
    {"all_icon", Symbol::AllCalls},
    {"dialled_icon", Symbol::DialledCalls},
    {"received_icon", Symbol::ReceivedCalls},
    {"missed_icon", Symbol::MissedCalls},
    {"delete_all_icon", Symbol::DeleteAll},
    {"delete_icon", Symbol::Delete},
    {"cancel", Symbol::Cancel},
};

}  // namespace

std::span<const ProductImage> productImages() { return images; }

std::optional<Symbol> symbolOfProductImage(std::string_view name) {
    const auto* found = std::ranges::find(images, name, &ProductImage::name);
    return found == std::end(images) ? std::nullopt : std::optional(found->symbol);
}

}  // namespace graphics
