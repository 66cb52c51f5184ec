// What a tap on a call does, and what opening one shows. Choices alone.
#pragma once

#include <cstdint>

namespace rows {

/// The record of an entry that is nobody's.
inline constexpr int noContact = -1;

enum class Tap { CallBack, Open, Nothing };

/// While taps call back, every row does, the load-more row too: where the list already holds an entry that is not shown
/// yet, that one is called. Otherwise a call row opens, and the load-more row does nothing.
constexpr Tap tapOn(std::int64_t row, std::int64_t rowCount, bool callsBack) {
    if (callsBack) return Tap::CallBack;
    return row < rowCount ? Tap::Open : Tap::Nothing;
}

/// Whether taps call back on a screen that can show days: a day cannot be called.
constexpr bool callsBackAmongDays(bool isCallOnTap, bool isGroupByDate) { return isCallOnTap && !isGroupByDate; }

/// Any record but that of nobody is looked for, 0 and below too.
constexpr bool hasContact(int record) { return record != noContact; }

enum class Card { Person, UnknownPerson };

/// An entry without a contact never shows the person that was found for an earlier one.
constexpr Card cardOf(int record, bool isPersonKnown) {
    return hasContact(record) && isPersonKnown ? Card::Person : Card::UnknownPerson;
}

}  // namespace rows
