// Placing a call again.
#pragma once

#include "plugin/companion/entry.h"

namespace rows {

/// Opens the address that calls the entry's number back; does nothing without an entry or its number. Main thread.
void callBack(QVCallEntry entry);

}  // namespace rows
