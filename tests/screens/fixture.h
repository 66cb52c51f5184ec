// A telephone application with the plug-in in it, on a data directory of the test's own.
#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include "desktop/quorvel/store/call.h"
#include "platform/uikit_screens.h"
#include "plugin/companion/data_controller.h"
#include "plugin/companion/entry.h"
#include "plugin/companion/settings.h"

namespace screens {

/// Noon of 15 June 2024 in UTC, which is the tests' time zone.
constexpr std::int64_t noon = 1718452800;
constexpr std::int64_t day = 86400;
/// How the call table's flags name a direction.
constexpr int outgoing = 1;
constexpr int incoming = 0;

struct Call {
    const char* address;
    std::int64_t date;
    int flags = incoming;
    int duration = 30;
    int contact = quorvel::store::noContact;
    const char* name = "";
};

/// Records what its delegate methods are sent.
class Delegate : public objc::PeerBase {
  public:
    using Super = objc::Foreign<"NSObject">;
    static constexpr objc::Name className{"ScreensTestDelegate"};
    static void define(objc::ClassDefinition<Delegate>& definition) {
        definition.method<"entryDeleted:", &Delegate::entryDeleted>();
    }
    void entryDeleted(objc::Object entry) { deleted.push_back(entry); }

    std::vector<objc::Object> deleted;
};

/// The Recents screen is in front, with the calls of fill() loaded once start() has been called.
class ScreenTest : public testing::Test {
  protected:
    ScreenTest();
    ~ScreenTest() override;

    /// Stores the calls in this order.
    void fill(const std::vector<Call>& calls);
    /// Writes a setting, to be read at once.
    void setSetting(const char* key, const char* value);
    /// Launches the application and waits until Recents shows its list.
    void start();
    /// Runs the main loop until nothing is left to do.
    void settle();

    UINavigationController navigation() const;
    /// Class names on the stack, bottom first.
    std::vector<std::string> stack() const;
    static QVDataController service() { return QVDataController::sharedInstance(); }
    static QVSettingsDataController settings() { return QVSettingsDataController::sharedInstance(); }
    /// How often a deletion was announced to other processes since the last call.
    int deletionsAnnounced();
    /// Contacts may not be read from now on.
    void denyAddressBook();
    /// The database refuses everything from now on.
    void closeDatabase();
    /// What is in the log, newest first, as "address date flags duration".
    std::vector<std::string> log() const;

    /// What the messages to objects of these classes are, from now on, as "selector argument ...".
    void trace(const std::vector<std::string>& classes);
    std::vector<std::string> traced();

  private:
    objc::AutoreleasePool pool_;
    std::filesystem::path folder_;
    std::vector<std::string> lines_;
};

inline NSString ns(const char* literal) { return NSString::stringWithUTF8String(literal); }
inline std::string utf8(NSString text) { return text ? text.UTF8String() : "(nil)"; }
inline NSIndexPath rowPath(long row) {
    return objc::send<"indexPathForRow:inSection:", NSIndexPath>(cls<NSIndexPath>(), row, 0L);
}

}  // namespace screens
