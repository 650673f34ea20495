#ifndef TESSARIL_ENGINE_SITE_TARGETS_H_
#define TESSARIL_ENGINE_SITE_TARGETS_H_

#include <array>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "engine/files.h"
#include "engine/finding_kinds.h"
#include "engine/run.h"
#include "engine/site_patterns.h"
#include "engine/site_tree.h"
#include "engine/web_address.h"

namespace tessaril {

/// Where the path of a link leads.
struct SiteTarget {
  std::optional<FindingKind> fault;  // what is wrong with it, whatever the fragment
  SiteEntry* file = nullptr;         // the file that it leads to or, with a fault, that it seems to mean
  bool is_ambiguous = false;         // more than one file differs in letter case only
  bool has_upper_case = false;       // which the site's rules do not want
  bool names_folder = false;         // the path ends so that it can name a folder only
  std::vector<std::string> names;    // of the path, from the site's root on, decoded
};

/// What the links of a page are relative to.
struct LinkBase {
  SiteEntry* page = nullptr;
  bool is_elsewhere = false;                // on another server
  std::string folder;                       // from the site's root on, "" or with "/" at its end
  std::vector<std::string> names;           // the same, taken apart
  const SiteTarget* own = nullptr;          // what an empty path leads to,
  const SiteTarget* page_itself = nullptr;  // and what it does in a style
};

/// Where the links of a site lead, as a browser follows them: each path is followed once.
class SiteTargets {
 public:
  /// The options must have a site.
  SiteTargets(Files& files, const RunOptions& options);

  SiteTree& tree() { return tree_; }
  const SiteTree& tree() const { return tree_; }

  /// `base` is the one that the page states, as it stands there.
  LinkBase BaseOf(SiteEntry& page, const std::optional<std::string>& base);

  /// Where an address leads that is one of the site; null when it is not to be looked at.
  const SiteTarget* TargetOf(const WebAddress& address, const LinkBase& base);

  /// The same for a plain address whose text stays where it is until BeginPage is called: a page leads to the
  /// same few paths again and again.
  const SiteTarget* TargetOfPlain(const WebAddress& address, const LinkBase& base);

  /// What comes now is another page or text.
  void BeginPage() { ++page_; }

  /// The file that a path from the site's root on leads to, the index file for a folder; null when there is
  /// none.
  SiteEntry* FileAt(std::string_view path);

  /// Whether a link is not to be checked, by what is written there. `may_be_cgi` may be false where it is
  /// known not to hold CgiName.
  bool IsPassedOver(std::string_view link, bool may_be_cgi);

  /// What links hold that are passed over, as it is looked for; empty when there is nothing of the kind.
  const std::string& CgiName();

  /// Whether the file of a target can be opened, by asking the system: the index file for a folder.
  Status Examine(const SiteTarget& target);

  /// The path of a target on the disk.
  std::string PathOf(const SiteTarget& target) const;

  const SiteRules& rules() const { return options_.site->rules; }

 private:
  struct Hash {
    using is_transparent = void;
    std::size_t operator()(std::string_view key) const { return std::hash<std::string_view>()(key); }
  };

  const SiteTarget& OfPlainPath();
  const SiteTarget& OfPath(std::string_view path, const std::vector<std::string>& folder);
  const SiteTarget& Remember(const std::vector<std::string>& names, bool names_folder, bool leaves_site);
  void Follow(SiteTarget& target, bool leaves_site);
  SiteEntry* FindAnyCase(SiteTarget& target);
  SiteEntry* FileOf(SiteEntry& entry, bool names_folder, std::optional<FindingKind>& fault);

  Files& files_;
  const RunOptions& options_;
  SiteTree tree_;
  SitePatterns ignore_links_;
  SitePatterns allow_missing_;
  std::unordered_map<std::string, SiteTarget, Hash, std::equal_to<>> targets_;
  std::string key_;
  std::string cgi_name_;
  std::string lower_cgi_name_;
  // Where paths of the page in hand were found to lead, by a rough hash.
  struct Recent {
    unsigned page = 0;
    std::string_view path;
    const SiteTarget* target = nullptr;
  };
  std::array<Recent, 256> recent_;
  unsigned page_ = 1;
};

}  // namespace tessaril

#endif  // TESSARIL_ENGINE_SITE_TARGETS_H_
