#include "site/site_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>

#include "engine/disk_files.h"
#include "engine/file_handle.h"
#include "engine/paths.h"
#include "engine/temporary_file.h"

namespace tessaril {
namespace {

const std::string kName(kSiteFileName);

// Whether the open folder has an entry of the site file's name that could be one. A link that leads nowhere
// is, too: better that reading it fails than that a site goes by other rules unnoticed.
bool HasSiteFile(int folder) {
  struct stat info {};
  return fstatat(folder, kName.c_str(), &info, AT_SYMLINK_NOFOLLOW) == 0 && !S_ISDIR(info.st_mode);
}

FileHandle OpenFolder(int above, const std::string& name) {
  return FileHandle(openat(above, name.c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC));
}

// A file with this content and a name of its own in the open folder, on the disk as a whole.
Status WriteNewFile(TemporaryFile& file, std::string_view content) {
  if (Status status = file.Create(0666); !status.ok()) return status;
  if (Status status = WriteAll(file.file(), content); !status.ok()) return status;
  return FlushFile(file.file());
}

// Values that no file could state (a text that is empty or not UTF-8) are refused before anything is written.
Status CheckStates(std::string_view text, const SiteRules& rules) {
  SiteRules stated;
  if (Status status = ReadSiteRules(text, stated); !status.ok()) return status;
  return stated == rules ? Status() : Status::Failure("The file cannot state these rules");
}

}  // namespace

std::string FindSiteFile(const std::string& folder) {
  // From the root down, as paths may be longer than the system takes in one piece.
  std::string found;
  FileHandle open_folder = OpenFolder(AT_FDCWD, "/");
  for (std::size_t end = 0; open_folder.is_open();) {
    if (HasSiteFile(open_folder.get()))
      found = JoinPath(end == 0 ? "/" : folder.substr(0, end), kSiteFileName);
    const std::size_t begin = folder.find_first_not_of(kSeparator, end);
    if (begin == std::string::npos) break;
    end = std::min(folder.find(kSeparator, begin), folder.size());
    open_folder = OpenFolder(open_folder.get(), folder.substr(begin, end - begin));
  }
  return found;
}

Status LoadSite(Files& files, const std::string& folder, std::optional<Site>& site) {
  site.reset();
  const std::string path = FindSiteFile(folder);
  if (path.empty()) return {};
  ByteBuffer bytes;
  FileStamp stamp;
  SiteRules rules;
  Status status = files.Read(path, bytes, stamp);
  if (status.ok()) status = ReadSiteRules(bytes.view(), rules);
  if (!status.ok()) return Status::Failure(path + ": " + status.reason());
  site = Site{std::string(FolderOf(path)), std::move(rules)};
  return {};
}

Status CreateSiteFile(const std::string& root, const SiteRules& rules) {
  const std::string text = NewSiteText(rules);
  if (Status status = CheckStates(text, rules); !status.ok()) return status;
  const FileHandle folder(open(root.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  if (!folder.is_open()) return Status::System(errno);
  TemporaryFile file(folder.get());
  if (Status status = WriteNewFile(file, text); !status.ok()) return file.RemoveAfter(std::move(status));
  DiskFiles files;
  Status status = files.Rename(root, file.name(), kName);  // which never overwrites
  if (!status.ok()) return file.RemoveAfter(std::move(status));
  (void)file.Keep();
  return {};
}

Status SaveSiteRules(Files& files, const std::string& root, const SiteRules& rules) {
  const std::string path = JoinPath(root, kSiteFileName);
  struct stat info {};
  if (lstat(path.c_str(), &info) != 0 && errno == ENOENT) return CreateSiteFile(root, rules);
  ByteBuffer bytes;
  FileStamp stamp;
  if (Status status = files.Read(path, bytes, stamp); !status.ok()) return status;
  SiteRules old_rules;
  if (Status status = ReadSiteRules(bytes.view(), old_rules); !status.ok()) return status;
  if (old_rules == rules) return {};
  const std::string text = ChangedSiteText(bytes.view(), rules);
  if (Status status = CheckStates(text, rules); !status.ok()) return status;
  const std::array<std::string_view, 1> pieces{text};
  if (Status status = files.ReplaceContent(path, stamp, pieces); !status.ok()) return status;
  return files.FlushFolder();
}

Status RemoveSiteFile(const std::string& root) {
  return unlink(JoinPath(root, kSiteFileName).c_str()) == 0 ? Status() : Status::System(errno);
}

}  // namespace tessaril
