// One run of `import`: the calls of some files as one change of the log, or what that change would be.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "desktop/quorvel/store/import_session.h"
#include "tools/import/importer.h"

namespace tools {

class ImportRun {
  public:
    struct Options {
        ImportOptions format;
        bool skipsBad = false;
        bool isDry = false;
    };

    ImportRun(quorvel::store::ImportSession session, Options options)
        : session_(std::move(session)), options_(std::move(options)) {}

    /// Reads the file to its end. False where it ends the run; it has said why.
    bool take(const std::string& file);
    /// Puts it all on disk and says how much it is, or only says it; answers the status.
    int finish();
    /// Whether there is anything that an open Phone has to be told of.
    bool hasChanged() const { return hasChanged_; }

  private:
    /// Of one file, or of all.
    struct Count {
        std::int64_t found = 0;  ///< Calls that make sense.
        std::int64_t present = 0;
        std::int64_t wrong = 0;
    };

    bool read(const std::string& file, Importer& importer, Count& count);
    std::optional<Complaint> add(const Importer& importer, const quorvel::store::NewCall& call, Count& count);
    /// Says what is wrong; whether the run goes on behind it.
    bool passesOver(const std::string& file, const Complaint& complaint);
    bool refuse(const std::string& sentence);

    quorvel::store::ImportSession session_;
    Options options_;
    Count total_;
    bool hasRefused_ = false;
    bool hasChanged_ = false;
};

}  // namespace tools
