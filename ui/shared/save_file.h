#ifndef TESSARIL_UI_SHARED_SAVE_FILE_H_
#define TESSARIL_UI_SHARED_SAVE_FILE_H_

#include <string>
#include <string_view>

#include "engine/files.h"

namespace tessaril {

/// Makes `content` all of a file that the user has named, a new one or one that is there, which is replaced
/// as a whole or not at all.
Status SaveFile(Files& files, const std::string& path, std::string_view content);

/// Whether that may be expected to succeed, without touching the file.
Status LookBeforeSaving(Files& files, const std::string& path);

}  // namespace tessaril

#endif  // TESSARIL_UI_SHARED_SAVE_FILE_H_
