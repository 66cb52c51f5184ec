// How a call is placed again.
#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <string>

#include "plugin/rows/call_back_rule.h"

namespace {

using rows::prefixOf;
using rows::schemeOf;

TEST(CallingBack, goesTheWayTheCallCame) {
    EXPECT_STREQ(prefixOf(schemeOf(true, true, true)), "facetime://");
    EXPECT_STREQ(prefixOf(schemeOf(true, false, true)), "facetime-audio://");
    EXPECT_STREQ(prefixOf(schemeOf(false, false, true)), "tel://");
}

TEST(CallingBack, isByTelephoneWhileFaceTimeIsSwitchedOff) {
    for (bool isVideo : {false, true}) EXPECT_STREQ(prefixOf(schemeOf(true, isVideo, false)), "tel://");
}

TEST(CallingBack, ofACallThatIsNoFaceTimeCallIsByTelephoneWhateverElseItSays) {
    for (bool isVideo : {false, true})
        for (bool isEnabled : {false, true}) EXPECT_STREQ(prefixOf(schemeOf(false, isVideo, isEnabled)), "tel://");
}

RC_GTEST_PROP(CallingBack, isByFaceTimeForFaceTimeCallsWhileItIsOnAlone,
              (bool isFaceTime, bool isVideo, bool isEnabled)) {
    const std::string prefix = prefixOf(schemeOf(isFaceTime, isVideo, isEnabled));
    RC_ASSERT(prefix.starts_with("facetime") == (isFaceTime && isEnabled));
    RC_ASSERT((prefix == "facetime://") == (isFaceTime && isEnabled && isVideo));
    RC_ASSERT(prefix.ends_with("://"));
}

}  // namespace
