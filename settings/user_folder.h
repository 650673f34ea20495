#ifndef TESSARIL_SETTINGS_USER_FOLDER_H_
#define TESSARIL_SETTINGS_USER_FOLDER_H_

#include <string>

namespace tessaril {

/// The folder for what the program keeps for its user, whether it exists or not: "tessaril" in the folder of
/// the variable XDG_DATA_HOME, or else in ".local/share" of the home folder. Absolute, without a separator at
/// its end.
std::string UserFolder();

/// The folder in it of what is kept to undo runs.
std::string UndoFolder(const std::string& user_folder);

}  // namespace tessaril

#endif  // TESSARIL_SETTINGS_USER_FOLDER_H_
