// The texts of the product in the user's language, from string tables in files.
#pragma once

#include <filesystem>
#include <map>
#include <memory>
#include <mutex>
#include <set>
#include <string>
#include <vector>

#include "objc/layer.h"

namespace quorvel {

/// The table of one language: NSString or, where the wording counts, QVPluralFormat by key. Any thread may read it.
class TextTable {
  public:
    /// Reads FOLDER/LANGUAGE.lproj/Quorvel.strings and Quorvel.stringsdict. What cannot be read or makes no sense is
    /// left out, with a sentence in `trouble`; the files stay as they are. Needs an autorelease pool.
    static TextTable read(const std::filesystem::path& folder, const std::string& language,
                          std::vector<std::string>& trouble);

    /// The English table that is compiled in: complete. Needs an autorelease pool.
    static TextTable builtIn();

    /// Null where the key is not there.
    objc::Strong<> find(const std::string& key) const;
    std::vector<std::string> keys() const;
    bool isEmpty() const { return texts_.empty(); }

  private:
    void addStrings(objc::Object dictionary, const std::string& file, std::vector<std::string>& trouble);
    void addPlurals(objc::Object dictionary, const std::string& language, const std::string& file,
                    std::vector<std::string>& trouble);

    std::map<std::string, objc::Strong<>, std::less<>> texts_;
};

/// The texts of the process. Any thread.
class Texts {
  public:
    static Texts& shared();

    /// From now on texts come from the folder, in that language ("de", "de_AT"; empty for that of the process's
    /// locale), and in English where the language has no table or lacks the key; that is compiled in for where the
    /// folder has no English table either. Answers what is wrong with the tables.
    std::vector<std::string> open(const std::filesystem::path& folder, const std::string& language);

    /// The text, a format where the key's text has arguments. A key without a text is answered as it is, and said once
    /// on standard error.
    objc::Strong<> text(objc::Object key);

    /// The language of the texts, as ICU names it.
    std::string language() const;

  private:
    mutable std::mutex mutex_;
    std::string language_ = "en";
    TextTable table_;
    TextTable english_;
    TextTable builtIn_;
    std::set<std::string, std::less<>> missing_;
};

/// The language of the process's locale, "de_AT"; "en" where it has none.
std::string localeLanguage();

}  // namespace quorvel
