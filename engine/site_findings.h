#ifndef TESSARIL_ENGINE_SITE_FINDINGS_H_
#define TESSARIL_ENGINE_SITE_FINDINGS_H_

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "engine/site_run.h"

namespace tessaril {

/// A link or anchor of a page that is not in order.
struct SiteFinding {
  FindingKind kind;
  std::size_t begin;  // of what stands in the page, in bytes from 0,
  std::size_t end;    // and behind it
  std::string message;
  std::optional<std::string> proposal;  // in the bytes of the page
  bool is_certain = false;              // the proposal can only be right
  std::string missing{};  // the target that is not there, from the site's root on; empty for others
  Spelling spelling = Spelling::kAttribute;
};

/// Finds what is not in order on one page.
class SiteFinder {
 public:
  SiteFinder(SiteEntry& file, SiteRun& site) : file_(file), site_(site) {}

  /// All findings that do not end in front of the place `from` of the page's text, which is the one that the
  /// index took last, in their order.
  std::vector<SiteFinding> Find(std::string_view text, std::size_t from, bool with_proposals);

  /// The findings of one fault of a page that need not be there: `value` is what stands there.
  std::vector<SiteFinding> Of(const PageDoubt& fault, std::string_view value, const PageValues& values);

  /// The finding of one link that begins at `begin`, seen from the page that was given to Find last; nothing
  /// when it is in order.
  std::optional<SiteFinding> Judge(const PageLink& link, std::size_t begin, bool with_proposals);

  /// Whether a link that is not in order here is so where the page bears another name, as that of a symbolic
  /// link to it: a change would break it there.
  bool IsInOrderElsewhere(const PageLink& link);

 private:
  void Begin(const PageValues& values);
  void Add(const PageDoubt& fault, std::string_view value, bool with_proposals,
           std::vector<SiteFinding>& findings);
  SiteFinding OfName(const PageDoubt& fault, const PageLink& link);
  std::optional<SiteFinding> JudgeCase(const PageLink& link, std::size_t begin);
  std::string MessageFor(const JudgedLink& judged);
  std::string ReasonFor(const SiteTarget& target);
  std::string MissingOf(const JudgedLink& judged) const;

  SiteEntry& file_;
  SiteRun& site_;
  std::optional<PageValues> values_;
  LinkBase base_;
};

}  // namespace tessaril

#endif  // TESSARIL_ENGINE_SITE_FINDINGS_H_
