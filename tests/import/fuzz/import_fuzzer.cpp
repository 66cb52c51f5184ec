// The importers on arbitrary bytes, each chosen as the program chooses it: reading ends, stays within its bounds,
// leaves the file as it was, and gives calls whose fields make sense.
#include <unistd.h>

#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

#include "tools/import/importer.h"
#include "tools/json/json_reader.h"

namespace {

void expect(bool holds) {
    if (!holds) std::abort();
}

/// The file that every run writes anew, gone with the process.
class Scratch {
  public:
    Scratch() {
        std::string pattern = (std::filesystem::temp_directory_path() / "import_fuzzer-XXXXXX").string();
        expect(mkdtemp(pattern.data()) != nullptr);
        folder_ = pattern;
    }
    ~Scratch() { std::filesystem::remove_all(folder_); }
    Scratch(const Scratch&) = delete;
    Scratch& operator=(const Scratch&) = delete;

    std::filesystem::path file() const { return folder_ / "calls"; }
    void write(const std::string& bytes) const { std::ofstream(file(), std::ios::binary) << bytes; }
    std::string content() const {
        std::ifstream stream(file(), std::ios::binary);
        return {std::istreambuf_iterator<char>(stream), {}};
    }

  private:
    std::filesystem::path folder_;
};

bool isJson(const std::string& text) {
    std::size_t at = 0;
    tools::JsonReader reader([&](std::span<char> space) {
        const std::size_t count = text.copy(space.data(), space.size(), at);
        at += count;
        return count;
    });
    return reader.pass() && reader.next() == '\0';
}

/// Whether what stands beside the calls is put together by the importer rather than taken as it is.
bool makesExtra(const std::string& format) {
    return format.starts_with("a handset") || format.starts_with("an Android") || format.starts_with("a backup") ||
           format.starts_with("a page");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const Scratch scratch;
    const std::string bytes(reinterpret_cast<const char*>(data), size);
    scratch.write(bytes);
    auto opened = tools::openImporter(scratch.file());
    if (auto* importer = std::get_if<std::unique_ptr<tools::Importer>>(&opened)) {
        const bool checksExtra = makesExtra((*importer)->format());
        for (std::size_t items = 0;; ++items) {
            // A call takes a byte at least.
            expect(items <= size + 2);
            const auto item = (*importer)->next();
            if (std::holds_alternative<tools::Importer::End>(item)) break;
            expect(!(*importer)->place().empty());
            expect((*importer)->progress() >= 0 && (*importer)->progress() <= 1);
            if (const auto* complaint = std::get_if<tools::Complaint>(&item)) expect(!complaint->what.empty());
            const auto* call = std::get_if<quorvel::store::NewCall>(&item);
            if (call == nullptr) continue;
            expect(call->date >= 0 && call->date <= INT32_MAX);
            expect(call->duration >= 0);
            expect(!checksExtra || isJson(call->extra));
        }
    } else {
        expect(!std::get<std::string>(opened).empty());
    }
    expect(scratch.content() == bytes);
    return 0;
}
