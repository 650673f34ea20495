#ifndef TESSARIL_SETTINGS_TEMPORARY_PAGE_H_
#define TESSARIL_SETTINGS_TEMPORARY_PAGE_H_

#include <string>
#include <string_view>

#include "engine/file_handle.h"
#include "engine/status.h"

namespace tessaril {

/// The page that a running program writes to be shown in a browser: "~TSLtemp.htm" in a folder, or
/// "~TSLtemp-2.htm", "~TSLtemp-3.htm" and so on while other programs have the names before it.
///
/// A name is had by a lock on a file of its own (".~TSLtemp.lock", ".~TSLtemp-2.lock") that is held as long
/// as the object lives; the system releases it when the program ends in whatever way, and no program that
/// this one starts inherits it. A lock file is removed by its holder alone, while it holds the lock, and a
/// lock counts only when the file is still in its place afterwards: so two programs never have the same
/// name. The lock file of a program that crashed stays until the name has been used again.
class TemporaryPage {
 public:
  /// Takes the first name that is free in `folder`, an absolute path.
  explicit TemporaryPage(const std::string& folder);
  /// Gives the name up. The page stays, unless it was deleted before.
  ~TemporaryPage();
  TemporaryPage(const TemporaryPage&) = delete;
  TemporaryPage& operator=(const TemporaryPage&) = delete;

  /// The page's path, whether it is written or not.
  const std::string& path() const { return path_; }

  /// Makes `content`, exactly these bytes, the whole page. On failure an earlier page is whole. Where no name
  /// could be taken (a folder that is missing or cannot be written), each call fails with the reason.
  Status Write(std::string_view content) const;

  /// Deletes the page, also one that a program left which had the name before and crashed; a failure is
  /// nobody's concern.
  void Delete() const;

 private:
  Status Take(const std::string& lock_path);

  std::string path_;
  std::string lock_path_;
  FileHandle lock_;  // open while the name is this program's
  Status failure_;   // why it is not
};

}  // namespace tessaril

#endif  // TESSARIL_SETTINGS_TEMPORARY_PAGE_H_
