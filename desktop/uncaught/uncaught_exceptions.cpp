// The handlers of uncaught exceptions, and the report they write.
#include "desktop/uncaught/uncaught_exceptions.h"

#include <cxxabi.h>
#include <execinfo.h>
#include <fcntl.h>
#include <pthread.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdlib>
#include <exception>
#include <thread>

#include "objc/layer.h"

extern "C" void NSSetUncaughtExceptionHandler(void (*handler)(id exception));

namespace uncaught {
namespace {

struct Place {
    std::string program;
    int descriptor = STDERR_FILENO;
    std::thread::id mainThread = std::this_thread::get_id();
};

/// Never destroyed: threads may still fail while the process ends.
Place& place() {
    static auto* const one = new Place;
    return *one;
}

/// The exception of the object runtime that this thread raised last. C++ cannot look into it once it is thrown.
thread_local std::string lastRaised;
using Raise = void (*)(id exception, SEL name);
Raise originalRaise = nullptr;

std::string textOf(objc::Object string) {
    const char* text = string ? objc::send<"UTF8String", const char*>(string) : nullptr;
    return text ? text : "";
}

std::string describe(objc::Object exception) {
    const objc::AutoreleasePool pool;
    if (!objc::isKindOf(exception, objc::classNamed<"NSException">()))
        return std::string("an object of class ") + class_getName(object_getClass(exception.self));
    return textOf(objc::send<"name", objc::Object>(exception)) + ": " +
           textOf(objc::send<"reason", objc::Object>(exception));
}

void raise(id exception, SEL name) {
    lastRaised = describe(objc::Object{exception});
    originalRaise(exception, name);
}

std::string demangled(const char* name) {
    int status = 0;
    char* const text = abi::__cxa_demangle(name, nullptr, nullptr, &status);
    const std::string result = text ? text : name;
    std::free(text);
    return result;
}

/// Says what the thread has in hand. Of an exception of the object runtime that reaches C++ code which nothing may
/// leave, C++ only knows that it is none of its own.
std::string describeCurrent() {
    const auto current = std::current_exception();
    if (!current)
        return "std::terminate() was called, without an exception of C++" +
               (lastRaised.empty() ? "" : "; the last one raised on this thread was\n" + lastRaised);
    const std::string type = demangled(abi::__cxa_current_exception_type()->name());
    try {
        std::rethrow_exception(current);
    } catch (const std::exception& exception) {
        return type + ": " + exception.what();
    } catch (...) {
        return type;
    }
}

std::string threadName() {
    if (std::this_thread::get_id() == place().mainThread) return "the main thread";
    char name[16] = "";
    pthread_getname_np(pthread_self(), name, sizeof name);
    return std::string("thread ") + name;
}

void writeReport(int descriptor, const std::string& what) {
    dprintf(descriptor,
            "%s: ended by an exception that nothing catches, on %s:\n%s\n"
            "This is a fault of the program. Report it with these lines; what was saved before is kept.\n",
            place().program.c_str(), threadName().c_str(), what.c_str());
    constexpr int deepest = 64;
    void* frames[deepest];
    backtrace_symbols_fd(frames, backtrace(frames, deepest), descriptor);
}

bool isSameFile(int one, int other) {
    struct stat first {};
    struct stat second {};
    return fstat(one, &first) == 0 && fstat(other, &second) == 0 && first.st_dev == second.st_dev &&
           first.st_ino == second.st_ino;
}

[[noreturn]] void end(const std::string& what) {
    // A fault of the report itself ends the process at once.
    std::set_terminate(std::abort);
    writeReport(place().descriptor, what);
    if (!isSameFile(place().descriptor, STDERR_FILENO)) writeReport(STDERR_FILENO, what);
    std::abort();
}

[[noreturn]] void endByTerminate() { end(describeCurrent()); }
void endByException(id exception) { end(describe(objc::Object{exception})); }

}  // namespace

void reportExceptions(const std::string& program, int descriptor) {
    place().program = program;
    place().descriptor = descriptor;
    // The first stack of calls loads a library, which a process that ends need not be able to.
    void* frame = nullptr;
    backtrace(&frame, 1);
    std::set_terminate(endByTerminate);
    NSSetUncaughtExceptionHandler(endByException);
    const Class cls = objc::classNamed<"NSException">();
    const Method method = class_getInstanceMethod(cls, objc::selector<"raise">());
    originalRaise = reinterpret_cast<Raise>(
        reinterpret_cast<void (*)()>(method_setImplementation(method, objc::implementation(raise))));
}

void openStandardDescriptors() {
    for (int descriptor = STDIN_FILENO; descriptor <= STDERR_FILENO; ++descriptor)
        if (fcntl(descriptor, F_GETFD) < 0) open("/dev/null", O_RDWR);
}

}  // namespace uncaught
