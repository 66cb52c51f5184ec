// The contacts' pictures, the latest of them in memory.
#pragma once

#include <list>
#include <mutex>
#include <unordered_map>

#include "objc/layer.h"

namespace quorvel {

/// Any thread.
class ContactPictures {
  public:
    static constexpr std::size_t mostInMemory = 300;
    /// What the largest place for a picture shows on the sharpest screen, in pixels.
    static constexpr int longestSide = 192;

    static ContactPictures& shared();

    /// What is in memory goes: contacts have changed.
    void forget();
    /// The picture where it is in memory, else null; never reads anything.
    objc::Strong<> inMemory(int record);
    /// The picture, read into memory where it is not there; null where the contact has none or access is denied, and,
    /// with a line on standard error, where it is bad. Of more than mostInMemory the longest unused go. Needs an
    /// autorelease pool.
    objc::Strong<> load(int record);
    std::size_t countInMemory() const;

  private:
    struct Kept {
        objc::Strong<> image;
        std::list<int>::iterator use;
    };
    objc::Strong<> find(int record);

    mutable std::mutex mutex_;
    std::unordered_map<int, Kept> kept_;
    std::list<int> uses_;  // the latest first
    long edition_ = 0;     // of the contacts that the pictures are of
};

}  // namespace quorvel
