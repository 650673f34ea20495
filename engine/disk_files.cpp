#include "engine/disk_files.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <climits>
#include <cstdint>
#include <cstdio>
#include <ctime>
#include <limits>
#include <memory>
#include <new>

#include "engine/file_replacement.h"
#include "engine/paths.h"
#include "engine/temporary_file.h"

namespace tessaril {
namespace {

// Opens a folder by a path of any length, piece by piece where the system would refuse the whole.
Status OpenFolderAt(std::string_view path, int access, FileHandle& folder) {
  if (path.find('\0') != std::string_view::npos) return Status::System(ENOENT);
  constexpr std::size_t kLongest = PATH_MAX - 1;
  int base = AT_FDCWD;
  FileHandle passed;
  for (;;) {
    std::size_t length = path.size();
    if (length > kLongest) length = path.rfind(kSeparator, kLongest);
    if (length == 0 || length == std::string_view::npos) return Status::System(ENAMETOOLONG);
    const std::string piece(path.substr(0, length));
    FileHandle next(openat(base, piece.c_str(), access | O_DIRECTORY | O_CLOEXEC));
    if (!next.is_open()) return Status::System(errno);
    path.remove_prefix(std::min(length + 1, path.size()));
    if (path.empty()) {
      folder = std::move(next);
      return {};
    }
    passed = std::move(next);
    base = passed.get();
  }
}

EntryKind KindOf(int folder, const dirent& entry) {
  switch (entry.d_type) {
    case DT_DIR:
      return EntryKind::kFolder;
    case DT_REG:
      return EntryKind::kFile;
    case DT_LNK:
    case DT_UNKNOWN:
      break;
    default:
      return EntryKind::kOther;
  }
  struct stat info {};
  if (fstatat(folder, entry.d_name, &info, 0) != 0) {
    // A link that leads nowhere is no file. Where the system cannot tell, reading it will, and why.
    const bool leads_nowhere = errno == ENOENT || errno == ENOTDIR || errno == ELOOP || errno == ENAMETOOLONG;
    return leads_nowhere ? EntryKind::kOther : EntryKind::kFile;
  }
  if (S_ISREG(info.st_mode)) return EntryKind::kFile;
  if (!S_ISDIR(info.st_mode) || entry.d_type == DT_LNK) return EntryKind::kOther;
  const bool is_itself =
      fstatat(folder, entry.d_name, &info, AT_SYMLINK_NOFOLLOW) == 0 && S_ISDIR(info.st_mode);
  return is_itself ? EntryKind::kFolder : EntryKind::kOther;
}

// The stamp of an open folder. None when it changed just now: the next change could bear the same time.
FileStamp FolderStamp(int folder) {
  constexpr time_t kSecondsToBeSure = 2;
  struct stat info {};
  if (fstat(folder, &info) != 0 || info.st_mtim.tv_sec + kSecondsToBeSure > time(nullptr)) return {};
  return StampOf(info);
}

Status CheckKind(const struct stat& info) {
  if (S_ISDIR(info.st_mode)) return Status::System(EISDIR);
  return S_ISREG(info.st_mode) ? Status() : Status::Failure(kNoRegularFile);
}

// Reads until the end, also where the file grows meanwhile. A read that brings less than was asked for, up
// to the size that the file had, is the end.
Status ReadAll(int file, std::size_t expected, ByteBuffer& bytes) {
  constexpr std::size_t kSpare = 4096;  // more than none, so that the end is noticed by the first read
  bytes.Reserve(expected + kSpare);
  std::size_t total = 0;
  for (;;) {
    if (total == bytes.capacity()) bytes.Reserve(total + total / 8 + kSpare);
    const std::size_t room = bytes.capacity() - total;
    const ssize_t got = read(file, bytes.data() + total, room);
    if (got < 0 && errno == EINTR) continue;
    if (got < 0) return Status::System(errno);
    total += static_cast<std::size_t>(got);
    bytes.SetSize(total);
    const bool at_end = got == 0 || (total == expected && static_cast<std::size_t>(got) < room);
    if (at_end) return {};
  }
}

// Reads until the end and gives away each part that fills the memory.
Status ReadParts(int file, std::size_t expected, ByteBuffer& memory, const Files::UsePiece& use) {
  constexpr std::size_t kPart = std::size_t{1} << 22;                      // bytes
  constexpr std::size_t kMost = std::numeric_limits<std::int32_t>::max();  // bytes of the file
  if (expected > kMost) return Status::System(EFBIG);
  memory.Reserve(kPart);
  std::size_t total = 0;
  std::size_t filled = 0;
  for (bool at_end = false; !at_end;) {
    const std::size_t room = kPart - filled;
    const ssize_t got = read(file, memory.data() + filled, room);
    if (got < 0 && errno == EINTR) continue;
    if (got < 0) return Status::System(errno);
    total += static_cast<std::size_t>(got);
    filled += static_cast<std::size_t>(got);
    if (total > kMost) return Status::System(EFBIG);
    at_end = got == 0 || (total == expected && static_cast<std::size_t>(got) < room);
    if (!at_end && filled < kPart) continue;
    use({memory.data(), filled}, at_end);
    filled = 0;
  }
  return {};
}

// Opens a regular file for reading.
Status OpenRegular(int folder, const std::string& path, FileHandle& file, FileStamp& stamp) {
  // Not blocking, so that a pipe in a page's place is noticed instead of waited for.
  file = FileHandle(openat(folder, path.c_str(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC));
  if (!file.is_open()) return Status::System(errno);
  struct stat info {};
  if (fstat(file.get(), &info) != 0) return Status::System(errno);
  stamp = StampOf(info);
  return CheckKind(info);
}

// Two failures as one, each reason once.
Status Both(Status first, Status second) {
  if (second.ok() || first.reason().find(second.reason()) != std::string::npos) return first;
  return first.ok() ? second : Status::Failure(first.reason() + "; " + second.reason());
}

}  // namespace

Status DiskFiles::FolderFor(std::string_view folder, Purpose purpose, OpenFolder& open_folder) {
  if (current_.is_open() && folder == current_folder_) {
    open_folder.descriptor = current_.get();
    return {};
  }
  // A folder that may be entered but not listed is good enough for reading.
  const int access = purpose == Purpose::kRead ? O_PATH : O_RDONLY;
  Status status = OpenFolderAt(folder, access, open_folder.own);
  open_folder.descriptor = open_folder.own.get();
  return status;
}

Status DiskFiles::ListFolder(const std::string& folder, std::vector<FolderEntry>& entries, FileStamp& stamp) {
  entries.clear();
  leftovers_.erase(folder);
  FileHandle handle;
  if (Status status = OpenFolderAt(folder, O_RDONLY, handle); !status.ok()) return status;
  stamp = FolderStamp(handle.get());
  const auto close_stream = [](DIR* stream) { closedir(stream); };
  const std::unique_ptr<DIR, decltype(close_stream)> stream(fdopendir(handle.get()), close_stream);
  if (stream == nullptr) return Status::System(errno);
  const int descriptor = handle.Release();  // the stream's now
  for (;;) {
    errno = 0;
    const dirent* const entry = readdir(stream.get());
    if (entry == nullptr) return errno == 0 ? Status() : Status::System(errno);
    const std::string_view name(entry->d_name);
    if (name == "." || name == "..") continue;
    if (IsTemporaryName(name)) leftovers_[folder].emplace_back(name);
    entries.push_back({std::string(name), KindOf(descriptor, *entry)});
  }
}

bool DiskFiles::FolderIsUnchanged(const std::string& folder, const FileStamp& stamp) {
  struct stat info {};
  return stamp != FileStamp() && stat(folder.c_str(), &info) == 0 && StampOf(info) == stamp;
}

Status DiskFiles::EnterFolder(const std::string& folder) {
  if (current_.is_open() && folder == current_folder_) {
    if (IsStillCurrent()) return {};
    Status flushed = FlushFolder();
    current_ = {};  // nothing more is read or written in the folder that had this path before
    if (!flushed.ok()) return flushed;
  }
  FileHandle next;
  if (Status status = OpenFolderAt(folder, O_RDONLY, next); !status.ok()) return status;
  Status flushed = FlushFolder();
  current_ = std::move(next);
  current_folder_ = folder;
  return flushed;
}

// Whether the path of the current folder still leads to it: it may have been moved, and another be in its
// place.
bool DiskFiles::IsStillCurrent() const {
  FileHandle there;
  struct stat now {};
  struct stat then {};
  return OpenFolderAt(current_folder_, O_PATH, there).ok() && fstat(there.get(), &now) == 0 &&
         fstat(current_.get(), &then) == 0 && now.st_dev == then.st_dev && now.st_ino == then.st_ino;
}

Status DiskFiles::PlaceOf(const std::string& path, Place& place) {
  if (path.find('\0') != std::string::npos) return Status::System(ENOENT);
  const std::string_view name = NameOf(path);
  place.path = path;
  place.folder.descriptor = AT_FDCWD;
  if (name.empty()) return {};  // a folder, or nothing
  if (path.size() >= PATH_MAX) {
    // Where no part of it can be opened either, the length is what is wrong.
    Status status = FolderFor(FolderOf(path), Purpose::kRead, place.folder);
    if (!status.ok()) return Status::System(ENAMETOOLONG);
    place.path = name;
  } else if (current_.is_open() && FolderOf(path) == current_folder_) {
    place.folder.descriptor = current_.get();
    place.path = name;
  }
  return {};
}

Status DiskFiles::Read(const std::string& path, ByteBuffer& bytes, FileStamp& stamp) {
  bytes.SetSize(0);
  Place place;
  if (Status status = PlaceOf(path, place); !status.ok()) return status;
  FileHandle file;
  if (Status status = OpenRegular(place.folder.descriptor, place.path, file, stamp); !status.ok())
    return status;
  try {
    return ReadAll(file.get(), stamp.size, bytes);
  } catch (const std::bad_alloc&) {
    bytes.SetSize(0);
    return Status::System(ENOMEM);
  }
}

Status DiskFiles::OpenLinked(const std::string& path, FileHandle& file, FileStamp& stamp) {
  Place place;
  if (Status status = PlaceOf(path, place); !status.ok()) return status;
  // A page may name a device, which does something when it is opened: the kind comes first.
  struct stat info {};
  if (fstatat(place.folder.descriptor, place.path.c_str(), &info, 0) != 0) return Status::System(errno);
  if (Status status = CheckKind(info); !status.ok()) return status;
  return OpenRegular(place.folder.descriptor, place.path, file, stamp);
}

Status DiskFiles::ReadStart(const std::string& path, std::size_t most, ByteBuffer& bytes, FileStamp& stamp) {
  bytes.SetSize(0);
  FileHandle file;
  if (Status status = OpenLinked(path, file, stamp); !status.ok()) return status;
  bytes.Reserve(most);
  while (bytes.size() < most) {
    const ssize_t got = read(file.get(), bytes.data() + bytes.size(), most - bytes.size());
    if (got < 0 && errno == EINTR) continue;
    if (got < 0) return Status::System(errno);
    if (got == 0) break;
    bytes.SetSize(bytes.size() + static_cast<std::size_t>(got));
  }
  return {};
}

Status DiskFiles::Examine(const std::string& path, FileStamp& stamp) {
  FileHandle file;
  return OpenLinked(path, file, stamp);
}

Status DiskFiles::ReadPieces(const std::string& path, FileStamp& stamp, ByteBuffer& memory,
                             const UsePiece& use) {
  FileHandle file;
  if (Status status = OpenLinked(path, file, stamp); !status.ok()) return status;
  try {
    return ReadParts(file.get(), stamp.size, memory, use);
  } catch (const std::bad_alloc&) {
    return Status::System(ENOMEM);
  }
}

Status DiskFiles::Rename(const std::string& folder, const std::string& from, const std::string& to) {
  OpenFolder open_folder;
  if (Status status = FolderFor(folder, Purpose::kChange, open_folder); !status.ok()) return status;
  const int at = open_folder.descriptor;
  if (renameat2(at, from.c_str(), at, to.c_str(), RENAME_NOREPLACE) != 0) {
    if (errno != EINVAL && errno != ENOSYS) return Status::System(errno);
    // A file system that cannot promise not to overwrite: a second name never does.
    if (linkat(at, from.c_str(), at, to.c_str(), 0) != 0) return Status::System(errno);
    if (unlinkat(at, from.c_str(), 0) != 0) {
      const int error = errno;
      unlinkat(at, to.c_str(), 0);
      return Status::System(error);
    }
  }
  NoteFlush(open_folder, {});
  return {};
}

Status DiskFiles::ReplaceContent(const std::string& path, FileStamp& stamp,
                                 std::span<const std::string_view> pieces) {
  OpenFolder folder;
  if (Status status = FolderFor(FolderOf(path), Purpose::kChange, folder); !status.ok()) return status;
  RemoveLeftovers(FolderOf(path), folder);
  Status afterwards;
  Status status = ReplaceFile(folder.descriptor, std::string(NameOf(path)), stamp, pieces, afterwards);
  if (!status.ok()) return status;
  NoteFlush(folder, std::move(afterwards));
  return {};
}

// A run that changes pages of a folder removes what one left there that was ended by force.
void DiskFiles::RemoveLeftovers(std::string_view path, const OpenFolder& folder) {
  const auto found = leftovers_.find(path);
  if (found == leftovers_.end()) return;
  for (const std::string& name : found->second) RemoveLeftover(folder.descriptor, name);
  leftovers_.erase(found);
}

// After a change in a folder: the current one is flushed later, another one now. `flushed` tells how flushing
// went so far. What is still to be told of another change stays.
void DiskFiles::NoteFlush(const OpenFolder& folder, Status flushed) {
  if (!folder.own.is_open()) {
    current_is_flushed_ = false;
  } else if (flushed.ok()) {
    flushed = FlushFile(folder.descriptor);
  }
  flush_failure_ = Both(std::move(flush_failure_), std::move(flushed));
}

Status DiskFiles::FlushFolder() {
  Status flushed = std::exchange(flush_failure_, {});
  if (std::exchange(current_is_flushed_, true)) return flushed;
  return Both(std::move(flushed), FlushFile(current_.get()));
}

}  // namespace tessaril
