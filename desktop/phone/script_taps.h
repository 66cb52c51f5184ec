// The commands that act with a finger or the keyboard. Each answers what was wrong; empty when all went well.
#pragma once

#include <string>
#include <vector>

#include "desktop/phone/script_words.h"

namespace phone {

std::string tap(const std::vector<Word>& words);
std::string swipe(const std::vector<Word>& words);
/// Scroll the table to the row that the command is about. Answer whether it had to move.
bool bringTappedRowIntoView(const std::vector<Word>& words);
bool bringSwipedRowIntoView(const std::vector<Word>& words);
std::string scroll(const Word& where);
std::string search(const std::string& text);
std::string cancelSearch();
/// Into the field that has the keyboard, at its caret.
std::string type(const std::string& text);
/// Empties the field that has the keyboard.
std::string erase();
std::string pressKey(const std::string& name);

}  // namespace phone
