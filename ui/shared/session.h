#ifndef TESSARIL_UI_SHARED_SESSION_H_
#define TESSARIL_UI_SHARED_SESSION_H_

#include <string>

#include "engine/disk_files.h"
#include "engine/entities.h"
#include "undo/undo_store.h"

namespace tessaril {

/// What all windows share for the whole run of the program. Paths are the file system's bytes.
struct Session {
  UndoStore undo{std::string()};  // of what runs and the editor change
  DiskFiles files;                // its current folder is the program's
  Entities entities;
  std::string CommandLine;    // what the program was started with; empty for nothing
  std::string ProgramFolder;  // no separator at its end
  std::string LastDir;  // the last folder used; with a separator at its end as long as it is from the file
  std::string PrinterFontName;     // UTF-8
  float PrinterFontSize = 10;      // points
  std::string CurrentFile;         // shown in the editor or browser
  std::string SavedCurrentFile;    // the one kept while the browser shows the editor's unsaved text
  bool EditorTextChanged = false;  // the editor's text is not what was loaded or saved last
};

}  // namespace tessaril

#endif  // TESSARIL_UI_SHARED_SESSION_H_
