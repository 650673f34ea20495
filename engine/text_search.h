#ifndef TESSARIL_ENGINE_TEXT_SEARCH_H_
#define TESSARIL_ENGINE_TEXT_SEARCH_H_

#include <string>

#include "engine/run.h"
#include "engine/status.h"

namespace tessaril {

/// Finds every place of the search text `S` in the file with the path `F`; with the function "Search &&
/// Replace" chosen it puts `R` in its place, asking where `ShowEach` says so. Places may overlap. Counts the
/// file, writes it at most once, at the end, appends the file's block to `Results` and shows them, and sets
/// `StopRequested` when the user stops. `S` and `R` are valid UTF-8; an empty `S` is found nowhere.
/// A file that cannot be read or written comes back as a failure and has no block.
Status Erstat(const std::string& S, const std::string& R, const std::string& F, RunContext& run);

/// The worker of both text functions: Erstat on `RunFile` with the texts of the run.
Status SearchFile(RunContext& run);

}  // namespace tessaril

#endif  // TESSARIL_ENGINE_TEXT_SEARCH_H_
