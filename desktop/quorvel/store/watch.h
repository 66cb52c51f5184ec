// Notices changes that other connections have made, and tells those of a store from those of a stranger.
#pragma once

#include "desktop/quorvel/store/database.h"

namespace quorvel::store {

struct Watch {
    std::int64_t dataVersion = -1;
    std::int64_t revision = -1;
    std::int64_t partyRevision = -1;
    bool wasStranger = false;

    /// What a look now shows. Expects a transaction on the connection. Every store counts the revision up, so a change
    /// without a new revision is a stranger's, and the sums are not to be relied on.
    Watch look(Connection& connection) const {
        Watch now = *this;
        now.wasStranger = false;
        now.dataVersion = connection.integerOf("pragma data_version");
        if (now.dataVersion == dataVersion) return now;
        Statement& state = connection.statement(
            "select revision, party_revision, last_row, (select seq from sqlite_sequence where name = 'call') from "
            "state "
            "where one = 1");
        const ResetLater later(state);
        if (!state.step()) return now;
        now.revision = state.integer(0);
        now.partyRevision = state.integer(1);
        now.wasStranger = state.integer(2) != state.integer(3) || (dataVersion != -1 && now.revision == revision);
        return now;
    }
};

}  // namespace quorvel::store
