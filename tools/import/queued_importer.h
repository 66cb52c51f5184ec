// What importers of streams have in common: the file is read piece by piece, and each piece may bring several calls.
#pragma once

#include <deque>
#include <string>
#include <string_view>

#include "tools/import/importer.h"
#include "tools/import/input_file.h"

namespace tools {

/// A file of which megabytes bring no call is not read on, so that whatever a piece begins stays of bounded size.
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
    std::uint64_t sinceCall_ = 0;
    std::deque<Found> queue_;
    std::string place_ = "1";
    bool stopped_ = false;
};

}  // namespace tools
