#ifndef TESSARIL_SETTINGS_WHOLE_FILE_H_
#define TESSARIL_SETTINGS_WHOLE_FILE_H_

#include <string>
#include <string_view>

#include "engine/status.h"

namespace tessaril {

/// Writes a file of the program's own: `content` becomes all of the file at `path`, which is absolute,
/// whether there was one or not and whatever it held. The content is written to a temporary file in the same
/// folder, flushed, and renamed over the old one, whose mode it keeps, and its owner and group where the
/// system lets it; the last of several writers wins. Only a regular file that may be written is replaced: no
/// folder, device or symbolic link.
/// On failure the old file is whole, and the system's words are returned; no temporary file stays, or they
/// name it.
Status WriteWholeFile(const std::string& path, std::string_view content);

}  // namespace tessaril

#endif  // TESSARIL_SETTINGS_WHOLE_FILE_H_
