#ifndef TESSARIL_ENGINE_FOLDER_NAMES_H_
#define TESSARIL_ENGINE_FOLDER_NAMES_H_

#include <string>
#include <string_view>
#include <vector>

#include "engine/file_filter.h"
#include "engine/files.h"

// The names of a folder that a run visits and a list shows: sorted without regard to the case of A to Z, ties
// by byte; those that begin with a dot are left out. They are moved out of the entries.

namespace tessaril {

/// The subfolders; a symbolic link to a folder is none.
std::vector<std::string> TakeFolderNames(std::vector<FolderEntry>& entries);

/// The files that a filter lists. `marked` is not left out for a dot.
std::vector<std::string> TakeFileNames(std::vector<FolderEntry>& entries, const FileFilter& filter,
                                       std::string_view marked = {});

}  // namespace tessaril

#endif  // TESSARIL_ENGINE_FOLDER_NAMES_H_
