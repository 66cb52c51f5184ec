// The log of calls: its file, its indices and sums.
#include "desktop/quorvel/store/call_store.h"
#include "desktop/quorvel/store/log_files.h"
#include "desktop/quorvel/store/mend.h"
#include "tools/doctor/check.h"
#include "tools/quorvelctl/session.h"

namespace tools {
namespace {

using quorvel::store::Access;
using quorvel::store::CallStore;

class Calls : public Organ {
  public:
    explicit Calls(std::filesystem::path log) : log_(std::move(log)) {}
    const char* name() const override { return "calls"; }

    Sentences examine() override {
        std::error_code ignored;
        if (!std::filesystem::exists(log_, ignored)) return {};
        quorvel::store::OpenOptions options;
        options.access = Access::readOnly;
        const auto store = CallStore::open(log_, options);
        if (!store) return {store.error().message};
        const auto findings = store->verify();
        return findings ? *findings : Sentences{findings.error().message};
    }

    Sentences mend() override {
        const auto done = quorvel::store::mend(log_);
        if (!done) return {done.error().message};
        const auto& mended = *done;
        Sentences said{"The log as it was is kept as " + mended.copy.string() + '.'};
        for (const auto& removed : quorvel::store::removeOldFormerLogs(log_, mended.copy))
            said.push_back("The older " + removed.string() + " was removed.");
        if (!mended.wasReplaced) {
            said.push_back("Its indices and sums were made anew from " + std::to_string(mended.calls) + " calls.");
            return said;
        }
        said.push_back(std::to_string(mended.calls) + " calls could be read and stand in a new log" +
                       (mended.unreadable > 0 ? "; " + std::to_string(mended.unreadable) + " are lost" : "") +
                       ". Start a Phone that is open anew.");
        return said;
    }

    const char* announcement() const override { return databaseRestored.data(); }

  private:
    std::filesystem::path log_;
};

}  // namespace

std::unique_ptr<Organ> callsOrgan(const quorvel::DataDirectory& directory) {
    return std::make_unique<Calls>(directory.calls());
}

}  // namespace tools
