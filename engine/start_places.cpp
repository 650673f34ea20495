#include "engine/start_places.h"

#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <system_error>

#include "engine/paths.h"

namespace tessaril {
namespace {

// The folder that the program was started in, by the path that the shell went by where it can be believed.
// Fails when it is there no more.
Status StartFolder(std::string& start) {
  struct stat by_name {};
  struct stat here {};
  const char* const name = std::getenv("PWD");
  if (name != nullptr && name[0] == kSeparator && AbsolutePath("/", name) == name &&
      stat(name, &by_name) == 0 && stat(".", &here) == 0 && by_name.st_dev == here.st_dev &&
      by_name.st_ino == here.st_ino) {
    start = name;
    return {};
  }
  const std::unique_ptr<char, decltype(&std::free)> folder(getcwd(nullptr, 0), &std::free);
  if (folder == nullptr || folder.get()[0] != kSeparator) return Status::System(ENOENT);
  start = folder.get();
  return {};
}

bool HasStepUp(const std::string& path) {
  return ("/" + path + "/").find("/../") != std::string::npos;
}

// A step up from a link to a folder leads out of the folder that it links to. Where the text of the path
// hides that, `path` becomes what the system takes `given` for.
void FollowSystem(const std::string& given, std::string& path) {
  struct stat meant {};
  struct stat found {};
  if (stat(given.c_str(), &meant) != 0) return;
  if (stat(path.c_str(), &found) == 0 && found.st_dev == meant.st_dev && found.st_ino == meant.st_ino) return;
  const std::unique_ptr<char, decltype(&std::free)> whole(realpath(given.c_str(), nullptr), &std::free);
  if (whole != nullptr) path = whole.get();
}

}  // namespace

Status MakeAbsolute(const std::string& given, std::string& path) {
  if (given.empty()) return Status::System(ENOENT);
  std::string start;
  if (given[0] != kSeparator) {
    if (Status status = StartFolder(start); !status.ok()) return status;
  }
  path = AbsolutePath(start, given);
  if (HasStepUp(given)) FollowSystem(given, path);
  return {};
}

Status FindProgramFolder(std::string& folder) {
  std::error_code error;
  const std::string program = std::filesystem::read_symlink("/proc/self/exe", error).string();
  if (error) return Status::Failure("The program's folder cannot be found: " + error.message());
  folder = FolderOf(program);
  return {};
}

}  // namespace tessaril
