// A call as its source writes it, and the calls that the known sources mean by it.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <variant>
#include <vector>

#include "desktop/quorvel/store/call.h"

namespace tools {

/// Fields by the names that the source gives them. What is taken has its place in the call; the rest is kept beside it.
class RawCall {
  public:
    /// Puts the text in the place of one that the field had. Its cost does not grow with the number of fields.
    void set(std::string name, std::string value);
    bool isEmpty() const { return fields_.empty(); }
    /// The field's text, empty where there is none.
    const std::string& at(std::string_view name) const;
    /// The same, and the field is empty from then on, and so not part of the rest.
    std::string take(std::string_view name);
    /// A JSON object with the source's name and the fields that were not taken, but for empty ones.
    std::string rest(std::string_view source) const;

  private:
    static constexpr std::size_t none = SIZE_MAX;
    std::size_t find(std::string_view name) const;

    std::vector<std::pair<std::string, std::string>> fields_;
    std::unordered_map<std::string, std::size_t> places_;  ///< Of all fields, once they are many.
};

/// A call, or a sentence that says what is wrong.
using CallOrWrong = std::variant<quorvel::store::NewCall, std::string>;

/// Of a row of Android's table `calls`, or an element `call` of a backup of it. Rejected, blocked and unanswered calls,
/// and messages left instead of a call, become missed ones; their length is kept beside them.
CallOrWrong callOfAndroid(RawCall raw);
/// Of a row of the handset's table `call`. The flags stay as they are; its record numbers name no contacts here.
CallOrWrong callOfHandset(RawCall raw);
/// Of a row of the handset's later table ZCALLRECORD, whose dates count from 2001.
CallOrWrong callOfLaterStore(RawCall raw);
/// Of a row of this product's own log.
CallOrWrong callOfOwnLog(RawCall raw);

}  // namespace tools
