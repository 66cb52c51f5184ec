// What importers of streams have in common: the file is read piece by piece, and each piece may bring several calls.
#pragma once

#include <deque>
#include <string>
#include <string_view>
#include <vector>

#include "tools/import/importer.h"
#include "tools/import/input_file.h"

namespace tools {

/// Where megabytes bring no call, what they began is passed over, so that it stays of bounded size; a format that
/// cannot do that reads no more of the file.
class QueuedImporter : public Importer {
  public:
    explicit QueuedImporter(InputFile file) : file_(std::move(file)) {}
    Item next() override;
    std::string place() const override { return place_; }
    double progress() const override { return file_.progress(); }

  protected:
    /// Takes the next piece of the file; calls `found` for what it brings.
    virtual void take(std::string_view piece) = 0;
    /// The file has ended.
    virtual void takeEnd() = 0;
    /// Forgets what was begun; the pieces that follow are looked through for the next call. Whether it can.
    virtual bool passOver() { return false; }

    void found(std::string place, Item item);
    /// Reads no more of the file.
    void stop() { stopped_ = true; }
    bool isStopped() const { return stopped_; }

  private:
    struct Found {
        std::string place;
        Item item;
    };

    void readPiece();

    InputFile file_;
    std::vector<char> piece_;
    std::uint64_t sinceCall_ = 0;
    bool isPassingOver_ = false;
    std::deque<Found> queue_;
    std::string place_ = "1";
    bool stopped_ = false;
};

}  // namespace tools
