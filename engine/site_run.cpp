#include "engine/site_run.h"

#include <algorithm>

#include "engine/site_patterns.h"

namespace tessaril {

std::vector<std::pair<std::string, std::size_t>> SiteRun::Missing() const {
  std::vector<std::pair<std::string, std::size_t>> missing(missing_.begin(), missing_.end());
  std::stable_sort(missing.begin(), missing.end(),
                   [](const auto& a, const auto& b) { return a.second > b.second; });
  return missing;
}

std::map<std::string, Status> SiteRun::Untold() {
  std::map<std::string, Status> untold = index.tree().unlisted();
  std::erase_if(untold, [this](const auto& folder) { return told_.contains(folder.first); });
  return untold;
}

// What a page says of other files is known when it has been read.
void SiteRun::ReadAll() {
  SiteTree& tree = index.tree();
  std::vector<SiteEntry*> unread;
  tree.ForEachFile(tree.root(), [&](SiteEntry& file) {
    if (!file.page && index.FormOf(file) != PageForm::kNone && !index.IsIgnored(file))
      unread.push_back(&file);
  });
  for (SiteEntry* const file : unread) (void)index.PageOf(*file);
}

// Follows the links from the start pages on; what is not reached so is not linked.
void SiteRun::MarkByWays(const std::vector<std::string>& start) {
  SiteTree& tree = index.tree();
  tree.ForEachFile(tree.root(), [](SiteEntry& file) { file.is_linked = false; });
  std::vector<SiteEntry*> open;
  for (const std::string& path : start) {
    if (SiteEntry* const page = index.targets().FileAt(path)) open.push_back(page);
  }
  while (!open.empty()) {
    SiteEntry* const page = open.back();
    open.pop_back();
    if (std::exchange(page->is_linked, true) || !page->page) continue;
    open.insert(open.end(), page->page->leads_to.begin(), page->page->leads_to.end());
  }
}

void SiteRun::LookForUnlinked(const std::string& folder) {
  SiteTree& tree = index.tree();
  const SiteRules& rules = index.rules();
  ReadAll();
  if (!rules.start.empty()) MarkByWays(rules.start);
  // The site's own address leads to its first page.
  for (const std::string& name : rules.index) {
    SiteEntry* const first = tree.Child(tree.root(), name);
    if (first == nullptr || !first->is_file()) continue;
    first->is_linked = true;
    break;
  }
  const SitePatterns allowed(rules.allow_unlinked);
  std::vector<std::string> others;
  SiteEntry* const top = tree.OfPath(folder);
  if (top == nullptr) return;
  tree.ForEachFile(*top, [&](SiteEntry& file) {
    const std::string path = tree.SitePathOf(file);
    if (file.is_linked || path == kSiteFileName || index.IsIgnored(file) || allowed.Match(path)) return;
    const PageForm form = index.FormOf(file);
    const bool is_page = form == PageForm::kHtml || form == PageForm::kXml;
    (is_page ? unlinked_ : others).push_back(tree.PathOf(file));
  });
  unlinked_.insert(unlinked_.end(), others.begin(), others.end());
}

std::string MissingStartPage(Files& files, const RunOptions& options) {
  SiteTargets targets(files, options);
  for (const std::string& path : options.site->rules.start) {
    if (targets.FileAt(path) == nullptr) return path;
  }
  return {};
}

}  // namespace tessaril
