// Two names of one empty file: the first says that nothing has been done yet, the second that the contacts may be
// samples.
#include "desktop/phone/first_start.h"

#include <cerrno>
#include <cstring>
#include <fstream>

#include "desktop/addressbook/book.h"
#include "desktop/phone/samples.h"

namespace phone {
namespace {

namespace fs = std::filesystem;

fs::path notedIn(const quorvel::DataDirectory& directory) { return directory.path() / "first-start"; }
fs::path fillingIn(const quorvel::DataDirectory& directory) { return directory.path() / "first-start-filling"; }

bool isThere(const fs::path& file) {
    std::error_code ignored;
    return fs::exists(file, ignored);
}

std::optional<std::string> cannotWrite(const fs::path& file, const std::string& why) {
    return "The file " + file.string() + " cannot be written: " + why + ". Allow writing to its folder, or make room.";
}

}  // namespace

std::optional<std::string> noteFirstStart(const quorvel::DataDirectory& directory) {
    if (!directory.isNew()) return std::nullopt;
    const fs::path file = notedIn(directory);
    if (std::ofstream(file, std::ios::app)) return std::nullopt;
    return cannotWrite(file, std::strerror(errno));
}

std::optional<std::string> finishFirstStart(const quorvel::DataDirectory& directory, quorvel::store::CallStore& log,
                                            std::int64_t now) {
    const fs::path noted = notedIn(directory), filling = fillingIn(directory);
    std::error_code error;
    if (isThere(noted)) {
        auto& book = contacts::Book::shared();
        const bool wantsSamples = book.isOpen() && book.all()->empty();
        // From here on contacts are no sign of a user who had some before.
        if (wantsSamples)
            fs::rename(noted, filling, error);
        else
            fs::remove(noted, error);
        if (error) return cannotWrite(noted, error.message());
    }
    if (!isThere(filling)) return std::nullopt;
    if (auto trouble = fillWithSamples(log, now)) return trouble;
    fs::remove(filling, error);
    return error ? cannotWrite(filling, error.message()) : std::nullopt;
}

}  // namespace phone
