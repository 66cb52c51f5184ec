// Opening, and the alerts.
#include "desktop/quorvel/services/log_opening.h"

#include <cstdio>
#include <initializer_list>
#include <mutex>
#include <utility>

#include "desktop/quorvel/services/data_service.h"
#include "desktop/quorvel/services/texts.h"
#include "desktop/uikit/text.h"
#include "platform/dispatch.h"

namespace quorvel {
namespace {

struct Damage {
    std::mutex mutex;
    std::string command;
    bool isTold = false;
};
Damage& damage() {
    static auto* const one = new Damage();
    return *one;
}

void say(const std::string& sentence) { std::fprintf(stderr, "%s\n", sentence.c_str()); }

/// Shows the text of the key with its arguments in place of "%@". The texts are open by then.
void alert(const char* key, std::initializer_list<std::string> arguments) {
    dispatch::asyncOnMain([key, values = std::vector<std::string>(arguments)] {
        std::string text = uikit::utf8(Texts::shared().text(uikit::nsString(key)));
        std::size_t from = 0;
        for (const std::string& value : values) {
            const std::size_t place = text.find("%@", from);
            if (place == std::string::npos) break;
            text.replace(place, 2, value);
            from = place + value.size();
        }
        DataService::shared()->showErrorMessage(uikit::nsString(text));
    });
}

std::string commandFor(const DataDirectory& directory) {
    return "quorvelctl " + directory.commandOption() + "doctor --mend";
}

store::Result<store::CallStore> beginAnew(const DataDirectory& directory, const store::Error& error) {
    say(error.message);
    const auto aside = store::CallStore::setAside(directory.calls());
    if (!aside) return aside.error();
    const std::string command = commandFor(directory);
    say("It was kept as " + (*aside).string() +
        ", and a new log was begun. To bring back the calls that can be read: " + command);
    alert("LOG_SET_ASIDE", {(*aside).filename().string(), command});
    return store::CallStore::open(directory.calls());
}

}  // namespace

store::Result<store::CallStore> openCalls(const DataDirectory& directory) {
    {
        const std::lock_guard lock(damage().mutex);
        damage().command = commandFor(directory);
        damage().isTold = false;
    }
    auto opened = store::CallStore::open(directory.calls());
    if (opened) return opened;
    const store::Error error = opened.error();
    switch (error.kind) {
        case store::ErrorKind::damaged:
            return beginAnew(directory, error);
        case store::ErrorKind::foreign:
        case store::ErrorKind::newer:
        case store::ErrorKind::busy:
        case store::ErrorKind::badInput:
            return error;
        default:
            break;
    }
    store::OpenOptions options;
    options.access = store::Access::readOnly;
    auto readable = store::CallStore::open(directory.calls(), options);
    if (!readable) return error;
    say(error.message);
    say("The log is opened for reading only.");
    alert("LOG_READ_ONLY", {});
    return readable;
}

void tellOfDamage(const store::Error& error) {
    if (error.kind != store::ErrorKind::damaged) return;
    std::string command;
    {
        const std::lock_guard lock(damage().mutex);
        if (std::exchange(damage().isTold, true)) return;
        command = damage().command;
    }
    alert("LOG_DAMAGED", {command});
}

}  // namespace quorvel
