#include "site/site_choice.h"

#include "engine/paths.h"
#include "engine/site_run.h"
#include "site/site_file.h"

namespace tessaril {

Status ChooseSite(std::optional<Rules> rules, Files& files, RunOptions& options) {
  options.site.reset();
  if (rules == Rules::kClassic) return {};
  std::optional<Site> site;
  if (Status status = LoadSite(files, options.dirList, site); !status.ok()) return status;
  if (options.function != Function::kLinks && options.function != Function::kEntities) return {};
  if (rules == Rules::kToday) {
    if (!site) site = Site{options.dirList, {}};
    site->rules.rules = Rules::kToday;
  }
  if (!site || site->rules.rules != Rules::kToday) return {};
  options.site = std::move(site);
  if (options.function != Function::kLinks) return {};
  const std::string missing = MissingStartPage(files, options);
  if (missing.empty()) return {};
  return Status::Failure(JoinPath(options.site->root, kSiteFileName) + ": start: there is no page \"" +
                         missing + "\"");
}

}  // namespace tessaril
