#include "settings/settings_file.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <cerrno>
#include <filesystem>
#include <system_error>
#include <utility>

#include "engine/ascii.h"
#include "engine/disk_files.h"
#include "engine/paths.h"
#include "engine/temporary_file.h"
#include "settings/whole_file.h"

namespace tessaril {
namespace {

bool CanBeWritten(const std::string& folder_path) {
  const FileHandle folder(open(folder_path.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  if (!folder.is_open()) return false;
  TemporaryFile trial(folder.get());
  return trial.Create().ok() && trial.Remove();
}

// Makes a folder that only the user may enter, and those above it; one that is there stays as it is.
Status MakeFolder(const std::string& path) {
  constexpr mode_t kUserOnly = 0700;
  const auto make = [&path] { return mkdir(path.c_str(), kUserOnly) == 0 || errno == EEXIST ? 0 : errno; };
  int error = make();
  const std::string above(FolderOf(path));
  if (error == ENOENT && above.size() < path.size()) {
    if (Status status = MakeFolder(above); !status.ok()) return status;
    error = make();
  }
  return error == 0 ? Status() : Status::System(error);
}

// Where the file at `path` really lies, be it there or not. Of links that lead in a circle one is returned.
std::string BehindLinks(std::string path) {
  constexpr int kMostLinks = 40;  // as many as the system itself follows
  for (int links = 0; links < kMostLinks; ++links) {
    std::error_code no_link;
    const std::filesystem::path target = std::filesystem::read_symlink(path, no_link);
    if (no_link) break;
    path = (std::filesystem::path(path).parent_path() / target).string();
  }
  return path;
}

bool IsThere(const std::string& path) {
  struct stat info {};
  return stat(path.c_str(), &info) == 0 || errno != ENOENT;
}

}  // namespace

SettingsFile::SettingsFile(std::string program_folder, std::string user_folder)
    : program_folder_(std::move(program_folder)), folder_(program_folder_) {
  if (CanBeWritten(program_folder_)) return;
  folder_ = std::move(user_folder);
  (void)MakeFolder(folder_);  // told by the first Save, which tries it again
}

Settings SettingsFile::Load() const {
  std::string path = JoinPath(folder_, kSettingsFileName);
  if (!IsThere(path)) path = JoinPath(program_folder_, kSettingsFileName);
  DiskFiles files;
  ByteBuffer content;
  FileStamp stamp;
  const bool is_read = files.Read(path, content, stamp).ok();
  SettingsReading reading = ReadSettings(is_read ? content.view() : DefaultSettingsText());
  if (!is_read || reading.damaged) (void)Write(std::string(DefaultSettingsText()).append(CrLf));
  return std::move(reading.settings);
}

Status SettingsFile::Save(const Settings& settings) const {
  return Write(SettingsText(settings));
}

Status SettingsFile::Write(const std::string& content) const {
  if (folder_ != program_folder_) {
    if (Status status = MakeFolder(folder_); !status.ok()) return status;
  }
  return WriteWholeFile(BehindLinks(JoinPath(folder_, kSettingsFileName)), content);
}

}  // namespace tessaril
