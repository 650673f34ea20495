#ifndef TESSARIL_ENGINE_SITE_RUN_H_
#define TESSARIL_ENGINE_SITE_RUN_H_

#include <cstddef>
#include <functional>
#include <map>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "engine/link_proposals.h"
#include "engine/site_index.h"

namespace tessaril {

/// What a run that judges the links of a site by today's rules knows of it, and what it gathers for the end
/// of its report.
class SiteRun {
 public:
  /// As SiteIndex has it.
  SiteRun(Files& files, const RunOptions& options, bool keeps_words, std::function<bool()> handle_input)
      : index(files, options, keeps_words, std::move(handle_input)), proposals(index) {}

  SiteIndex index;
  LinkProposals proposals;

  /// A link leads to this missing file or anchor: its path from the site's root on.
  void NoteMissing(const std::string& target) { ++missing_[target]; }

  /// Missing targets and how many links name each, the most first, ties by name.
  std::vector<std::pair<std::string, std::size_t>> Missing() const;

  /// Finds the files in the folder `folder` and below to which nothing leads. Reads the pages and style
  /// sheets of the site that are not known yet.
  void LookForUnlinked(const std::string& folder);

  /// The run has told that this folder could not be listed; the others that could not are Untold.
  void NoteTold(const std::string& folder) { told_.insert(folder); }
  std::map<std::string, Status> Untold();

  /// Their paths, pages first.
  const std::vector<std::string>& Unlinked() const { return unlinked_; }

 private:
  void ReadAll();
  void MarkByWays(const std::vector<std::string>& start);

  std::map<std::string, std::size_t> missing_;
  std::vector<std::string> unlinked_;
  std::set<std::string> told_;
};

/// The first of the start pages in the rules of the site to which no file belongs; empty when there is none.
std::string MissingStartPage(Files& files, const RunOptions& options);

}  // namespace tessaril

#endif  // TESSARIL_ENGINE_SITE_RUN_H_
