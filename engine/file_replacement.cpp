#include "engine/file_replacement.h"

#include <fcntl.h>
#include <linux/fs.h>
#include <sys/file.h>
#include <sys/ioctl.h>
#include <sys/xattr.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <utility>
#include <vector>

#include "engine/file_handle.h"
#include "engine/paths.h"
#include "engine/temporary_file.h"

namespace tessaril {
namespace {

// A file by its open folder and its name there, all symbolic links followed.
struct Place {
  int folder = -1;
  std::string name;
  FileHandle own_folder;  // open when a link led out of the folder that the caller gave
};

Status FollowLinks(Place& place) {
  constexpr int kMostLinks = 40;  // as many as the system itself follows
  for (int links = 0; links <= kMostLinks; ++links) {
    std::array<char, 4096> target;
    const ssize_t length = readlinkat(place.folder, place.name.c_str(), target.data(), target.size());
    if (length < 0) return errno == EINVAL ? Status() : Status::System(errno);
    const std::string_view path(target.data(), static_cast<std::size_t>(length));
    const std::size_t separator = path.rfind(kSeparator);
    if (separator != std::string_view::npos) {
      const std::string folder(path.substr(0, separator + 1));
      FileHandle next(openat(place.folder, folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
      if (!next.is_open()) return Status::System(errno);
      place.own_folder = std::move(next);
      place.folder = place.own_folder.get();
    }
    place.name = std::string(NameOf(path));
  }
  return Status::System(ELOOP);
}

Status CheckUnchanged(const Place& place, const FileStamp& stamp, struct stat& info) {
  if (fstatat(place.folder, place.name.c_str(), &info, AT_SYMLINK_NOFOLLOW) != 0) {
    return Status::System(errno);
  }
  if (!S_ISREG(info.st_mode)) return Status::Failure(kNoRegularFile);
  return StampOf(info) == stamp ? Status() : FileWasChanged();
}

// Also when only its permissions, owner, attributes or number of names were changed since it was examined.
Status CheckUntouched(const Place& place, const FileStamp& stamp, const struct stat& before) {
  struct stat now {};
  if (Status status = CheckUnchanged(place, stamp, now); !status.ok()) return status;
  const bool same =
      now.st_ctim.tv_sec == before.st_ctim.tv_sec && now.st_ctim.tv_nsec == before.st_ctim.tv_nsec;
  return same ? Status() : FileWasChanged();
}

// Keeps other runs of this program from the page while it is replaced; not waited for.
Status Lock(int file) {
  if (flock(file, LOCK_EX | LOCK_NB) == 0 || errno != EWOULDBLOCK) return {};
  return Status::Failure("The file is being changed by another program");
}

Status WritePieces(int file, std::span<const std::string_view> pieces) {
  for (const std::string_view piece : pieces) {
    if (Status status = WriteAll(file, piece); !status.ok()) return status;
  }
  return {};
}

// The names of a file's extended attributes, access lists among them; none where the file system has none.
Status AttributeNames(int file, std::vector<std::string>& result) {
  std::vector<char> names(1024);
  ssize_t length = flistxattr(file, names.data(), names.size());
  while (length < 0 && errno == ERANGE) {
    names.resize(names.size() * 4);
    length = flistxattr(file, names.data(), names.size());
  }
  if (length < 0) return errno == EOPNOTSUPP || errno == ENOSYS ? Status() : Status::System(errno);
  for (std::size_t at = 0; at < static_cast<std::size_t>(length);) {
    result.emplace_back(names.data() + at);
    at += result.back().size() + 1;
  }
  return {};
}

Status AttributeValue(int file, const std::string& name, std::string& value) {
  for (;;) {
    const ssize_t length = fgetxattr(file, name.c_str(), nullptr, 0);
    if (length < 0) return Status::System(errno);
    value.resize(static_cast<std::size_t>(length));
    if (length == 0) return {};
    const ssize_t got = fgetxattr(file, name.c_str(), value.data(), value.size());
    if (got >= 0) {
      value.resize(static_cast<std::size_t>(got));
      return {};
    }
    if (errno != ERANGE) return Status::System(errno);
  }
}

// What the folder gave the new file and the old one has not (a default access list, for one) goes; what the
// old one has comes. A label that the system gives by itself may refuse to be written, and then is equal.
Status CopyAttributes(int from, int to) {
  std::vector<std::string> wanted;
  std::vector<std::string> given;
  if (Status status = AttributeNames(from, wanted); !status.ok()) return status;
  if (Status status = AttributeNames(to, given); !status.ok()) return status;
  for (const std::string& name : given) {
    const bool keep = std::find(wanted.begin(), wanted.end(), name) != wanted.end();
    if (keep || name.starts_with("security.")) continue;
    if (fremovexattr(to, name.c_str()) != 0) return Status::System(errno);
  }
  for (const std::string& name : wanted) {
    std::string value;
    if (Status status = AttributeValue(from, name, value); !status.ok()) return status;
    if (fsetxattr(to, name.c_str(), value.data(), value.size(), 0) == 0) continue;
    const int error = errno;
    std::string present;
    if (!AttributeValue(to, name, present).ok() || present != value) return Status::System(error);
  }
  return {};
}

Status TakeOver(int old_file, const struct stat& old_info, int new_file) {
  struct stat new_info {};
  if (fstat(new_file, &new_info) != 0) return Status::System(errno);
  const bool same_owner = new_info.st_uid == old_info.st_uid && new_info.st_gid == old_info.st_gid;
  if (!same_owner && fchown(new_file, old_info.st_uid, old_info.st_gid) != 0) return Status::System(errno);
  if (Status status = CopyAttributes(old_file, new_file); !status.ok()) return status;
  constexpr mode_t kPermissions = 07777;
  if (fchmod(new_file, old_info.st_mode & kPermissions) != 0) return Status::System(errno);
  return {};
}

Status FillAndRename(TemporaryFile& temporary, const Place& place, int old_file, const struct stat& old_info,
                     FileStamp& stamp, std::span<const std::string_view> pieces) {
  if (Status status = WritePieces(temporary.file(), pieces); !status.ok()) return status;
  if (Status status = TakeOver(old_file, old_info, temporary.file()); !status.ok()) return status;
  if (Status status = FlushFile(temporary.file()); !status.ok()) return status;
  struct stat new_info {};
  if (fstat(temporary.file(), &new_info) != 0) return Status::System(errno);
  if (Status status = CheckUntouched(place, stamp, old_info); !status.ok()) return status;
  if (Status status = temporary.RenameTo(place.name); !status.ok()) return status;
  stamp = StampOf(new_info);
  return {};
}

// An append-only folder takes new files and never gives one away: nothing is to be tried there.
Status CheckGivesAway(int folder) {
  unsigned flags = 0;
  const bool known = ioctl(folder, FS_IOC_GETFLAGS, &flags) == 0;
  return known && (flags & FS_APPEND_FL) != 0 ? Status::System(EPERM) : Status();
}

Status ReplaceByRename(const Place& place, int old_file, const struct stat& old_info, FileStamp& stamp,
                       std::span<const std::string_view> pieces) {
  TemporaryFile temporary(place.folder);
  if (Status status = temporary.Create(); !status.ok()) return status;
  return temporary.RemoveAfter(FillAndRename(temporary, place, old_file, old_info, stamp, pieces));
}

Status CopyContent(int from, int to) {
  if (lseek(from, 0, SEEK_SET) != 0 || lseek(to, 0, SEEK_SET) != 0) return Status::System(errno);
  std::vector<char> block(std::size_t{1} << 16);
  off_t total = 0;
  for (;;) {
    const ssize_t got = read(from, block.data(), block.size());
    if (got < 0 && errno == EINTR) continue;
    if (got < 0) return Status::System(errno);
    if (got == 0) break;
    if (Status status = WriteAll(to, std::string_view(block.data(), static_cast<std::size_t>(got)));
        !status.ok()) {
      return status;
    }
    total += got;
  }
  if (ftruncate(to, total) != 0) return Status::System(errno);
  return FlushFile(to);
}

Status OverwriteContent(int file, std::span<const std::string_view> pieces) {
  off_t total = 0;
  for (const std::string_view piece : pieces) total += static_cast<off_t>(piece.size());
  // Room for all of it first, so that a full disk is noticed before a byte has changed.
  if (fallocate(file, FALLOC_FL_KEEP_SIZE, 0, std::max<off_t>(total, 1)) != 0 && errno != EOPNOTSUPP &&
      errno != ENOSYS) {
    return Status::System(errno);
  }
  if (lseek(file, 0, SEEK_SET) != 0) return Status::System(errno);
  if (Status status = WritePieces(file, pieces); !status.ok()) return status;
  if (ftruncate(file, total) != 0) return Status::System(errno);
  return FlushFile(file);
}

Status CopyAndOverwrite(TemporaryFile& copy, const Place& place, int old_file, FileStamp& stamp,
                        std::span<const std::string_view> pieces) {
  FileHandle file(openat(place.folder, place.name.c_str(), O_WRONLY | O_NOFOLLOW | O_CLOEXEC));
  if (!file.is_open()) return Status::System(errno);
  if (Status status = CopyContent(old_file, copy.file()); !status.ok()) return status;
  if (Status status = FlushFile(place.folder); !status.ok()) return status;
  struct stat info {};
  if (Status status = CheckUnchanged(place, stamp, info); !status.ok()) return status;
  if (Status status = OverwriteContent(file.get(), pieces); !status.ok()) {
    if (CopyContent(copy.file(), file.get()).ok()) return status;
    return Status::Failure(status.reason() + "; its old content is in " + copy.Keep());
  }
  if (fstat(file.get(), &info) == 0) stamp = StampOf(info);
  return {};
}

// A rename would part the file from its other names.
Status ReplaceInPlace(const Place& place, int old_file, FileStamp& stamp,
                      std::span<const std::string_view> pieces, Status& afterwards) {
  TemporaryFile copy(place.folder);
  if (Status status = copy.CreateCopy(); !status.ok()) return status;
  Status status = CopyAndOverwrite(copy, place, old_file, stamp, pieces);
  if (!status.ok()) return copy.RemoveAfter(std::move(status));
  afterwards = copy.RemoveAfter({});
  return {};
}

}  // namespace

FileStamp StampOf(const struct stat& info) {
  constexpr std::int64_t kNanosecondsPerSecond = 1000000000;
  return {static_cast<std::uint64_t>(info.st_size),
          static_cast<std::int64_t>(info.st_mtim.tv_sec) * kNanosecondsPerSecond + info.st_mtim.tv_nsec,
          static_cast<std::uint64_t>(info.st_ino), static_cast<std::uint64_t>(info.st_dev)};
}

Status FileWasChanged() {
  return Status::Failure("The file was changed on disk since it was read");
}

Status ReplaceFile(int folder, const std::string& name, FileStamp& stamp,
                   std::span<const std::string_view> pieces, Status& afterwards) {
  Place place{folder, name, {}};
  if (Status status = FollowLinks(place); !status.ok()) return status;
  struct stat info {};
  if (Status status = CheckUnchanged(place, stamp, info); !status.ok()) return status;
  if (faccessat(place.folder, place.name.c_str(), W_OK, AT_EACCESS) != 0) return Status::System(errno);
  FileHandle old_file(
      openat(place.folder, place.name.c_str(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC));
  if (!old_file.is_open()) return Status::System(errno);
  if (fstat(old_file.get(), &info) != 0) return Status::System(errno);
  if (Status status = CheckGivesAway(place.folder); !status.ok()) return status;
  if (Status status = Lock(old_file.get()); !status.ok()) return status;
  Status status = info.st_nlink > 1 ? ReplaceInPlace(place, old_file.get(), stamp, pieces, afterwards)
                                    : ReplaceByRename(place, old_file.get(), info, stamp, pieces);
  if (!status.ok() || !place.own_folder.is_open()) return status;
  if (Status flushed = FlushFile(place.folder); !flushed.ok()) afterwards = std::move(flushed);
  return {};
}

}  // namespace tessaril
