// The two load-time initialisers, told apart by the classes that they look up.
#include <dlfcn.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "desktop/substrate/substrate.h"
#include "objc/target.h"

namespace {

bool isListening = false;
std::vector<std::string> lookedUp;

using LookUp = decltype(&objc_getClass);

}  // namespace

/// In place of the runtime's, for this whole process: writes down the name and asks the runtime.
extern "C" decltype(objc_getClass("")) objc_getClass(const char* name) {
    static const auto original = reinterpret_cast<LookUp>(dlsym(RTLD_NEXT, "objc_getClass"));
    if (isListening) lookedUp.emplace_back(name);
    return original(name);
}

namespace {

TEST(TheInitialisersOfTheSimulatorsImage, gateFirstAndInstallSecond) {
    isListening = true;
    const auto trouble = substrate::loadPlugin(SIMULATOR_IMAGE);
    isListening = false;
    ASSERT_EQ(trouble, std::nullopt);
    // The gate asks the main bundle for its identifier; the installation begins with the application's delegate.
    const auto gate = std::find(lookedUp.begin(), lookedUp.end(), "NSBundle");
    const auto installation = std::find(lookedUp.begin(), lookedUp.end(), "PhoneApplication");
    ASSERT_NE(gate, lookedUp.end());
    ASSERT_NE(installation, lookedUp.end());
    EXPECT_LT(gate, installation);
    EXPECT_NE(std::find(installation, lookedUp.end(), "PHRecentsViewController"), lookedUp.end());
}

}  // namespace
