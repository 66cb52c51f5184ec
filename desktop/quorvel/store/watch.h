// Notices changes that other connections have made, and whether one of them was a stranger's.
#pragma once

#include "desktop/quorvel/store/database.h"

namespace quorvel::store {

struct Watch {
    std::int64_t dataVersion = -1;
    std::int64_t partyRevision = -1;
    bool wasStranger = false;

    /// What a look now shows. Expects a transaction on the connection. Where a stranger changed the calls, the sums are
    /// not to be relied on.
    Watch look(Connection& connection) const {
        Watch now = *this;
        now.wasStranger = false;
        now.dataVersion = connection.integerOf("pragma data_version");
        if (now.dataVersion == dataVersion) return now;
        Statement& state = connection.statement("select party_revision, touched from state where one = 1");
        const ResetLater later(state);
        if (!state.step()) return now;
        now.partyRevision = state.integer(0);
        now.wasStranger = state.integer(1) != 0;
        return now;
    }
};

}  // namespace quorvel::store
