// The Darwin notify centre as a program's main loop sees it: where names are exchanged, when they are delivered, and
// whether the program is suspended. (The C interface towards the product stands in notification_center.h.)
//
// Processes that have the same rendezvous directory open hear each other; no daemon is needed. Without a rendezvous a
// post reaches its own process only.
#pragma once

#include <cstddef>
#include <filesystem>
#include <optional>
#include <string_view>

#include "desktop/notify/failure.h"

namespace notify {

/// Joins the rendezvous in that directory, which is made when it is missing, and leaves the one before. Names posted
/// before this call are not delivered. Answers why it cannot be made, written or watched; then nothing has changed.
/// Main thread.
[[nodiscard]] std::optional<Failure> openRendezvous(const std::filesystem::path& directory);
/// Leaves the rendezvous. Names that have arrived are still delivered. Main thread.
void closeRendezvous();

/// Tells every process of the rendezvous, this one included, where the name arrives by its main loop and never inside
/// this call. Posts of a name that has not been delivered yet are one delivery. Answers why it could not be posted
/// (an empty name, one too long for a file name, a directory that went away). Any thread. Needs no Foundation.
[[nodiscard]] std::optional<Failure> post(std::string_view name);

/// A descriptor to poll for reading: readable when names may wait for deliverPending(). The same for the life of the
/// process. Main thread.
int descriptor();
/// Whether a name has arrived that was not delivered yet. A post of this process counts from the moment post() returns.
/// What is held for a suspended program does not count. Main thread.
bool pending();
/// Calls the observers of every name that has arrived, names in the order of arrival and the observers of each in the
/// order of registration, inside an autorelease pool. What the observers post waits for the next call. Answers the
/// number of calls made. Main thread.
std::size_t deliverPending();

/// While suspended, an observer's suspension behaviour decides what becomes of a name that arrives. Names that were
/// held are delivered by the first deliverPending() after resume(), once each. Main thread.
void suspend();
void resume();
bool isSuspended();

}  // namespace notify
