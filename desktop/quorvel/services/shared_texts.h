// One object for texts that come again and again: a day, and whom calls are with.
#pragma once

#include <array>
#include <memory>
#include <string>

#include "desktop/quorvel/services/call_texts.h"
#include "desktop/quorvel/store/call.h"

namespace quorvel {

/// Remembers what came lately, a bounded number of texts and of counterparts. One thread at a time.
class SharedTexts {
  public:
    /// A string object with that text.
    const objc::Strong<>& of(const std::string& text);

    /// The texts of a call; one without a place gets that of its number. What rows say of the number is worked out
    /// here, on the thread that read the record.
    const std::shared_ptr<const CounterpartTexts>& ofCall(const store::CallRecord& record);

    /// Places are found anew, as they are after another language was chosen.
    void forgetCounterparts();

  private:
    struct Text {
        std::string text;
        objc::Strong<> object;
    };
    struct Counterpart {
        bool isOf(const store::CallRecord& record) const {
            return texts && address == record.address && name == record.name && label == record.label &&
                   location == record.location;
        }
        std::string address, name, label, location;
        std::shared_ptr<const CounterpartTexts> texts;
    };

    objc::Strong<> orNull(const std::string& text) { return text.empty() ? objc::Strong<>() : of(text); }

    std::array<Text, 1024> texts_;
    std::array<Counterpart, 64> counterparts_;
    std::size_t latest_ = 0;      // the counterpart that came last: the likeliest to come again
    std::uint64_t revision_ = 0;  // of the home region by which places were found
};

}  // namespace quorvel
