#ifndef TESSARIL_SITE_SITE_CHOICE_H_
#define TESSARIL_SITE_SITE_CHOICE_H_

#include <optional>

#include "engine/files.h"
#include "engine/run.h"
#include "engine/status.h"

namespace tessaril {

/// Fills in the site whose rules the run in `options.dirList` goes by: those of its site file, or as `rules`
/// says, where the folder itself is taken for the root when there is no file. A site file that is not valid
/// is a failure whatever the function, and so is a start page that is not there when links are checked; the
/// reason names the file.
Status ChooseSite(std::optional<Rules> rules, Files& files, RunOptions& options);

}  // namespace tessaril

#endif  // TESSARIL_SITE_SITE_CHOICE_H_
