// The library's two load-time initialisers. They stand in one file because their order is the order of this file.
#include "plugin/host/startup.h"
#include "plugin/installation_table.h"

namespace {

[[gnu::constructor]] void startInTelephoneApplication() { host::start(); }

[[gnu::constructor]] void installIntoHostClasses() { installMethods(); }

}  // namespace
