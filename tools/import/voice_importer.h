// A call of Google Voice, from the HTML that it exports: a file a call.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <set>

#include "tools/import/queued_importer.h"
#include "tools/import/raw_call.h"

struct _xmlParserCtxt;

namespace tools {

/// The hCard of a call: its number, name, moment, length and labels. A file of messages holds no call.
class VoiceImporter : public QueuedImporter {
  public:
    explicit VoiceImporter(InputFile file);
    std::string format() const override { return "a page of Google Voice"; }

  private:
    struct Free {
        void operator()(_xmlParserCtxt* parser) const;
    };
    /// Text that is being collected.
    enum class Within { Nothing, Name, Transcript, Deleted };

    /// The parser has come behind what it was given last.
    void moveOn();
    void take(std::string_view piece) override;
    void takeEnd() override;
    void beginElement(std::string_view name, const unsigned char** attributes);
    void endElement();
    void collect(Within within);
    void takeText(std::string_view text);
    CallOrWrong call();

    std::unique_ptr<_xmlParserCtxt, Free> parser_;
    std::string tail_;        ///< The last bytes of the file so far.
    std::uint64_t open_ = 0;  ///< Bytes that the parser has taken and not yet shown anything of.
    std::uint64_t work_ = 0;  ///< The sum of the squares of what was open for long.
    bool isOfCall_ = false;
    bool isOfMessages_ = false;
    int depth_ = 0;
    int numberAt_ = 0;     ///< The depth of the element that holds the number; 0 outside of it.
    int collectedAt_ = 0;  ///< The depth of the element whose text is collected; 0 outside of it.
    Within within_ = Within::Nothing;
    std::string number_, name_, transcript_, deleted_;
    std::string published_, duration_, recording_;
    std::set<std::string, std::less<>> labels_;
};

}  // namespace tools
