#ifndef TESSARIL_ENGINE_SITE_CHECK_H_
#define TESSARIL_ENGINE_SITE_CHECK_H_

#include "engine/run.h"

namespace tessaril {

/// Checks the links and anchors of the page or style sheet `RunFile` by today's rules: findings go into
/// `Results` and, if the user wants to see each, to the user, with a proposal in place. An accepted one is
/// written at once; where nobody is asked, all of a page's together. Fails when the page cannot be read or
/// written; the report then tells what is on the disk.
Status CheckSitePage(RunContext& run);

/// Whether a run wants more than the words of its report: proposals, or findings for machines.
bool PutsToUser(const RunContext& run);

}  // namespace tessaril

#endif  // TESSARIL_ENGINE_SITE_CHECK_H_
