#ifndef TESSARIL_CLI_PLACES_H_
#define TESSARIL_CLI_PLACES_H_

#include <string>

#include "engine/run.h"
#include "engine/status.h"

// From what the command line names to absolute paths.

namespace tessaril {

/// Makes `given` absolute by its text alone, against the folder that the program was started in. Fails when
/// it is empty, or relative and that folder is there no more.
Status MakeAbsolute(const std::string& given, std::string& path);

/// Fills in the folder to walk, or the one file as the marked one.
Status ChoosePlace(const std::string& given, RunOptions& options);

/// The folder of the program file, links to it resolved.
Status FindProgramFolder(std::string& folder);

}  // namespace tessaril

#endif  // TESSARIL_CLI_PLACES_H_
