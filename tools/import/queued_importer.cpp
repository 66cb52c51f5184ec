// Pieces of a file, and the calls in them.
#include "tools/import/queued_importer.h"

#include <algorithm>

namespace tools {
namespace {

constexpr std::uint64_t mostWithoutCall = std::uint64_t{1} << 22;
/// A parser looks at what is not complete again with every piece, so that pieces grow with it.
constexpr std::uint64_t leastPiece = std::uint64_t{1} << 14, mostPiece = std::uint64_t{1} << 20;

}  // namespace

void QueuedImporter::found(std::string place, Item item) {
    sinceCall_ = 0;
    isPassingOver_ = false;
    queue_.push_back({std::move(place), std::move(item)});
}

void QueuedImporter::readPiece() {
    piece_.resize(std::clamp(sinceCall_, leastPiece, mostPiece));
    const std::size_t count = file_.read(piece_);
    sinceCall_ += count;
    if (!file_.trouble().empty()) {
        stop();
        found(place_, Complaint{place_, file_.trouble(), Complaint::Reach::File});
        return;
    }
    if (count > 0) take({piece_.data(), count});
    if (!stopped_ && !isPassingOver_ && sinceCall_ > mostWithoutCall) {
        found(place_,
              Complaint{place_,
                        "Behind this place megabytes follow without a call. The file is damaged, or no file of calls.",
                        Complaint::Reach::Call});
        isPassingOver_ = passOver();
        if (!isPassingOver_) stop();
    }
    if (count == 0 && !stopped_) {
        stop();
        takeEnd();
    }
}

Importer::Item QueuedImporter::next() {
    while (queue_.empty() && !stopped_) readPiece();
    if (queue_.empty()) return End{};
    Found first = std::move(queue_.front());
    queue_.pop_front();
    place_ = std::move(first.place);
    return std::move(first.item);
}

}  // namespace tools
