// A log's file as the fuzzer changes it, past the store.
#pragma once

#include <filesystem>
#include <string>

#include "steps.h"

namespace quorvel::store::fuzz {

/// Makes a file of small pages that a store takes for a new log.
void makeEmpty(const std::filesystem::path& log);

/// Changes a cell, a row, the schema or a setting with SQLite, as far as SQLite lets it.
void changeRows(const std::filesystem::path& log, const Step& step);

/// Changes the file's bytes. No store has it open.
void changeBytes(const std::filesystem::path& log, const Step& step);

}  // namespace quorvel::store::fuzz
