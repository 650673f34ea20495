#ifndef TESSARIL_CLI_SITE_PATH_H_
#define TESSARIL_CLI_SITE_PATH_H_

#include <optional>
#include <string>

#include "engine/site_rules.h"
#include "engine/status.h"

// The site that a run belongs to, and what `tsl` does with its file.

namespace tessaril {

/// Makes the site file of the folder that the command line names; `path` becomes its absolute path. On
/// failure the reason names the file or folder.
Status MakeSiteFile(const std::string& given, std::string& path);

/// The path of the site file that a run in `folder` reads; empty when there is none or `rules`, what the
/// command line says, makes it of no matter.
std::string SiteFileOfRun(const std::string& folder, std::optional<Rules> rules);

}  // namespace tessaril

#endif  // TESSARIL_CLI_SITE_PATH_H_
