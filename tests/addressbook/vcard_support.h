// Reading vCards from texts and samples, with what the reader told.
#pragma once

#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include "desktop/addressbook/vcard_reader.h"

namespace vcard::test {

struct Outcome {
    std::vector<Card> cards;
    std::vector<std::string> problems;  // "LINE:COLUMN: text"
};

inline Outcome readAll(std::istream& stream, const ReadOptions& options = {}) {
    Outcome outcome;
    Reader reader(
        stream,
        [&](const Problem& problem) {
            outcome.problems.push_back(std::to_string(problem.position.line) + ":" +
                                       std::to_string(problem.position.column) + ": " + problem.text);
        },
        options);
    while (auto card = reader.next()) outcome.cards.push_back(*std::move(card));
    return outcome;
}

inline Outcome readText(const std::string& text, const ReadOptions& options = {}) {
    std::istringstream stream(text);
    return readAll(stream, options);
}

inline Outcome readSample(const std::string& name) {
    std::ifstream stream(SAMPLES_FOLDER "/" + name, std::ios::binary);
    return readAll(stream);
}

/// A card of version 3.0 around the lines.
inline Outcome readLines(const std::string& lines, const char* version = "3.0") {
    return readText("BEGIN:VCARD\r\nVERSION:" + std::string(version) + "\r\n" + lines + "END:VCARD\r\n");
}

/// The text of the first card's first property of that name; "(none)" where there is none.
inline std::string text(const Outcome& outcome, const char* name) {
    const Property* found = outcome.cards.empty() ? nullptr : outcome.cards.front().find(name);
    return found ? unescaped(found->value) : "(none)";
}

}  // namespace vcard::test
