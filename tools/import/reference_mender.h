// Character references that XML does not allow, made such that it does.
#pragma once

#include <string>
#include <string_view>

namespace tools {

/// Phones write a character beyond the first 65,536 as two references, one for each half of its UTF-16. The halves are
/// joined; a half alone, a control character and what is no character become U+FFFD. All else passes as it is.
class ReferenceMender {
  public:
    /// The text, mended, as far as it can be said without what follows.
    std::string mend(std::string_view piece);
    /// What was held back.
    std::string end();

  private:
    /// The reference is whole.
    void close(std::string& out);
    void release(std::string& out);

    std::string reference_;   ///< From '&' on, not yet whole.
    unsigned firstHalf_ = 0;  ///< Waiting for the second.
};

}  // namespace tools
