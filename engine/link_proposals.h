#ifndef TESSARIL_ENGINE_LINK_PROPOSALS_H_
#define TESSARIL_ENGINE_LINK_PROPOSALS_H_

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "engine/site_index.h"

namespace tessaril {

/// What should stand in the place of a link that is not in order.
struct LinkProposal {
  std::string value;        // as it stands in the page then, in the page's bytes
  bool is_certain = false;  // it can only be right
};

/// Proposes links: the path in its right letter case, the one file of that name elsewhere in the site, the
/// anchor or file of the folder whose name is nearest in spelling, or the way that stays inside the site.
class LinkProposals {
 public:
  explicit LinkProposals(SiteIndex& index) : index_(index) {}

  /// For a link that was judged, seen from `base`: `value` is what stands in the page, `text` the same with
  /// its spelling resolved.
  std::optional<LinkProposal> For(const JudgedLink& judged, std::string_view value, std::string_view text,
                                  Spelling spelling, const LinkBase& base);

 private:
  std::optional<std::string> PathFor(const JudgedLink& judged, std::string_view path, const LinkBase& base);
  std::optional<std::string> OtherFile(const SiteTarget& target, std::string_view path, const LinkBase& base);
  std::optional<std::string> NearAnchor(SiteEntry& file, const std::string& fragment);

  SiteIndex& index_;
  std::size_t work_ = std::size_t{1} << 28;  // comparisons of sizes in one run, which take a second or so
  std::unordered_map<std::string, std::optional<std::string>> near_anchors_;
  std::unordered_map<std::string, SiteEntry*> other_files_;
};

}  // namespace tessaril

#endif  // TESSARIL_ENGINE_LINK_PROPOSALS_H_
