// Draws the images of the product's application: make_icons DIRECTORY writes each as PNG for one, two and three pixels
// a point.
#include <cstdio>
#include <filesystem>
#include <string>

#include "desktop/graphics/product_images.h"

int main(int argumentCount, char** arguments) {
    if (argumentCount != 2) {
        std::fprintf(stderr, "usage: %s DIRECTORY\nwrites the product's images into the directory\n", arguments[0]);
        return 2;
    }
    for (const auto& image : graphics::productImages()) {
        for (const int scale : {1, 2, 3}) {
            const std::string suffix = scale == 1 ? "" : "@" + std::to_string(scale) + "x";
            const std::string path = std::string(arguments[1]) + "/" + std::string(image.name) + suffix + ".png";
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
