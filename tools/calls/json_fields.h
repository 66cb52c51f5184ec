// The names in the JSON of exported calls, for who writes them and who reads them.
#pragma once

#include <cstdint>

/// One object: {"format":"quorvel-calls","version":1,"calls":[...]}, where `format` and `version` stand before `calls`.
/// A call is an object of the fields below; texts that are empty and numbers that are as in a new call may be left out,
/// but for the date. Readers pass over what they do not know, and refuse a later version.
namespace tools::json {

inline constexpr char format[] = "format";
inline constexpr char formatOfCalls[] = "quorvel-calls";
inline constexpr char version[] = "version";
inline constexpr std::int64_t versionOfCalls = 1;
inline constexpr char calls[] = "calls";

// Of a call, as in quorvel::store::NewCall.
inline constexpr char date[] = "date";          ///< Seconds since 1970 in UTC, a whole number.
inline constexpr char duration[] = "duration";  ///< Seconds, a whole number.
inline constexpr char flags[] = "flags";        ///< A whole number; decides over direction and FaceTime.
inline constexpr char address[] = "address";    ///< A text, as are name, label and location.
inline constexpr char contact[] = "contact";    ///< The contact's number, a whole number.
inline constexpr char name[] = "name";          ///< Of the contact.
inline constexpr char label[] = "label";        ///< Of the number.
inline constexpr char location[] = "location";
inline constexpr char faceTimeDataSize[] = "faceTimeDataSize";  ///< Bytes, a whole number.
inline constexpr char extra[] = "extra";                        ///< A text that holds a JSON object, letter by letter.

// For people; a reader passes over them.
inline constexpr char time[] = "time";  ///< ISO 8601 in local time with its offset.
inline constexpr char kind[] = "kind";  ///< "dialled", "cancelled", "received" or "missed".

}  // namespace tools::json
