#ifndef TESSARIL_ENGINE_LINK_SCANNER_H_
#define TESSARIL_ENGINE_LINK_SCANNER_H_

#include <cstddef>
#include <string_view>

#include "engine/ascii.h"

namespace tessaril {

/// A link as it stands in a page. Positions are bytes from 0.
struct Link {
  std::string_view value;   // cut before its first "?"
  std::size_t start = 0;    // of the value
  std::size_t end = 0;      // of the value before it was cut
  std::string_view scheme;  // up to seven bytes of the page from `start`, cut behind the first ":"

  /// Whether the scheme is `name`, which is in lower case; its own letter case does not matter.
  bool HasScheme(std::string_view name) const { return EqualsLower(scheme, name); }

  /// Whether the scheme leads to another server.
  bool IsExternal() const;
};

/// Finds the links of a page: whatever follows a keyword and its "=" or "(", in tags, scripts, comments and
/// plain text alike. It reads text, not HTML. Each link is looked for behind the first byte of the one before
/// it, so that a link inside another's value is found, too.
class LinkScanner {
 public:
  enum class Pass {
    kLink,     // a link was found
    kSkipped,  // something was found that is no link to be looked at
    kEnd       // there is nothing more, or a value has no end
  };

  /// Goes on to the next keyword. Between two calls the text stays the same, or Restart is called.
  Pass Next(std::string_view text, Link& link);

  /// Goes on at `place` in a text that has changed.
  void Restart(std::size_t place);

 private:
  static constexpr std::size_t kNone = std::string_view::npos;

  // What was found when it was looked for last: the first place at or after `from`, kNone for nowhere. It is
  // also the first one after any place between the two.
  struct Found {
    std::size_t from = kNone;
    std::size_t place = 0;

    bool HoldsFor(std::size_t start) const { return from <= start && start <= place; }
  };

  std::size_t FindSeparator(std::string_view text) const;
  std::size_t KeywordBefore(std::size_t separator, std::string_view text) const;
  std::size_t FindOpeningQuote(std::string_view text, std::size_t begin) const;
  std::size_t FindValueEnd(std::string_view text, std::size_t start, char quote);

  std::size_t position_ = 0;  // where the next keyword is looked for
  Found double_quote_;
  Found apostrophe_;
  Found unquoted_end_;
  Found question_mark_;
};

}  // namespace tessaril

#endif  // TESSARIL_ENGINE_LINK_SCANNER_H_
