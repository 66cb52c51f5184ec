// The process gate, the log file and the three handlers of system-wide notifications.
#include "plugin/host/startup.h"

#include "platform/corefoundation.h"
#include "platform/standard_error.h"
#include "plugin/companion/settings.h"
#include "plugin/host/gate.h"
#include "plugin/host/recents_controller.h"

namespace host {
namespace {

/// Appends standard error to the log file, a line at a time, because the process may end without closing the stream.
/// The file is opened once beforehand: an freopen() that fails has closed the stream, and the next file that is opened
/// would take its descriptor. A failure leaves standard error as it was.
void appendStandardErrorToLog() {
    const char* path = text<"/tmp/Quorvel.log">().fileSystemRepresentation();
    FILE* log = fopen(path, "a");
    if (!log) return;
    fclose(log);
    if (freopen(path, "a", standardError())) setvbuf(standardError(), nullptr, _IOLBF, 0);
}

void showAppearance() { objc::send<"viewAppearedAction">(recentsController().get()); }

/// Settings changed in another process: everything that was read is stale.
void settingsChanged(void*, void*, const void*, const void*, const void*) {
    if (!isTelephoneApplication()) return;
    auto settings = QVSettingsDataController::sharedInstance();
    settings.reloadSettings();
    settings.setIsNeedToLoadData(true);
    settings.setIsCallSettingsChanged(true);
    showAppearance();
}

/// The database changed under the lists: they are loaded again now.
void dataChanged(void*, void*, const void*, const void*, const void*) {
    if (!isTelephoneApplication()) return;
    QVSettingsDataController::sharedInstance().setIsNeedToLoadData(true);
    showAppearance();
}

/// The lists are stale; the next appearance loads them.
void dataStale(void*, void*, const void*, const void*, const void*) {
    if (!isTelephoneApplication()) return;
    QVSettingsDataController::sharedInstance().setIsNeedToLoadData(true);
}

void observeNotifications() {
    using darwin::observe;
    using darwin::Suspension;
    observe(text<"QuorvelReloadSettingsReplaceRecents">(), settingsChanged, Suspension::Hold);
    observe(text<"QuorvelAlertSettingsChanged">(), settingsChanged, Suspension::Hold);
    observe(text<"QuorvelRestoreDatabaseNotification">(), dataChanged, Suspension::Hold);
    observe(text<"QuorvelCallRecordDeletedNotification">(), dataChanged, Suspension::DeliverImmediately);
    observe(text<"QuorvelAllCallsCleared">(), dataStale, Suspension::Hold);
    observe(text<"QuorvelRefreshTableAndLoadCalls">(), dataStale, Suspension::Hold);
    observe(text<"QuorvelRefreshCallTable">(), dataStale, Suspension::Hold);
    observe(text<"__ABDataBaseChangedByOtherProcessNotification">(), dataStale, Suspension::DeliverImmediately);
}

}  // namespace

void start() {
    if (!isTelephoneApplication()) return;
    appendStandardErrorToLog();
    observeNotifications();
}

}  // namespace host
