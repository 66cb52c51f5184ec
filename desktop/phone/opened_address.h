// What an address that was opened asks the telephone to do.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace phone {

struct OpenedAddress {
    enum class Kind { telephone, faceTime, faceTimeAudio, message, mail };
    Kind kind = Kind::telephone;
    /// The number or e-mail address, without escapes; empty where the address names nobody.
    std::string target;

    bool operator==(const OpenedAddress&) const = default;
};

/// Understands tel, facetime, facetime-audio, sms and mailto, with or without "//" and in any case of letters; what
/// follows a "?" is left out. Nothing for another scheme.
std::optional<OpenedAddress> readAddress(std::string_view address);

/// False for an address that readAddress() understands and whose target is empty or has nothing but blanks and marks
/// of punctuation. True for addresses of other schemes.
bool reachesSomebody(std::string_view address);

bool isCall(OpenedAddress::Kind kind);

}  // namespace phone
