// Files are read one after the other into one session; a dry run abandons it.
#include "tools/quorvelctl/import_run.h"

#include <cstdio>
#include <memory>

#include "desktop/addressbook/labels.h"
#include "tools/quorvelctl/progress_bar.h"
#include "tools/quorvelctl/session.h"

namespace tools {
namespace {

using quorvel::store::ErrorKind;
using quorvel::store::NewCall;

long long printed(std::int64_t number) { return static_cast<long long>(number); }

}  // namespace

bool ImportRun::refuse(const std::string& sentence) {
    hasRefused_ = true;
    complain(options_.isDry ? sentence : sentence + " Nothing was imported.");
    return options_.isDry;
}

bool ImportRun::take(const std::string& file) {
    auto opened = openImporter(file, options_.format);
    if (const auto* trouble = std::get_if<std::string>(&opened)) return refuse(*trouble);
    auto& importer = *std::get<std::unique_ptr<Importer>>(opened);
    if (const auto begun = session_.beginSource(); !begun) return refuse(begun.error().message);
    Count count;
    const bool goesOn = read(file, importer, count);
    total_.found += count.found;
    total_.present += count.present;
    total_.wrong += count.wrong;
    if (options_.isDry)
        std::printf("%s: %s: %lld calls found, %lld of them present already, %lld wrong.\n", file.c_str(),
                    importer.format().c_str(), printed(count.found), printed(count.present), printed(count.wrong));
    return goesOn;
}

bool ImportRun::read(const std::string& file, Importer& importer, Count& count) {
    ProgressBar bar("Importing " + file);
    for (;;) {
        auto item = importer.next();
        if (std::holds_alternative<Importer::End>(item)) return true;
        bar.show(importer.progress());
        std::optional<Complaint> complaint;
        if (auto* wrong = std::get_if<Complaint>(&item)) {
            complaint = std::move(*wrong);
        } else {
            auto& call = std::get<NewCall>(item);
            call.label = contacts::label::inLog(call.label);
            complaint = add(importer, call, count);
        }
        if (!complaint) continue;
        ++count.wrong;
        bar.wipe();
        if (!passesOver(file, *complaint)) return false;
        if (complaint->reach == Complaint::Reach::File) return true;
    }
}

std::optional<Complaint> ImportRun::add(const Importer& importer, const NewCall& call, Count& count) {
    const auto complaintOf = [&](const quorvel::store::Error& error) {
        const bool isOfTheCall = error.kind == ErrorKind::badInput;
        return Complaint{importer.place(), error.message,
                         isOfTheCall ? Complaint::Reach::Call : Complaint::Reach::File};
    };
    const auto isPresent = session_.claim(call);
    if (!isPresent) return complaintOf(isPresent.error());
    if (*isPresent) {
        ++count.present;
    } else if (const auto added = session_.add(call); !added) {
        return complaintOf(added.error());
    }
    ++count.found;
    return std::nullopt;
}

bool ImportRun::passesOver(const std::string& file, const Complaint& complaint) {
    complain(file + ':' + complaint.place + ": " + complaint.what);
    const bool isOfTheFile = complaint.reach == Complaint::Reach::File;
    if (options_.isDry) {
        if (isOfTheFile || !options_.skipsBad) hasRefused_ = true;
        return true;
    }
    if (isOfTheFile)
        complain("Nothing was imported.");
    else if (!options_.skipsBad)
        complain("Nothing was imported. Mend the file, or pass over what is wrong in it with --skip-bad.");
    return options_.skipsBad && !isOfTheFile;
}

int ImportRun::finish() {
    if (options_.isDry) {
        std::printf("%lld calls would be imported. Nothing was written.\n", printed(session_.added()));
        return hasRefused_ ? failed : succeeded;
    }
    const auto written = session_.finish();
    if (!written) return complain(written.error().message);
    hasChanged_ = *written > 0;
    std::printf("%lld calls imported.\n", printed(*written));
    if (total_.present > 0) std::printf("%lld present already.\n", printed(total_.present));
    if (total_.wrong > 0) std::printf("%lld skipped.\n", printed(total_.wrong));
    return succeeded;
}

}  // namespace tools
