#ifndef TESSARIL_ENGINE_FILES_H_
#define TESSARIL_ENGINE_FILES_H_

#include <cstdint>
#include <functional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "engine/byte_buffer.h"
#include "engine/status.h"

namespace tessaril {

/// What tells that a file is still the one that was read.
struct FileStamp {
  std::uint64_t size = 0;     // bytes
  std::int64_t modified = 0;  // nanoseconds since 1970
  std::uint64_t inode = 0;
  std::uint64_t device = 0;

  bool operator==(const FileStamp&) const = default;
};

enum class EntryKind {
  kFolder,  // a folder itself, not a symbolic link to one
  kFile,    // a regular file or a symbolic link to one
  kOther
};

struct FolderEntry {
  std::string name;  // bytes as the file system has them
  EntryKind kind;
};

/// The door to the file system: everything that the engine reads or writes passes here, and here stand the
/// doubles of the tests. Paths are absolute, "/" parts them, they may be longer than the system's own limit.
/// Only regular files are read or written; for all else a call fails without opening it for long.
class Files {
 public:
  virtual ~Files() = default;

  /// Fills `entries` with all entries of a folder ("." and ".." left out), in no order, and `stamp` for
  /// FolderIsUnchanged. On failure `entries` holds what was read until then.
  virtual Status ListFolder(const std::string& folder, std::vector<FolderEntry>& entries,
                            FileStamp& stamp) = 0;

  /// Whether the folder certainly has the entries that it had when `stamp` was made.
  virtual bool FolderIsUnchanged(const std::string& folder, const FileStamp& stamp) = 0;

  /// Makes `folder` the current folder; on failure the current folder stays. To enter the current one again
  /// finds out whether another has taken its place on the disk.
  virtual Status EnterFolder(const std::string& folder) = 0;

  /// The current folder by the path that it was entered by, symbolic links not resolved.
  virtual const std::string& CurrentFolder() const = 0;

  /// Reads a file whole into `bytes`, whose former content is dropped.
  virtual Status Read(const std::string& path, ByteBuffer& bytes, FileStamp& stamp) = 0;

  /// The same for the first `most` bytes of a file of any size; fewer are the whole file.
  virtual Status ReadStart(const std::string& path, std::size_t most, ByteBuffer& bytes,
                           FileStamp& stamp) = 0;

  /// Whether a file can be opened for reading. `path` may be anything that a page names: an empty one is no
  /// file, and what is no regular file is not opened at all.
  virtual Status Examine(const std::string& path, FileStamp& stamp) = 0;

  /// Opens a file as Examine does and gives its content to `use` piece by piece; the last one, which may be
  /// empty, is the end. `memory` is used for that. Fails, too, when the file has more than 2^31 - 1 bytes
  /// ("File too large"); `use` may have got a part then.
  using UsePiece = std::function<void(std::string_view piece, bool last)>;
  virtual Status ReadPieces(const std::string& path, FileStamp& stamp, ByteBuffer& memory,
                            const UsePiece& use) = 0;

  /// Gives a file or symbolic link of `folder` another name there. Fails when that name is in use.
  virtual Status Rename(const std::string& folder, const std::string& from, const std::string& to) = 0;

  /// Replaces the content of a file by `pieces`, one after the other. `stamp` is the one that the file was
  /// read with, and becomes that of the new content. The file is old or new as a whole at any moment: on
  /// failure, and when the file is no longer the one that was read, it holds its old content.
  virtual Status ReplaceContent(const std::string& path, FileStamp& stamp,
                                std::span<const std::string_view> pieces) = 0;

  /// Makes sure that what was replaced or renamed in the current folder outlives a power failure; what is
  /// done elsewhere is flushed at once, and this call tells when that failed. (The content of each file is
  /// flushed before it takes the old one's place: until this call it is only open which of the two would be
  /// found.)
  virtual Status FlushFolder() = 0;
};

}  // namespace tessaril

#endif  // TESSARIL_ENGINE_FILES_H_
