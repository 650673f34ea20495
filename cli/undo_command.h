#ifndef TESSARIL_CLI_UNDO_COMMAND_H_
#define TESSARIL_CLI_UNDO_COMMAND_H_

#include <string>

#include "cli/arguments.h"
#include "engine/status.h"

namespace tessaril {

/// `tsl undo`: lists runs, or shows what would be restored, asks, and restores it. Returns the exit status.
int UndoCommand(const UndoWish& wish);

/// Why a run that would be without undo does not begin, and what can be done.
std::string NoUndo(const Status& status);

/// What becomes of a run whose undo fails while it goes on: it ends as by Ctrl-C. To be given to
/// UndoableFiles.
bool EndForWantOfUndo(const std::string& reason);

}  // namespace tessaril

#endif  // TESSARIL_CLI_UNDO_COMMAND_H_
