// Calls from the JSON that this program exports.
#pragma once

#include <optional>

#include "tools/import/importer.h"
#include "tools/import/input_file.h"
#include "tools/json/json_reader.h"

namespace tools {

/// The format of tools/calls/json_fields.h.
class JsonImporter : public Importer {
  public:
    explicit JsonImporter(InputFile file)
        : file_(std::move(file)), reader_([this](std::span<char> space) { return file_.read(space); }) {}

    Item next() override;
    std::string place() const override { return place_; }
    double progress() const override { return file_.progress(); }
    std::string format() const override { return "calls exported by this program"; }

  private:
    /// Reads to the first call. Empty where there it is.
    std::optional<Complaint> begin();
    /// Reads what follows the last call.
    Item finish();
    Complaint complaint(std::string what, Complaint::Reach reach) const;
    Item broken();
    Item readCall();
    /// Reads a member's value; the sentence where it makes no sense.
    std::string readField(const std::string& name, quorvel::store::NewCall& call);
    std::string readText(const std::string& name, std::string& text);
    std::string readNumber(const std::string& name, std::int64_t least, std::int64_t greatest, std::int64_t& number);

    InputFile file_;
    JsonReader reader_;
    std::string place_ = "1:1";
    bool hasBegun_ = false;
    bool hasCall_ = false;
    bool hasEnded_ = false;
};

}  // namespace tools
