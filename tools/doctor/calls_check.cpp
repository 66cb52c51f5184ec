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
        Sentences findings = examineLog();
        for (const auto& file : quorvel::store::logsSetAside(log_)) {
            findings.push_back("The log " + file.string() +
                               " was damaged and set aside; what can be read of it is not in the present log.");
        }
        return findings;
    }

    Sentences mend() override {
        Sentences said;
        if (!examineLog().empty()) {
            const auto done = quorvel::store::mend(log_);
            if (!done) return {done.error().message};
            sayMended(*done, said);
            for (const auto& removed : quorvel::store::removeOldFormerLogs(log_, done->copy))
                said.push_back("The older " + removed.string() + " was removed.");
        }
        for (const auto& file : quorvel::store::logsSetAside(log_)) {
            const auto done = quorvel::store::bringBack(file, log_);
            if (done)
                sayBroughtBack(file, *done, said);
            else
                said.push_back(done.error().message);
        }
        return said;
    }

    const char* announcement() const override { return databaseRestored.data(); }

  private:
    Sentences examineLog() const {
        std::error_code ignored;
        if (!std::filesystem::exists(log_, ignored)) return {};
        quorvel::store::OpenOptions options;
        options.access = Access::readOnly;
        const auto store = CallStore::open(log_, options);
        if (!store) {
            // A log that nobody has written to yet: a program that opens it makes it one.
            const bool isEmpty = std::filesystem::file_size(log_, ignored) == 0 && !ignored;
            if (isEmpty && store.error().kind == quorvel::store::ErrorKind::foreign) return {};
            return {store.error().message};
        }
        const auto findings = store->verify();
        return findings ? *findings : Sentences{findings.error().message};
    }

    static void sayMended(const quorvel::store::Mended& mended, Sentences& said) {
        said.push_back("The log as it was is kept as " + mended.copy.string() + '.');
        const std::string lost = mended.unreadable > 0 ? "; " + std::to_string(mended.unreadable) : "";
        if (mended.wasReplaced) {
            said.push_back(std::to_string(mended.calls) + " calls could be read and stand in a new log" +
                           (lost.empty() ? "" : lost + " are lost") + ". Start a Phone that is open anew.");
        } else {
            said.push_back("Its indices and sums were made anew from " + std::to_string(mended.calls) + " calls" +
                           (lost.empty() ? "" : lost + " that cannot be stand in the copy alone") + '.');
        }
    }

    static void sayBroughtBack(const std::filesystem::path& file, const quorvel::store::BroughtBack& brought,
                               Sentences& said) {
        std::string sentence = std::to_string(brought.calls) + " calls of " + file.string() + " were brought back";
        if (brought.present > 0) sentence += "; " + std::to_string(brought.present) + " were in the log already";
        if (brought.unreadable > 0) sentence += "; " + std::to_string(brought.unreadable) + " are lost";
        said.push_back(sentence + ". The file is kept as " + brought.copy.string() + '.');
    }

    std::filesystem::path log_;
};

}  // namespace

std::unique_ptr<Organ> callsOrgan(const quorvel::DataDirectory& directory) {
    return std::make_unique<Calls>(directory.calls());
}

}  // namespace tools
