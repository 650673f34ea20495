#ifndef TESSARIL_ENGINE_SITE_PATTERNS_H_
#define TESSARIL_ENGINE_SITE_PATTERNS_H_

#include <string>
#include <string_view>
#include <vector>

namespace tessaril {

/// The patterns of a site's rules: "*" stands for any run of characters but "/", "**" for any run at all,
/// "?" for one character but "/". A pattern without "/" is matched against the last name of a path, one with
/// "/" against the whole path from the site's root on, where it may begin with one; a "/" at its end means
/// that folder and everything in it. Letter case counts.
class SitePatterns {
 public:
  SitePatterns() = default;
  explicit SitePatterns(const std::vector<std::string>& patterns);

  bool empty() const { return patterns_.empty(); }

  /// Whether a path below the root, without "/" at its start, matches one of them.
  bool Match(std::string_view path) const;

  /// Whether a text as a whole does, whatever "/" it holds.
  bool MatchText(std::string_view text) const;

 private:
  struct Pattern {
    std::string text;
    bool names_only;  // there is no "/" in it
  };
  std::vector<Pattern> patterns_;
};

}  // namespace tessaril

#endif  // TESSARIL_ENGINE_SITE_PATTERNS_H_
