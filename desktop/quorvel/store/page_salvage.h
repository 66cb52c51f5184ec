// The rows of a damaged log, read page by page: neither its header nor its trees are needed.
#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

#include "desktop/quorvel/store/call.h"
#include "desktop/quorvel/store/database.h"

namespace quorvel::store {

/// Works on a copy of the log, which is only read. One thread.
class PageSalvage {
  public:
    /// Copies the log, with what SQLite keeps beside it, to the file `copy`, which goes with the object. Throws Failure
    /// where that fails.
    PageSalvage(const std::filesystem::path& log, std::filesystem::path copy);
    ~PageSalvage();
    PageSalvage(const PageSalvage&) = delete;
    PageSalvage& operator=(const PageSalvage&) = delete;

    using See = std::function<void(const NewCall&)>;
    /// Shows every call that can be read, once, and in the order in which the calls were written.
    void eachCall(const See& see) { each(Kind::call, see); }
    /// The same for calls that were deleted and are kept aside.
    void eachDeleted(const See& see) { each(Kind::deleted, see); }
    /// How many calls the log itself says there are, where that can be read.
    std::optional<std::int64_t> expected() const { return expected_; }
    /// Calls that were met and break the rules.
    std::int64_t impossible() const { return impossible_; }

  private:
    enum class Kind { call, deleted };
    struct Page {
        std::int64_t number = 0, firstRow = 0;
    };

    void readHeader();
    void takeWriteAheadLogIn();
    void replaceFirstPage();
    void sortPages();
    void note(const Statement& row, Page page);
    void each(Kind kind, const See& see);
    /// Shows the rows of a page up to where it is damaged.
    void eachRow(std::int64_t page, const std::function<void(const Statement&)>& see);

    std::filesystem::path copy_;
    std::size_t pageSize_ = 4096;
    std::int64_t pageCount_ = 0;
    std::unique_ptr<Connection> connection_;
    std::vector<Page> calls_, deleted_;
    std::unordered_map<std::string, std::pair<std::string, std::string>> names_;  // by contact and address
    std::optional<std::int64_t> expected_;
    std::int64_t impossible_ = 0;
};

}  // namespace quorvel::store
