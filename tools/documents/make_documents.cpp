// make_documents WRITTEN SHARE VERSION DATE: writes manual pages and completions of the programs below the folder
// SHARE. The parts of the pages that people write are in the folder WRITTEN.
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>

#include "desktop/phone/options.h"
#include "tools/documents/completions.h"
#include "tools/documents/manual_page.h"
#include "tools/quorvelctl/program.h"

namespace {

namespace fs = std::filesystem;

bool write(const fs::path& file, const std::string& text) {
    std::error_code ignored;
    fs::create_directories(file.parent_path(), ignored);
    std::ofstream stream(file, std::ios::binary);
    stream << text;
    if (stream.flush()) return true;
    std::fprintf(stderr, "%s cannot be written.\n", file.c_str());
    return false;
}

bool document(CLI::App& app, const fs::path& written, const fs::path& share, const std::string& version,
              const std::string& date) {
    const auto program = tools::modelOf(app);
    const auto file = written / (program.name + ".roff");
    std::ifstream stream(file, std::ios::binary);
    if (!stream) {
        std::fprintf(stderr, "%s cannot be read.\n", file.c_str());
        return false;
    }
    const std::string page{std::istreambuf_iterator<char>(stream), {}};
    return write(share / "man/man1" / (program.name + ".1"), tools::manualPage(program, page, version, date)) &&
           write(share / "bash-completion/completions" / program.name, tools::bashCompletion(program)) &&
           write(share / "zsh/vendor-completions" / ("_" + program.name), tools::zshCompletion(program)) &&
           write(share / "fish/vendor_completions.d" / (program.name + ".fish"), tools::fishCompletion(program));
}

}  // namespace

int main(int argumentCount, char** arguments) {
    if (argumentCount != 5) return 2;
    CLI::App control, telephone;
    tools::Session session;
    phone::Options options;
    tools::describeProgram(control, session);
    phone::describeProgram(telephone, options);
    for (auto* app : {&control, &telephone})
        if (!document(*app, arguments[1], arguments[2], arguments[3], arguments[4])) return 1;
    return 0;
}
