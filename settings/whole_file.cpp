#include "settings/whole_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <optional>

#include "engine/file_handle.h"
#include "engine/paths.h"
#include "engine/temporary_file.h"

namespace tessaril {
namespace {

// What is known of the file to be replaced; nothing when there is none.
using OldFile = std::optional<struct stat>;

Status ExamineOldFile(int folder, const std::string& name, OldFile& old_file) {
  struct stat info {};
  if (fstatat(folder, name.c_str(), &info, AT_SYMLINK_NOFOLLOW) != 0) {
    return errno == ENOENT ? Status() : Status::System(errno);
  }
  if (S_ISDIR(info.st_mode)) return Status::System(EISDIR);
  if (!S_ISREG(info.st_mode)) return Status::Failure("Not a regular file");
  if (faccessat(folder, name.c_str(), W_OK, AT_EACCESS) != 0) return Status::System(errno);
  old_file = info;
  return {};
}

Status TakeOver(const struct stat& old_info, int new_file) {
  // Where the system does not let the owner be kept, the writer's own file is the best there is.
  [[maybe_unused]] const int owner_kept = fchown(new_file, old_info.st_uid, old_info.st_gid);
  constexpr mode_t kPermissions = 0777;
  return fchmod(new_file, old_info.st_mode & kPermissions) == 0 ? Status() : Status::System(errno);
}

Status FillAndRename(TemporaryFile& temporary, const std::string& name, const OldFile& old_file,
                     std::string_view content) {
  if (Status status = WriteAll(temporary.file(), content); !status.ok()) return status;
  if (old_file) {
    if (Status status = TakeOver(*old_file, temporary.file()); !status.ok()) return status;
  }
  if (Status status = FlushFile(temporary.file()); !status.ok()) return status;
  return temporary.RenameTo(name);
}

}  // namespace

Status WriteWholeFile(const std::string& path, std::string_view content) {
  const std::string folder_path(FolderOf(path));
  const std::string name(NameOf(path));
  const FileHandle folder(open(folder_path.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  if (!folder.is_open()) return Status::System(errno);
  OldFile old_file;
  if (Status status = ExamineOldFile(folder.get(), name, old_file); !status.ok()) return status;
  TemporaryFile temporary(folder.get());
  if (Status status = temporary.Create(old_file ? 0600 : 0666); !status.ok()) return status;
  Status status = temporary.RemoveAfter(FillAndRename(temporary, name, old_file, content));
  if (!status.ok()) return status;
  (void)FlushFile(folder.get());  // the file is replaced, whatever comes of this
  return {};
}

}  // namespace tessaril
