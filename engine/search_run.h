#ifndef TESSARIL_ENGINE_SEARCH_RUN_H_
#define TESSARIL_ENGINE_SEARCH_RUN_H_

#include "engine/files.h"
#include "engine/run.h"

namespace tessaril {

/// How a run ended.
struct RunEnd {
  bool started = false;  // false: a check refused it or the user did; nothing has changed then
  bool found = false;    // there are findings, also such as are too short to be reported
};

/// One run, from the press of Search to the finished report in `Results`: the checks, the texts, the header,
/// the walk with the function's worker, the report. The function must have a worker.
RunEnd SearchRun(Files& files, RunHost& host, const Entities& entities, const RunOptions& options,
                 RunState& state);

}  // namespace tessaril

#endif  // TESSARIL_ENGINE_SEARCH_RUN_H_
