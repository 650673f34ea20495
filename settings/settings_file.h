#ifndef TESSARIL_SETTINGS_SETTINGS_FILE_H_
#define TESSARIL_SETTINGS_SETTINGS_FILE_H_

#include <string>

#include "engine/status.h"
#include "settings/settings.h"

namespace tessaril {

/// The settings file on the disk, and the choice of the folder that it and the temporary page live in: the
/// program's own, or, where that cannot be written, the user's data folder. The choice is made once, when
/// the object is made, by really creating a file and removing it: permissions alone do not tell of
/// everything that may be in the way.
class SettingsFile {
 public:
  /// Both paths are absolute and end without a separator, unless they are the root. The user's data folder
  /// and those above it are created, for the user alone, when they are needed and missing.
  SettingsFile(std::string program_folder, std::string user_folder);

  /// Where the settings file and the temporary page are written. It may be missing when it could not be
  /// created: what is written there fails then.
  const std::string& folder() const { return folder_; }

  /// The settings in the file, or in one beside the program when only that exists. Where there is none, or
  /// it cannot be read or is damaged, the default text is written to the file, and nobody is told.
  Settings Load() const;

  /// Replaces the file as a whole; one that is a symbolic link stays a link and leads to the new content,
  /// even if it led nowhere. On failure the old file is whole, and the reason is in the system's words.
  Status Save(const Settings& settings) const;

 private:
  Status Write(const std::string& content) const;

  std::string program_folder_;
  std::string folder_;
};

}  // namespace tessaril

#endif  // TESSARIL_SETTINGS_SETTINGS_FILE_H_
