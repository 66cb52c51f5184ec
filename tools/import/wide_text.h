// UTF-16 read as UTF-8, piece by piece.
#pragma once

#include <string>

#include "tools/import/input_file.h"

namespace tools {

/// Text of a file with or without a byte order mark of UTF-16, always given as UTF-8. Half a pair, and half a unit at
/// the end, become U+FFFD.
class WideText {
  public:
    explicit WideText(InputFile& file);
    /// As InputFile::read; at least four bytes of space.
    std::size_t read(std::span<char> space);

  private:
    void takeUnit(unsigned unit);

    InputFile& file_;
    bool isWide_ = false;
    bool isBigEnd_ = false;
    bool isFirst_ = true;
    bool hasEnded_ = false;
    int half_ = -1;             ///< The first byte of a unit whose second was not read yet.
    unsigned firstOfPair_ = 0;  ///< Waiting for the second.
    std::string ready_;
};

}  // namespace tools
