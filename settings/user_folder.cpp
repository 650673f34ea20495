#include "settings/user_folder.h"

#include <pwd.h>
#include <unistd.h>

#include <cstdlib>
#include <string_view>

#include "engine/paths.h"

namespace tessaril {
namespace {

// What a variable says, when it is an absolute path.
std::string_view FolderIn(const char* variable) {
  const char* const value = std::getenv(variable);
  return value != nullptr && *value == kSeparator ? value : std::string_view();
}

std::string_view HomeFolder() {
  if (const std::string_view home = FolderIn("HOME"); !home.empty()) return home;
  const passwd* const user = getpwuid(geteuid());
  return user != nullptr && user->pw_dir != nullptr && *user->pw_dir == kSeparator ? user->pw_dir : "/";
}

}  // namespace

std::string UserFolder() {
  const std::string_view data = FolderIn("XDG_DATA_HOME");
  return data.empty() ? AbsolutePath(HomeFolder(), ".local/share/tessaril") : AbsolutePath(data, "tessaril");
}

std::string UndoFolder(const std::string& user_folder) {
  return JoinPath(user_folder, "undo");
}

}  // namespace tessaril
