#ifndef TESSARIL_CLI_PLACES_H_
#define TESSARIL_CLI_PLACES_H_

#include <string>

#include "engine/run.h"
#include "engine/status.h"

// From what the command line names to absolute paths.

namespace tessaril {

/// Fills in the folder to walk, or the one file as the marked one.
Status ChoosePlace(const std::string& given, RunOptions& options);

}  // namespace tessaril

#endif  // TESSARIL_CLI_PLACES_H_
