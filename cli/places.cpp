#include "cli/places.h"

#include <sys/stat.h>

#include <cerrno>

#include "engine/paths.h"
#include "engine/start_places.h"

namespace tessaril {

Status ChoosePlace(const std::string& given, RunOptions& options) {
  std::string path;
  if (Status status = MakeAbsolute(given, path); !status.ok()) return status;
  struct stat info {};
  if (stat(path.c_str(), &info) != 0) return Status::System(errno);
  if (S_ISDIR(info.st_mode)) {
    options.dirList = path;
    return {};
  }
  if (!S_ISREG(info.st_mode)) return Status::Failure("Not a regular file");
  options.dirList = FolderOf(path);
  options.filList = NameOf(path);
  options.MarkedOnly = true;
  return {};
}

}  // namespace tessaril
