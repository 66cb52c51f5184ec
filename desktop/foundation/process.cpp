// Foundation copies arguments and environment when it is loaded, and its first class ends the process where one of them
// is not UTF-8. So the bytes are changed before any library runs, and the program gets copies of what they were.
#include "desktop/foundation/process.h"

#include <unistd.h>

#include <cstdlib>
#include <cstring>

#include "objc/layer.h"

namespace foundation {
namespace {

struct Hidden {
    char* place;  ///< Where the text stood, and a readable one stands now.
    char* text;
    Hidden* next;
};
Hidden* hidden = nullptr;

// Sanitizers are not up yet while this runs.
#define RUNS_BEFORE_ANYTHING [[gnu::no_sanitize("address", "undefined", "thread")]]

/// How many bytes follow the first one of a character; -1 where none begins so.
RUNS_BEFORE_ANYTHING int followersOf(unsigned char first) {
    return first < 0x80 ? 0 : first < 0xC2 ? -1 : first < 0xE0 ? 1 : first < 0xF0 ? 2 : first < 0xF5 ? 3 : -1;
}

/// Sorts out halves of surrogate pairs and longer forms too, as the whole of what is not ASCII is changed then.
RUNS_BEFORE_ANYTHING bool isReadable(const char* text) {
    for (const auto* at = reinterpret_cast<const unsigned char*>(text); *at != 0;) {
        const unsigned char first = *at++;
        const int followers = followersOf(first);
        if (followers < 0) return false;
        const unsigned char second = *at;
        if ((first == 0xE0 && second < 0xA0) || (first == 0xED && second > 0x9F) || (first == 0xF0 && second < 0x90) ||
            (first == 0xF4 && second > 0x8F))
            return false;
        for (int i = 0; i < followers; ++i, ++at)
            if ((*at & 0xC0) != 0x80) return false;
    }
    return true;
}

RUNS_BEFORE_ANYTHING void hideUnreadable(char** texts) {
    for (; *texts; ++texts) {
        if (isReadable(*texts)) continue;
        auto* each = static_cast<Hidden*>(std::malloc(sizeof(Hidden)));
        char* copy = strdup(*texts);
        if (!each || !copy) std::abort();
        *each = {*texts, copy, hidden};
        hidden = each;
        for (char* at = *texts; *at != '\0'; ++at)
            if (static_cast<unsigned char>(*at) >= 0x80) *at = '?';
    }
}

RUNS_BEFORE_ANYTHING void hideArguments(int, char** arguments, char** variables) {
    hideUnreadable(arguments);
    hideUnreadable(variables);
}

// Before the initialisers of all libraries.
[[gnu::section(".preinit_array"), gnu::used]] void (*const first)(int, char**, char**) = hideArguments;

void bringBack(char** texts) {
    for (; *texts; ++texts)
        for (const Hidden* each = hidden; each; each = each->next)
            if (*texts == each->place) *texts = each->text;
}

}  // namespace

void takeArguments(char** arguments) {
    const objc::AutoreleasePool pool;
    objc::sendClass<"NSProcessInfo", "processInfo", objc::Object>();
    bringBack(arguments);
    bringBack(environ);
}

}  // namespace foundation
