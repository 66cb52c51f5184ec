// killed_writer LOG OPERATION [opening]: takes the steps on the log and says each on standard output with one byte. Its
// disk kills it before that operation, counted from when the log is open or, with "opening", from before; 0 for none.
#include <unistd.h>

#include <cstdlib>

#include "failing_disk.h"
#include "killed_steps.h"

int main(int count, char** arguments) {
    using namespace quorvel::store;
    if (count < 3 || count > 4) return 2;
    OpenOptions options = killedOptions();
    options.fileSystem = FailingDisk::name();
    if (count == 4) FailingDisk::failFrom(std::atoi(arguments[2]), Fault::death);
    auto store = CallStore::open(arguments[1], options);
    if (!store) return 3;
    const char byte = '.';
    // The first byte says that the log is open.
    if (write(STDOUT_FILENO, &byte, 1) != 1) return 4;
    if (count == 4) return 0;
    FailingDisk::failFrom(std::atoi(arguments[2]), Fault::death);
    for (std::size_t step = 0; step < killedSteps; ++step) {
        if (!takeStep(*store, step)) return 5;
        if (write(STDOUT_FILENO, &byte, 1) != 1) return 4;
    }
    return 0;
}
