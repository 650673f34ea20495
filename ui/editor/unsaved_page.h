#ifndef TESSARIL_UI_EDITOR_UNSAVED_PAGE_H_
#define TESSARIL_UI_EDITOR_UNSAVED_PAGE_H_

#include <map>
#include <string>
#include <string_view>

#include "engine/files.h"

namespace tessaril {

/// The page "~temp.htm" beside the edited file, which holds the editor's unsaved text while the browser shows
/// it. What a user keeps under that name is neither overwritten unasked nor deleted: a page counts as the
/// program's own only when it was written in this run and nobody has changed it since.
class UnsavedPage {
 public:
  explicit UnsavedPage(Files& files) : files_(files) {}

  /// Its path for an edited file; in the current folder when that has no path.
  std::string PathFor(const std::string& edited_file) const;

  /// Whether there is something at the path that is not the program's own.
  bool IsForeign(const std::string& path) const;

  /// Makes `text` the whole page in the place of a file that may stand there. Fails where a link stands.
  Status Write(const std::string& path, std::string_view text);

  /// Deletes a page of the program's own, nothing else. What cannot be deleted now may be by a later call.
  void Delete(const std::string& path);

  /// Deletes all of the program's own.
  void DeleteAll();

 private:
  bool IsOwn(const std::string& path) const;

  Files& files_;
  std::map<std::string, FileStamp> own_;  // as they were when they had been written
};

}  // namespace tessaril

#endif  // TESSARIL_UI_EDITOR_UNSAVED_PAGE_H_
