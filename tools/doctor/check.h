// What the doctor looks at: each organ of a data directory with how it is examined and how it is mended.
#pragma once

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "desktop/quorvel/directory/data_directory.h"

namespace tools {

/// Sentences for the person who asked.
using Sentences = std::vector<std::string>;

/// One thing that can be well or ill. Examining changes nothing.
class Organ {
  public:
    virtual ~Organ() = default;
    virtual const char* name() const = 0;
    /// What is wrong; nothing where all is well.
    virtual Sentences examine() = 0;
    /// Mends what was found, and keeps a copy of what it changes. Answers what was done and where the copy is; what
    /// could not be mended shows in the next examination.
    virtual Sentences mend() = 0;
    /// What a Phone that is open is told after a change; null for nothing.
    virtual const char* announcement() const { return nullptr; }
};

std::unique_ptr<Organ> callsOrgan(const quorvel::DataDirectory& directory);
std::unique_ptr<Organ> contactsOrgan(const quorvel::DataDirectory& directory);
std::unique_ptr<Organ> settingsOrgan(const quorvel::DataDirectory& directory);
/// `folder` holds the string tables, a folder LANGUAGE.lproj each.
std::unique_ptr<Organ> textsOrgan(const std::filesystem::path& folder);

}  // namespace tools
