// Pieces of a file, and the calls in them.
#include "tools/import/queued_importer.h"

#include <array>

namespace tools {
namespace {

constexpr std::uint64_t mostWithoutCall = std::uint64_t{1} << 22;

}  // namespace

void QueuedImporter::found(std::string place, Item item) {
    sinceCall_ = 0;
    queue_.push_back({std::move(place), std::move(item)});
}

void QueuedImporter::readPiece() {
    std::array<char, 1 << 14> piece{};
    const std::size_t count = file_.read(piece);
    sinceCall_ += count;
    if (!file_.trouble().empty()) {
        stop();
        found(place_, Complaint{place_, file_.trouble(), Complaint::Reach::File});
        return;
    }
    if (count > 0) take({piece.data(), count});
    if (!stopped_ && sinceCall_ > mostWithoutCall) {
        stop();
        found(place_,
              Complaint{place_,
                        "Behind this place megabytes follow without a call. The file is damaged, or no file of calls.",
                        Complaint::Reach::Call});
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
