// The plug-in in a process that is not the telephone application: nothing happens.
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include "desktop/notify/notify.h"
#include "desktop/substrate/substrate.h"
#include "objc/layer.h"
#include "tests/plugin_image.h"

namespace {

struct stat standardError() {
    struct stat status {};
    fstat(STDERR_FILENO, &status);
    return status;
}

TEST(AnotherProcess, keepsItsStandardErrorObservesNothingAndInstallsNothing) {
    const objc::AutoreleasePool pool;
    const struct stat before = standardError();
    const auto error = substrate::loadPlugin(pluginImage());
    ASSERT_FALSE(error.has_value()) << *error;
    const struct stat after = standardError();
    EXPECT_EQ(before.st_ino, after.st_ino);
    EXPECT_EQ(before.st_dev, after.st_dev);
    ASSERT_FALSE(notify::post("QuorvelRestoreDatabaseNotification").has_value());
    std::size_t called = 0;
    while (notify::pending()) called += notify::deliverPending();
    EXPECT_EQ(called, 0U);
    EXPECT_EQ(objc_getClass("PHRecentsViewController"), nullptr);
}

}  // namespace
