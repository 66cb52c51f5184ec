// Which value of a card is highlighted. A choice alone.
#pragma once

namespace rows {

/// The number that the call was with; where the card has no such number, the e-mail address, even one that it does not
/// have either: then nothing is highlighted.
constexpr bool isEmailHighlighted(long numberIndex) { return numberIndex < 0; }

}  // namespace rows
