// Made-up calls and contacts.
#include "desktop/phone/samples.h"

#include "desktop/quorvel/generate/generate.h"
#include "desktop/quorvel/generate/sample_contacts.h"
#include "desktop/quorvel/store/import_session.h"

namespace phone {
namespace {

constexpr std::int64_t minutesBefore = 20 * 60;

}  // namespace

std::optional<std::string> fillWithSamples(quorvel::store::CallStore& log, std::int64_t now) {
    auto& book = contacts::Book::shared();
    if (!book.isOpen()) return std::nullopt;
    auto session = log.beginImport();
    if (!session) return session.error().message;
    // Of a process that was killed, or of another one that was faster.
    const auto newest = log.newestRowId();
    if (!newest) return newest.error().message;
    if (*newest > 0) return std::nullopt;
    const auto people = quorvel::SampleContacts::addTo(book);
    if (!people) return people.error().message;
    std::string trouble;
    quorvel::generateCalls({.calls = 400, .seed = 7, .until = now - minutesBefore}, [&](quorvel::store::NewCall call) {
        (*people).name(call);
        const auto added = (*session).add(call);
        if (!added) trouble = added.error().message;
        return trouble.empty();
    });
    if (!trouble.empty()) return trouble;
    const auto finished = (*session).finish();
    return finished ? std::nullopt : std::optional(finished.error().message);
}

}  // namespace phone
