// The report itself, in processes that end with it.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <stdexcept>
#include <thread>

#include "desktop/uncaught/uncaught_exceptions.h"
#include "platform/foundation.h"

namespace {

void raise() {
    const objc::AutoreleasePool pool;
    const auto exception = objc::sendClass<"NSException", "exceptionWithName:reason:userInfo:", objc::Object>(
        text<"NSRangeException">(), text<"index 7 beyond 3">(), objc::Object{});
    objc::send<"raise">(exception);
}

void fail() { throw std::out_of_range("row 51"); }
void failOddly() { throw 7; }

/// As the queues run their work: nothing may leave.
void carryOut(void (*work)()) noexcept { work(); }

class TheReport : public testing::Test {
  protected:
    void SetUp() override { GTEST_FLAG_SET(death_test_style, "threadsafe"); }
    static void prepare() { uncaught::reportExceptions("sample", STDERR_FILENO); }
};
using TheReportDeathTest = TheReport;

TEST_F(TheReportDeathTest, namesTheProgramTheThreadAndAnExceptionOfCxx) {
    EXPECT_EXIT((prepare(), carryOut(fail)), testing::KilledBySignal(SIGABRT),
                "sample: ended by an exception that nothing catches, on the main thread:\n"
                "std::out_of_range: row 51\n(.*\n)+.*uncaught_tests");
}

TEST_F(TheReportDeathTest, namesAnExceptionThatIsNoneOfTheStandards) {
    EXPECT_EXIT((prepare(), carryOut(failOddly)), testing::KilledBySignal(SIGABRT), "main thread:\nint\n");
}

TEST_F(TheReportDeathTest, namesAnExceptionOfTheObjectRuntime) {
    EXPECT_EXIT((prepare(), std::thread(raise).join()), testing::KilledBySignal(SIGABRT),
                "on thread .*:\nNSRangeException: index 7 beyond 3\n");
}

TEST_F(TheReportDeathTest, namesAnExceptionOfTheObjectRuntimeWhereNothingMayLeave) {
    EXPECT_EXIT((prepare(), carryOut(raise)), testing::KilledBySignal(SIGABRT),
                "was\nNSRangeException: index 7 beyond 3\n");
}

TEST_F(TheReportDeathTest, saysWhenThereIsNoException) {
    EXPECT_EXIT((prepare(), std::terminate()), testing::KilledBySignal(SIGABRT),
                "std::terminate\\(\\) was called, without an exception");
}

TEST_F(TheReportDeathTest, goesToTheCallersDescriptorAndToStandardErrorOnceEach) {
    const auto end = [] {
        const int caller = dup(STDERR_FILENO);
        uncaught::reportExceptions("sample", caller);
        carryOut(fail);
    };
    EXPECT_EXIT(end(), testing::KilledBySignal(SIGABRT), "^[^\n]*sample: [^$]*");
    const auto endWithAnotherLog = [] {
        uncaught::reportExceptions("sample", STDERR_FILENO);
        const int own = dup(STDERR_FILENO);
        uncaught::reportExceptions("caller", own);
        close(STDERR_FILENO);
        open("/dev/null", O_WRONLY);
        carryOut(fail);
    };
    EXPECT_EXIT(endWithAnotherLog(), testing::KilledBySignal(SIGABRT), "caller: ended by");
}

TEST(StandardDescriptors, thatTheCallerClosedAreOpened) {
    const auto check = [] {
        close(STDIN_FILENO);
        uncaught::openStandardDescriptors();
        std::_Exit(open("/dev/null", O_RDONLY) > STDERR_FILENO ? 0 : 1);
    };
    EXPECT_EXIT(check(), testing::ExitedWithCode(0), "");
}

}  // namespace
