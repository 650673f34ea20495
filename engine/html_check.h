#ifndef TESSARIL_ENGINE_HTML_CHECK_H_
#define TESSARIL_ENGINE_HTML_CHECK_H_

#include <string>

#include "engine/run.h"

namespace tessaril {

/// Checks the page `page_path` for the function of the run: its links to files, its links to other servers,
/// or its colours. Findings go into `Results`, the page into the register; when the check renames the page,
/// `page_path` becomes its new path. Fails when the page cannot be read or a correction cannot be written;
/// findings made until then stay.
Status CheckHTML(std::string& page_path, RunContext& run);

/// The same as a worker of a run.
Status CheckPage(RunContext& run);

}  // namespace tessaril

#endif  // TESSARIL_ENGINE_HTML_CHECK_H_
