#ifndef TESSARIL_ENGINE_STORED_NAMES_H_
#define TESSARIL_ENGINE_STORED_NAMES_H_

#include <functional>
#include <set>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "engine/files.h"

namespace tessaril {

/// How the names of files are spelled in their folders, and what of that a run has changed. Each folder is
/// listed once.
class StoredNames {
 public:
  explicit StoredNames(Files& files) : files_(files) {}

  /// The name, if it has an upper-case letter, of the file in `folder` that a link to `name` means: the one
  /// of exactly that name, or else the first that reads the same but for letter case. Empty when there is no
  /// such file, or its name is in lower case. Symbolic links to files count as files.
  std::string UpperCaseName(const std::string& folder, std::string_view name);

  /// Gives a file of `folder` its name in lower case.
  Status Rename(const std::string& folder, const std::string& name);

  /// How many files were renamed: names that were looked up before the last time may be others now.
  unsigned renames() const { return renames_; }

  /// The path of a file that was at `path` when the run began: another one when it has been renamed since,
  /// whatever way led to its folder.
  std::string PresentPath(const std::string& path) const;

 private:
  // The files of a folder of which some spelling has an upper-case letter, by their names in lower case.
  using Spellings = std::unordered_map<std::string, std::vector<std::string>>;

  std::string Choose(const std::string& folder, std::string_view name);
  const Spellings& SpellingsIn(const std::string& folder);

  Files& files_;
  std::unordered_map<std::string, Spellings> folders_;
  unsigned renames_ = 0;
  std::set<std::string, std::less<>> renamed_;  // names that files had
};

}  // namespace tessaril

#endif  // TESSARIL_ENGINE_STORED_NAMES_H_
