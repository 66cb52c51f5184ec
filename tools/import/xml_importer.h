// Calls from the XML that "SMS Backup & Restore" writes on Android phones.
#pragma once

#include <cstdint>
#include <memory>

#include "tools/import/queued_importer.h"
#include "tools/import/reference_mender.h"

struct XML_ParserStruct;

namespace tools {

/// The elements `call` of a root `calls`. The number of calls that the root states is not believed, nor is the date in
/// the phone's language.
class XmlImporter : public QueuedImporter {
  public:
    explicit XmlImporter(InputFile file);
    std::string format() const override { return "a backup of an Android phone's calls"; }

  private:
    struct Free {
        void operator()(XML_ParserStruct* parser) const;
    };

    void take(std::string_view piece) override;
    void takeEnd() override;
    bool passOver() override;
    void prepare();
    void parse(std::string_view text, bool isLast);
    void takeElement(std::string_view name, const char** attributes);
    std::string line() const;

    std::unique_ptr<XML_ParserStruct, Free> parser_;
    ReferenceMender mender_;
    std::string encoding_;  ///< As the file declares it.
    int depth_ = 0;
    bool isOfCalls_ = false;
    bool isPassing_ = false;        ///< Everything up to the next call.
    std::string passed_;            ///< The last bytes of that.
    std::int64_t lines_ = 0;        ///< Of the pieces so far.
    std::int64_t linesBefore_ = 0;  ///< Those that the parser has not seen.
};

}  // namespace tools
