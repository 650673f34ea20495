#ifndef TESSARIL_ENGINE_ENTITY_CHECK_H_
#define TESSARIL_ENGINE_ENTITY_CHECK_H_

#include <string>

#include "engine/run.h"
#include "engine/status.h"

namespace tessaril {

/// Puts to the user every character, "&" and entity of the file with the path `F` that is not in order by the
/// rules of the run (`ClassicEntities`, `TodayEntities`), whatever `ShowEach` says. Counts the file, writes
/// it after each accepted proposal (where nobody is asked: once, at the end), appends the file's block to
/// `Results` and shows them; when the run is stopped in the file, the block goes without its header and is
/// not shown. A file that cannot be read or written comes back as a failure; its block then ends with what is
/// on the disk, and is left out when that is nothing.
Status ErstatAlfa(const std::string& F, RunContext& run);

/// The worker: ErstatAlfa on `RunFile`.
Status CheckEntities(RunContext& run);

}  // namespace tessaril

#endif  // TESSARIL_ENGINE_ENTITY_CHECK_H_
