// Pictures, the latest used in memory.
#include "desktop/quorvel/services/contact_pictures.h"

#include <cstdio>

#include "desktop/uikit/color.h"

namespace quorvel {

ContactPictures& ContactPictures::shared() {
    static auto* const one = new ContactPictures();
    return *one;
}

void ContactPictures::setFolder(std::filesystem::path folder) {
    const std::lock_guard lock(mutex_);
    folder_ = std::move(folder);
    kept_.clear();
    uses_.clear();
}

objc::Strong<> ContactPictures::find(int record) {
    const auto found = kept_.find(record);
    if (found == kept_.end()) return {};
    uses_.splice(uses_.begin(), uses_, found->second.use);
    return found->second.image;
}

objc::Strong<> ContactPictures::inMemory(int record) {
    const std::lock_guard lock(mutex_);
    return find(record);
}

objc::Strong<> ContactPictures::load(int record) {
    std::filesystem::path file;
    {
        const std::lock_guard lock(mutex_);
        if (auto image = find(record)) return image;
        if (folder_.empty()) return {};
        file = folder_ / (std::to_string(record) + ".png");
    }
    // The file is read without the lock: rows ask for what is in memory meanwhile.
    std::error_code error;
    if (!std::filesystem::exists(file, error)) return {};
    auto read = graphics::Image::load(file.string());
    if (!read) {
        std::fprintf(stderr, "libQuorvel: %s\n", read.error().c_str());
        return {};
    }
    const objc::Strong<> image(uikit::uiImage(*read, file.stem().string()));
    const std::lock_guard lock(mutex_);
    if (auto meanwhile = find(record)) return meanwhile;
    if (file.parent_path() != folder_) return image;
    uses_.push_front(record);
    kept_[record] = {image, uses_.begin()};
    while (kept_.size() > mostInMemory) {
        kept_.erase(uses_.back());
        uses_.pop_back();
    }
    return image;
}

std::size_t ContactPictures::countInMemory() const {
    const std::lock_guard lock(mutex_);
    return kept_.size();
}

}  // namespace quorvel
