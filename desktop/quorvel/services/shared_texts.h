// One string object for a text that comes again and again: a contact's name, a number, a day.
#pragma once

#include <array>
#include <functional>
#include <string>

#include "desktop/uikit/text.h"

namespace quorvel {

/// Remembers texts that came lately, a bounded number of them. One thread at a time.
class SharedTexts {
  public:
    /// A string object with that text.
    const objc::Strong<>& of(const std::string& text) {
        Known& known = known_[std::hash<std::string>()(text) % known_.size()];
        if (!known.object || known.text != text) {
            known.object = objc::Strong<>(uikit::nsString(text));
            known.text = text;
        }
        return known.object;
    }

  private:
    struct Known {
        std::string text;
        objc::Strong<> object;
    };
    std::array<Known, 1024> known_;
};

}  // namespace quorvel
