#ifndef TESSARIL_ENGINE_SITE_RULES_H_
#define TESSARIL_ENGINE_SITE_RULES_H_

#include <string>
#include <string_view>
#include <vector>

namespace tessaril {

/// The name of the file in a site's root folder that says what its author wants.
inline constexpr std::string_view kSiteFileName = "tessaril.toml";

/// By which rules links and entities are judged: the classic ones, or as a visitor's browser judges them.
enum class Rules { kClassic, kToday };

/// What the author of a site says of it, with what holds where nothing is said. Patterns are matched against
/// paths below the site's root: "*" and "?" stay within a name, "**" crosses folders; a pattern without "/"
/// is matched against names. All texts are UTF-8.
struct SiteRules {
  Rules rules = Rules::kToday;
  std::vector<std::string> index = {"index.html", "index.htm"};  // names of files that stand for their folder
  std::vector<std::string> ignore_files;                         // patterns: files that are not checked
  std::vector<std::string> ignore_links;  // patterns: links, as written or by their path, not checked
  bool lowercase_names = false;           // upper-case letters in the names of linked files are findings
  std::vector<std::string> start;  // pages from which everything should be reachable; none: from any page
  std::vector<std::string> allow_missing;  // patterns: targets that the server makes
  std::vector<std::string> allow_unlinked = {"404.html", "favicon.ico", "robots.txt", "sitemap.xml"};
  bool ascii_entities = false;  // characters above 127 are findings on UTF-8 pages, too

  bool operator==(const SiteRules&) const = default;
};

/// A site: the folder that its addresses begin at, and its rules.
struct Site {
  std::string root;  // absolute, without a separator at its end
  SiteRules rules;
};

}  // namespace tessaril

#endif  // TESSARIL_ENGINE_SITE_RULES_H_
