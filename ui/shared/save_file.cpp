#include "ui/shared/save_file.h"

#include <filesystem>
#include <system_error>

#include "settings/whole_file.h"

namespace tessaril {

Status SaveFile(Files& files, const std::string& path, std::string_view content) {
  std::error_code ignored;
  if (std::filesystem::symlink_status(path, ignored).type() == std::filesystem::file_type::not_found) {
    return WriteWholeFile(path, content);
  }
  FileStamp stamp;
  Status status = files.Examine(path, stamp);
  if (status.ok()) status = files.ReplaceContent(path, stamp, std::span(&content, 1));
  return status.ok() ? files.FlushFolder() : status;
}

}  // namespace tessaril
