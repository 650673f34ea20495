#ifndef TESSARIL_ENGINE_FILE_HANDLE_H_
#define TESSARIL_ENGINE_FILE_HANDLE_H_

#include <unistd.h>

#include <string_view>
#include <utility>

#include "engine/status.h"

namespace tessaril {

/// Owns a file descriptor of the system and closes it.
class FileHandle {
 public:
  FileHandle() = default;
  explicit FileHandle(int descriptor) : descriptor_(descriptor) {}
  FileHandle(FileHandle&& other) noexcept : descriptor_(std::exchange(other.descriptor_, -1)) {}
  FileHandle& operator=(FileHandle&& other) noexcept {
    std::swap(descriptor_, other.descriptor_);
    return *this;
  }
  FileHandle(const FileHandle&) = delete;
  FileHandle& operator=(const FileHandle&) = delete;
  ~FileHandle() { Close(); }

  bool is_open() const { return descriptor_ >= 0; }
  int get() const { return descriptor_; }

  /// Gives the descriptor away.
  int Release() { return std::exchange(descriptor_, -1); }

  /// False, with errno set, when the system reports a failure on closing (a late write error).
  bool Close() { return descriptor_ < 0 || close(Release()) == 0; }

 private:
  int descriptor_ = -1;
};

/// Writes all of `bytes`, however many calls it takes.
Status WriteAll(int descriptor, std::string_view bytes);

/// Brings what was written to a file, or renamed in a folder, to the disk itself.
Status FlushFile(int descriptor);

}  // namespace tessaril

#endif  // TESSARIL_ENGINE_FILE_HANDLE_H_
