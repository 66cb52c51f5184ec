// The tables and indices of the call log, their version, and the recognition of a file that is none.
#pragma once

#include <chrono>
#include <string>
#include <vector>

#include "desktop/quorvel/store/database.h"

namespace quorvel::store {

constexpr int schemaVersion = 4;
/// Files of an earlier version have no table `deleted`; they get it when they are opened for writing.
constexpr int versionThatKeepsAside = 2;
/// Files of an earlier version have no column `extra` in `call` and `deleted`; they get it in the same way.
constexpr int versionWithExtra = 3;

/// A table, an index or a trigger with its definition.
struct SchemaPart {
    std::string type, name, table, text;
    friend bool operator==(const SchemaPart&, const SchemaPart&) = default;
};

/// The indices and triggers on the log's tables that are not its own.
std::vector<SchemaPart> foreignParts(Connection& connection);

/// Throws foreign where the file exists and does not begin as a database does, damaged where its beginning is one of a
/// log with wrong bytes in it. A missing file passes, and an empty one that nothing was written for.
void checkHeader(const std::filesystem::path& path);

/// Makes the tables in an empty file, and what an earlier version lacks, each in one transaction; throws foreign, newer
/// or damaged where the file is not a log of this version or an earlier one. Where the connection cannot write, an
/// empty file is foreign too.
void prepareSchema(Connection& connection, std::chrono::milliseconds busyBound);

/// Settings that each connection needs for itself.
void configure(Connection& connection, Connection::Use use);

}  // namespace quorvel::store
