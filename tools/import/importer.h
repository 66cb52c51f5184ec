// A source of calls: a file of one format, read call by call.
#pragma once

#include <filesystem>
#include <map>
#include <memory>
#include <string>
#include <variant>

#include "desktop/quorvel/store/call.h"

namespace tools {

/// What is wrong with one call of a file, or with the file.
struct Complaint {
    enum class Reach {
        Call,  ///< What follows may be read without it.
        File,  ///< Nothing of the file is to be trusted; reading has ended.
    };
    std::string place;  ///< As it follows the file's name: "12:5", "row 17".
    std::string what;   ///< One sentence or two: what is wrong, and what to do.
    Reach reach = Reach::Call;
};

/// Reads its source and never writes to it, nor to its folder; holds no more than a few calls of it at a time.
class Importer {
  public:
    virtual ~Importer() = default;
    struct End {};
    using Item = std::variant<quorvel::store::NewCall, Complaint, End>;
    /// The next call, what is wrong with the next one, or the end. After a complaint of one call reading goes on
    /// behind it.
    virtual Item next() = 0;
    /// Where the call that `next` answered last begins, as it follows the file's name.
    virtual std::string place() const = 0;
    /// How much of the source was read, from 0 to 1.
    virtual double progress() const = 0;
    /// What the source is, as in "a backup of an Android phone's calls".
    virtual std::string format() const = 0;
};

/// What the user says of comma-separated values whose header does not say enough.
struct ImportOptions {
    /// The fields that columns hold, by the columns' names.
    std::map<std::string, std::string> columns;
    /// Whether 1/2/2024 is in January.
    bool monthFirst = false;
};

/// An importer for the file, chosen by its content, or a sentence that says why it cannot be read.
std::variant<std::unique_ptr<Importer>, std::string> openImporter(const std::filesystem::path& file,
                                                                  const ImportOptions& options = {});

}  // namespace tools
