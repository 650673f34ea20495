#ifndef TESSARIL_ENGINE_TEMPORARY_FILE_H_
#define TESSARIL_ENGINE_TEMPORARY_FILE_H_

#include <sys/types.h>

#include <string>
#include <string_view>

#include "engine/file_handle.h"
#include "engine/status.h"

namespace tessaril {

/// A new file in a folder that the caller keeps open, named ".tessaril-" and what tells it from others; gone
/// again unless it was given another name. It is locked as long as it is open, which tells it from what a run
/// left behind that was ended by force.
class TemporaryFile {
 public:
  explicit TemporaryFile(int folder) : folder_(folder) {}
  TemporaryFile(const TemporaryFile&) = delete;
  TemporaryFile& operator=(const TemporaryFile&) = delete;
  ~TemporaryFile() { (void)Remove(); }

  /// Creates it, open for reading and writing, once. `mode` are the permissions before the umask.
  Status Create(mode_t mode = 0600);

  /// The same for a copy that may come to be the only one of its content: it is named ".tessaril-old-", and
  /// no run ever removes it but its own.
  Status CreateCopy();

  /// Gives it its final name, over a file that has that name.
  Status RenameTo(const std::string& name);

  /// False when it is still there.
  bool Remove();

  /// Removes it at the end of a step that ended with `status`. Where it stays, that is told as well.
  Status RemoveAfter(Status status);

  /// Leaves the file where it is, for the user to find, and tells its name.
  std::string Keep();

  int file() const { return file_.get(); }
  const std::string& name() const { return name_; }

 private:
  Status CreateNamed(const char* prefix, mode_t mode);

  int folder_;
  FileHandle file_;
  std::string name_;
};

/// Whether a name is one that Create gives.
bool IsTemporaryName(std::string_view name);

/// Removes a file that Create made and that a run left behind when it was ended by force. What may be
/// anything else stays: a file of another user's, of several names, one that is still locked, or that was
/// written within the last minute.
void RemoveLeftover(int folder, const std::string& name);

}  // namespace tessaril

#endif  // TESSARIL_ENGINE_TEMPORARY_FILE_H_
