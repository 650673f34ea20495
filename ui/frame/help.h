#ifndef TESSARIL_UI_FRAME_HELP_H_
#define TESSARIL_UI_FRAME_HELP_H_

#include <string>

#include "engine/status.h"

namespace tessaril {

/// Shows the help of the program's folder, "TSLhelp.chm", in the first viewer for such files that there is;
/// without one the same pages, "help/index.html", in whatever the desktop opens pages with. Nothing is waited
/// for. Fails when none of them starts.
Status ShowHelp(const std::string& program_folder);

}  // namespace tessaril

#endif  // TESSARIL_UI_FRAME_HELP_H_
