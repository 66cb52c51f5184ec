// Logs of a size, made once, for the benchmarks of the store.
#pragma once

#include <cstdint>
#include <filesystem>
#include <stdexcept>
#include <vector>

#include "desktop/quorvel/store/call_store.h"

namespace quorvel::store {

template <class Value>
Value valueOf(Result<Value> result) {
    if (!result) throw std::runtime_error(result.error().message);
    return std::move(*result);
}

/// People called with skew, a call every six minutes or so, a few at the same second.
std::vector<NewCall> makeCalls(std::int64_t count);

/// A folder that goes with its owner.
class Folder {
  public:
    Folder() {
        std::string name = (std::filesystem::temp_directory_path() / "store-benchmark-XXXXXX").string();
        if (!mkdtemp(name.data())) throw std::runtime_error("no folder for the benchmark");
        path_ = name;
    }
    ~Folder() {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }
    Folder(const Folder&) = delete;
    Folder& operator=(const Folder&) = delete;
    std::filesystem::path file(const std::string& name) const { return path_ / name; }

  private:
    std::filesystem::path path_;
};

/// One log of each size, made once for all benchmarks of the process.
CallStore& storeOf(std::int64_t count);

}  // namespace quorvel::store
