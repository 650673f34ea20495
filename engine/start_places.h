#ifndef TESSARIL_ENGINE_START_PLACES_H_
#define TESSARIL_ENGINE_START_PLACES_H_

#include <string>

#include "engine/status.h"

// Where a program is and where it was started.

namespace tessaril {

/// Makes `given` absolute by its text alone, against the folder that the program was started in; where a ".."
/// behind a symbolic link makes that another file, it becomes the one that the system means. Fails when it is
/// empty, or relative and that folder is there no more.
Status MakeAbsolute(const std::string& given, std::string& path);

/// The folder of the program file, links to it resolved.
Status FindProgramFolder(std::string& folder);

}  // namespace tessaril

#endif  // TESSARIL_ENGINE_START_PLACES_H_
