// The addresses that a tap on a card opens.
#pragma once

#include <string>
#include <string_view>

namespace addressbookui {

/// "tel://" and what of the number is dialled: digits, a plus in front, stars, hashes and pauses. Empty where nothing
/// is.
std::string callAddress(std::string_view number);
/// "sms:" with a number or an e-mail address.
std::string messageAddress(std::string_view address);
/// "mailto:" with an e-mail address.
std::string mailAddress(std::string_view address);
enum class FaceTime { video, audio };
/// "facetime://" or "facetime-audio://" with a number or an e-mail address.
std::string faceTimeAddress(std::string_view address, FaceTime kind);
/// A place on a map, by what is written on a letter.
std::string mapAddress(std::string_view place);
/// A page of the web; "http://" is put before one that names no scheme.
std::string pageAddress(std::string_view page);

}  // namespace addressbookui
