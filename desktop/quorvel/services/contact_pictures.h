// The contacts' pictures: files of the data directory, the latest of them in memory.
#pragma once

#include <filesystem>
#include <list>
#include <mutex>
#include <unordered_map>

#include "objc/layer.h"

namespace quorvel {

/// Any thread.
class ContactPictures {
  public:
    static constexpr std::size_t mostInMemory = 300;

    static ContactPictures& shared();

    /// From now on pictures are FOLDER/RECORD.png; what is in memory goes.
    void setFolder(std::filesystem::path folder);
    /// The picture where it is in memory, else null; never reads a file.
    objc::Strong<> inMemory(int record);
    /// The picture, read into memory where it is not there; null where the contact has none, and, with a line on
    /// standard error, where the file is bad. Of more than mostInMemory the longest unused go. Needs an autorelease
    /// pool.
    objc::Strong<> load(int record);
    std::size_t countInMemory() const;

  private:
    struct Kept {
        objc::Strong<> image;
        std::list<int>::iterator use;
    };
    objc::Strong<> find(int record);

    mutable std::mutex mutex_;
    std::filesystem::path folder_;
    std::unordered_map<int, Kept> kept_;
    std::list<int> uses_;  // the latest first
};

}  // namespace quorvel
