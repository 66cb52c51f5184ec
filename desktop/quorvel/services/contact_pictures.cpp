// Pictures, the latest used in memory.
#include "desktop/quorvel/services/contact_pictures.h"

#include <cstdio>

#include "desktop/addressbook/book.h"
#include "desktop/graphics/image_decoding.h"
#include "desktop/uikit/color.h"

namespace quorvel {

ContactPictures& ContactPictures::shared() {
    static auto* const one = new ContactPictures();
    return *one;
}

void ContactPictures::forget() {
    const std::lock_guard lock(mutex_);
    ++edition_;
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
    long edition = 0;
    {
        const std::lock_guard lock(mutex_);
        if (auto image = find(record)) return image;
        edition = edition_;
    }
    // It is read without the lock: rows ask for what is in memory meanwhile.
    if (!contacts::Book::shared().isAllowed()) return {};
    const auto bytes = contacts::Book::shared().picture(record);
    if (!bytes) return {};
    auto decoded = graphics::decodeImage(*bytes, longestSide);
    if (!decoded) {
        std::fprintf(stderr, "libQuorvel: the picture of contact %d cannot be shown. %s\n", record,
                     decoded.error().c_str());
        return {};
    }
    const objc::Strong<> image(uikit::uiImage(*decoded, std::to_string(record)));
    const std::lock_guard lock(mutex_);
    if (auto meanwhile = find(record)) return meanwhile;
    if (edition != edition_) return image;
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
