// The formats: values between commas, JSON, and a log.
#include "tools/export/call_writers.h"

#include <ctime>

#include "desktop/quorvel/store/import_session.h"
#include "desktop/quorvel/store/page_copy.h"
#include "tools/calls/json_fields.h"
#include "tools/calls/selection.h"
#include "tools/csv/csv_formula.h"
#include "tools/json/json_text.h"

namespace tools {
namespace {

using quorvel::store::CallRecord;
using quorvel::store::CallStore;
using quorvel::store::Connection;
using quorvel::store::guarded;
using quorvel::store::ImportSession;
using quorvel::store::NewCall;

/// "2024-06-15T14:00:00+02:00".
std::string isoTime(std::int64_t seconds) {
    const auto time = static_cast<std::time_t>(seconds);
    std::tm local{};
    localtime_r(&time, &local);
    char text[48];
    std::string iso(text, std::strftime(text, sizeof text, "%Y-%m-%dT%H:%M:%S%z", &local));
    return iso.insert(iso.size() - 2, 1, ':');
}

std::string csvText(const std::string& cell) {
    const std::string text = asCell(cell);
    if (text.find_first_of(",;\t\"\r\n") == std::string::npos) return text;
    std::string quoted = "\"";
    for (const char letter : text) quoted.append(letter == '"' ? 2 : 1, letter);
    return quoted += '"';
}

const char* faceTimeText(const CallRecord& call) {
    if (!quorvel::store::isFaceTime(call.flags)) return "";
    return quorvel::store::isFaceTimeVideo(call.flags) ? "video" : "audio";
}

class CsvWriter : public CallWriter {
  public:
    CsvWriter(const std::filesystem::path& file, files::Existing existing) : output_(file, existing) {
        output_.write(
            "date,address,kind,duration,facetime,name,label,contact,location,flags,face_time_data_size,extra\r\n");
    }
    std::optional<std::string> write(const CallRecord& call) override {
        const std::string contact =
            call.contactId == quorvel::store::noContact ? std::string() : std::to_string(call.contactId);
        std::string line = isoTime(call.date);
        for (const auto& cell : {call.address, std::string(kindText(call)), std::to_string(call.duration),
                                 std::string(faceTimeText(call)), call.name, call.label, contact, call.location,
                                 std::to_string(call.flags), std::to_string(call.faceTimeDataSize), call.extra})
            line += ',' + csvText(cell);
        output_.write(line += "\r\n");
        return std::nullopt;
    }
    std::optional<std::string> finish() override { return output_.finish(); }

  private:
    Output output_;
};

class JsonWriter : public CallWriter {
  public:
    JsonWriter(const std::filesystem::path& file, files::Existing existing) : output_(file, existing) {
        output_.write('{' + field(json::format, jsonText(json::formatOfCalls)) + ',' +
                      field(json::version, std::to_string(json::versionOfCalls)) + ",\n" + jsonText(json::calls) +
                      ":[");
    }
    std::optional<std::string> write(const CallRecord& call) override {
        std::string object = isFirst_ ? "\n{" : ",\n{";
        isFirst_ = false;
        object += field(json::time, jsonText(isoTime(call.date))) + ',' + field(json::kind, jsonText(kindText(call)));
        object += ',' + field(json::date, std::to_string(call.date)) + ',' +
                  field(json::duration, std::to_string(call.duration)) + ',' +
                  field(json::flags, std::to_string(call.flags));
        if (call.contactId != quorvel::store::noContact)
            object += ',' + field(json::contact, std::to_string(call.contactId));
        if (call.faceTimeDataSize != 0)
            object += ',' + field(json::faceTimeDataSize, std::to_string(call.faceTimeDataSize));
        const std::pair<const char*, const std::string&> texts[] = {{json::address, call.address},
                                                                    {json::name, call.name},
                                                                    {json::label, call.label},
                                                                    {json::location, call.location},
                                                                    {json::extra, call.extra}};
        for (const auto& [name, text] : texts)
            if (!text.empty()) object += ',' + field(name, jsonText(text));
        output_.write(object += '}');
        return std::nullopt;
    }
    std::optional<std::string> finish() override {
        output_.write("\n]}\n");
        return output_.finish();
    }

  private:
    static std::string field(const char* name, const std::string& value) { return jsonText(name) + ':' + value; }

    Output output_;
    bool isFirst_ = true;
};

class LogWriter : public CallWriter {
  public:
    LogWriter(std::filesystem::path file, files::Existing existing) : file_(std::move(file)), existing_(existing) {
        auto made = guarded([&] { return quorvel::store::newFileBeside(file_); });
        if (!made) {
            trouble_ = made.error().message;
            return;
        }
        made_ = *std::move(made);
        auto opened = CallStore::open(made_->path());
        if (!opened) {
            trouble_ = opened.error().message;
            return;
        }
        store_ = *std::move(opened);
        auto begun = store_->beginImport();
        if (begun)
            session_ = *std::move(begun);
        else
            trouble_ = begun.error().message;
    }
    std::optional<std::string> write(const CallRecord& call) override {
        if (trouble_) return trouble_;
        NewCall copied;
        copied.address = call.address;
        copied.date = call.date;
        copied.duration = call.duration;
        copied.flags = call.flags;
        copied.contactId = call.contactId;
        copied.name = call.name;
        copied.label = call.label;
        copied.location = call.location;
        copied.faceTimeDataSize = call.faceTimeDataSize;
        copied.extra = call.extra;
        if (const auto added = session_->add(copied); !added) trouble_ = added.error().message;
        return trouble_;
    }
    std::optional<std::string> finish() override {
        if (trouble_) return trouble_;
        const auto written = session_->finish();
        session_.reset();
        store_.reset();
        if (!written) return written.error().message;
        const auto named = guarded([&] {
            {
                Connection log(made_->path(), Connection::Use::write, {}, {});
                log.execute("pragma journal_mode = delete");
            }
            quorvel::store::publish(*made_, file_, existing_);
            return quorvel::store::Done{};
        });
        return named ? std::nullopt : std::optional(named.error().message);
    }

  private:
    std::filesystem::path file_;
    files::Existing existing_;
    std::optional<files::NewFile> made_;  // before the store, which is closed first
    std::optional<CallStore> store_;
    std::optional<ImportSession> session_;
    std::optional<std::string> trouble_;
};

}  // namespace

std::unique_ptr<CallWriter> csvWriter(const std::filesystem::path& file, files::Existing existing) {
    return std::make_unique<CsvWriter>(file, existing);
}

std::unique_ptr<CallWriter> jsonWriter(const std::filesystem::path& file, files::Existing existing) {
    return std::make_unique<JsonWriter>(file, existing);
}

std::unique_ptr<CallWriter> logWriter(const std::filesystem::path& file, files::Existing existing) {
    return std::make_unique<LogWriter>(file, existing);
}

}  // namespace tools
