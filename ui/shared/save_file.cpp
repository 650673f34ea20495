#include "ui/shared/save_file.h"

#include <unistd.h>

#include <cerrno>
#include <filesystem>
#include <system_error>

#include "engine/paths.h"
#include "settings/whole_file.h"

namespace tessaril {
namespace {

bool IsNew(const std::string& path) {
  std::error_code ignored;
  return std::filesystem::symlink_status(path, ignored).type() == std::filesystem::file_type::not_found;
}

}  // namespace

Status SaveFile(Files& files, const std::string& path, std::string_view content) {
  if (IsNew(path)) return WriteWholeFile(path, content);
  FileStamp stamp;
  Status status = files.Examine(path, stamp);
  if (status.ok()) status = files.ReplaceContent(path, stamp, std::span(&content, 1));
  return status.ok() ? files.FlushFolder() : status;
}

Status LookBeforeSaving(Files& files, const std::string& path) {
  if (!IsNew(path)) {
    FileStamp stamp;
    if (Status status = files.Examine(path, stamp); !status.ok()) return status;
    if (access(path.c_str(), W_OK) != 0) return Status::System(errno);
  }
  const std::string folder(FolderOf(path));
  return access(folder.c_str(), W_OK | X_OK) == 0 ? Status() : Status::System(errno);
}

}  // namespace tessaril
