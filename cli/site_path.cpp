#include "cli/site_path.h"

#include <sys/stat.h>

#include <cerrno>

#include "engine/paths.h"
#include "engine/start_places.h"
#include "site/site_file.h"

namespace tessaril {

Status MakeSiteFile(const std::string& given, std::string& path) {
  std::string folder;
  Status status = MakeAbsolute(given, folder);
  struct stat info {};
  if (status.ok() && stat(folder.c_str(), &info) != 0) status = Status::System(errno);
  if (status.ok() && !S_ISDIR(info.st_mode)) status = Status::System(ENOTDIR);
  if (!status.ok()) return Status::Failure(given + ": " + status.reason());
  path = JoinPath(folder, kSiteFileName);
  status = CreateSiteFile(folder, SiteRules());
  return status.ok() ? status : Status::Failure(path + ": " + status.reason());
}

std::string SiteFileOfRun(const std::string& folder, std::optional<Rules> rules) {
  return rules == Rules::kClassic ? "" : FindSiteFile(folder);
}

}  // namespace tessaril
