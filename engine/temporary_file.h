#ifndef TESSARIL_ENGINE_TEMPORARY_FILE_H_
#define TESSARIL_ENGINE_TEMPORARY_FILE_H_

#include <sys/types.h>

#include <string>

#include "engine/file_handle.h"
#include "engine/status.h"

namespace tessaril {

/// A new file in a folder that the caller keeps open, named ".tessaril-" and what tells it from others; gone
/// again unless it was given another name.
class TemporaryFile {
 public:
  explicit TemporaryFile(int folder) : folder_(folder) {}
  TemporaryFile(const TemporaryFile&) = delete;
  TemporaryFile& operator=(const TemporaryFile&) = delete;
  ~TemporaryFile() { Remove(); }

  /// Creates it, open for reading and writing, once. `mode` are the permissions before the umask.
  Status Create(mode_t mode = 0600);

  /// Gives it its final name, over a file that has that name.
  Status RenameTo(const std::string& name);

  /// False when it is still there.
  bool Remove();

  /// Leaves the file where it is, for the user to find, and tells its name.
  std::string Keep();

  int file() const { return file_.get(); }

 private:
  int folder_;
  FileHandle file_;
  std::string name_;
};

}  // namespace tessaril

#endif  // TESSARIL_ENGINE_TEMPORARY_FILE_H_
