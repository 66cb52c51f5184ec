// Draws the images of the product's application: make_icons DIRECTORY writes each as PNG for one, two and three pixels
// a point.
#include <cstdio>
#include <filesystem>
#include <string>

#include "desktop/graphics/icons.h"

namespace {

struct ProductImage {
    const char* name;
    graphics::Symbol symbol;
};

constexpr ProductImage productImages[] = {
    {"all_icon", graphics::Symbol::AllCalls},
    {"dialled_icon", graphics::Symbol::DialledCalls},
    {"received_icon", graphics::Symbol::ReceivedCalls},
    {"missed_icon", graphics::Symbol::MissedCalls},
    {"delete_all_icon", graphics::Symbol::DeleteAll},
    {"delete_icon", graphics::Symbol::Delete},
    {"cancel", graphics::Symbol::Cancel},
};

}  // namespace

int main(int argumentCount, char** arguments) {
    if (argumentCount != 2) {
        std::fprintf(stderr, "usage: %s DIRECTORY\nwrites the product's images into the directory\n", arguments[0]);
        return 2;
    }
    for (const ProductImage& image : productImages) {
        for (const int scale : {1, 2, 3}) {
            const std::string suffix = scale == 1 ? "" : "@" + std::to_string(scale) + "x";
            const std::string path = std::string(arguments[1]) + "/" + image.name + suffix + ".png";
            const std::string problem = graphics::symbolImage(image.symbol, scale).writePng(path);
            if (problem.empty()) {
                // They are the product's, and no user's alone.
                using std::filesystem::perms;
                std::filesystem::permissions(
                    path, perms::owner_read | perms::owner_write | perms::group_read | perms::others_read);
                continue;
            }
            std::fprintf(stderr, "make_icons: %s\n", problem.c_str());
            return 1;
        }
    }
    return 0;
}
