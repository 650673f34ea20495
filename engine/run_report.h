#ifndef TESSARIL_ENGINE_RUN_REPORT_H_
#define TESSARIL_ENGINE_RUN_REPORT_H_

#include <string>

#include "engine/run.h"

// What surrounds the findings of a run: the header in front of them and what is added at the end.

namespace tessaril {

/// The header of the report, or for functions that make one, the top of the page. `typed` are the texts as
/// entered, `searched` as they are searched for; all texts in it are UTF-8, paths as the file system has
/// them.
std::string MakeHeader(const RunOptions& options, const SearchTexts& typed, const SearchTexts& searched);

/// Makes the finished text report of `Results`, which so far holds the findings, in its place. Findings
/// shorter than 40 bytes in all count as none. By today's rules, which `site`
/// stands for, what is missing of the site is listed, too.
void FinishReport(const std::string& header, const RunOptions& options, RunState& state,
                  const SiteRun* site = nullptr);

/// Makes the finished HTML page of `Results` in its place.
void FinishPage(const std::string& header, RunState& state);

}  // namespace tessaril

#endif  // TESSARIL_ENGINE_RUN_REPORT_H_
