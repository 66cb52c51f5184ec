// The data directory and what is opened of it.
#include "tools/quorvelctl/session.h"

#include <cstdio>
#include <cstdlib>

#include "desktop/notify/notify.h"

namespace tools {

int complain(const std::string& sentence, Status status) {
    std::fflush(stdout);
    std::fprintf(stderr, "%s\n", sentence.c_str());
    return status;
}

const quorvel::DataDirectory& Session::directory() {
    if (directory_) return *directory_;
    auto opened = quorvel::DataDirectory::open(dataOption);
    if (const auto* trouble = std::get_if<std::string>(&opened)) std::exit(complain(*trouble, unusable));
    return directory_.emplace(std::get<quorvel::DataDirectory>(std::move(opened)));
}

quorvel::store::CallStore& Session::calls() {
    if (calls_) return *calls_;
    auto opened = quorvel::store::CallStore::open(directory().calls());
    if (!opened) std::exit(complain(opened.error().message, unusable));
    return calls_.emplace(*std::move(opened));
}

int Session::announce(std::string_view name) {
    auto failure = notify::openRendezvous(directory().notifications());
    if (!failure) failure = notify::post(name);
    return failure ? complain(failure->text) : succeeded;
}

int Session::announceChange(std::string_view name) {
    if (announce(name) != succeeded)
        complain("The change was made; a Phone that is open does not hear of it until it is started anew.");
    return succeeded;
}

}  // namespace tools
