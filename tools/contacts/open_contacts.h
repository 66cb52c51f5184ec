// The contacts of the data directory, opened as the Phone does.
#pragma once

#include "tools/quorvelctl/session.h"

namespace tools {

/// With the user's region and language, and heard by whoever has them open. Answers a status; it has said what is
/// wrong.
int openContacts(Session& session);

}  // namespace tools
