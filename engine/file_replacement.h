#ifndef TESSARIL_ENGINE_FILE_REPLACEMENT_H_
#define TESSARIL_ENGINE_FILE_REPLACEMENT_H_

#include <sys/stat.h>

#include <span>
#include <string>
#include <string_view>

#include "engine/files.h"

namespace tessaril {

/// Why what is no file, as a pipe, is not read or written.
inline constexpr const char* kNoRegularFile = "Not a regular file";

FileStamp StampOf(const struct stat& info);

/// The failure of a change of a file that is no longer the one that was read.
Status FileWasChanged();

/// Replaces the content of the file `name` in the open folder `folder` (a symbolic link is followed to its
/// file). The new content is written to a new file beside it, flushed, given owner, mode, access list and
/// extended attributes of the old one, and renamed over it; a file with several hard links is written in
/// place, with a flushed copy beside it until all is written. The caller flushes the folder; where that is
/// another than `folder`, because of a link, it is flushed here. What goes wrong when the page is replaced
/// already, and stays so, is told in `afterwards`: that flush, or a copy that could not be removed. On
/// failure the file holds its old content and nothing new stays in the folder, or the reason names it.
/// `stamp` as in Files::ReplaceContent.
Status ReplaceFile(int folder, const std::string& name, FileStamp& stamp,
                   std::span<const std::string_view> pieces, Status& afterwards);

}  // namespace tessaril

#endif  // TESSARIL_ENGINE_FILE_REPLACEMENT_H_
