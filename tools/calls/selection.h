// Which calls of the log a command is about, by options that several commands have.
#pragma once

#include <CLI/CLI.hpp>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "desktop/quorvel/store/call_store.h"

namespace tools {

struct Selection {
    quorvel::store::Filter filter = quorvel::store::Filter::all;
    std::string contact;  ///< A contact's number, or the whole of a name or address; empty for everybody.
    std::string text;     ///< Contained in the name or address, whatever the case; empty for every call.
    std::int64_t since = 0;
    std::int64_t until = INT64_MAX;  ///< The last second that counts.

    /// Whether it leaves no call out.
    bool isEverything() const;
};

/// Adds --filter, --contact, --text, --since and --until, which fill the selection while the line is parsed. Days are
/// whole ones in the machine's time zone.
void addSelection(CLI::App& command, const std::shared_ptr<Selection>& selection);

/// Shows the calls that are chosen, newest first, without what only whole calls have. False from `see` ends it.
/// Answers what kept the log from being read.
quorvel::store::Result<quorvel::store::Done> eachCall(
    const quorvel::store::CallStore& calls, const Selection& selection,
    const std::function<bool(const quorvel::store::CallRecord&)>& see);

/// The row identifiers of the chosen calls, oldest first.
quorvel::store::Result<std::vector<std::int64_t>> chosenCalls(const quorvel::store::CallStore& calls,
                                                              const Selection& selection);

/// "dialled", "cancelled", "received" or "missed".
const char* kindText(const quorvel::store::CallRecord& call);

}  // namespace tools
