#include "engine/temporary_file.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <atomic>
#include <cerrno>
#include <cstdio>
#include <ctime>
#include <utility>

namespace tessaril {

namespace {

constexpr std::string_view kPrefix = ".tessaril-";

// A file of this user's that nobody has open and that only bears this name.
bool IsLeftBehind(int file) {
  constexpr time_t kSecondsToBeSure = 60;
  struct stat info {};
  if (fstat(file, &info) != 0 || !S_ISREG(info.st_mode) || info.st_nlink != 1) return false;
  const bool is_own = geteuid() == 0 || info.st_uid == geteuid();
  const bool is_old = info.st_mtim.tv_sec + kSecondsToBeSure < time(nullptr);
  return is_own && is_old && flock(file, LOCK_EX | LOCK_NB) == 0;
}

}  // namespace

Status TemporaryFile::Create(mode_t mode) {
  return CreateNamed(".tessaril-", mode);
}

Status TemporaryFile::CreateCopy() {
  return CreateNamed(".tessaril-old-", 0600);
}

Status TemporaryFile::CreateNamed(const char* prefix, mode_t mode) {
  static std::atomic<unsigned> counter{0};
  constexpr int kMostTries = 1000;
  for (int tries = 0; tries < kMostTries; ++tries) {
    std::array<char, 48> name;
    std::snprintf(name.data(), name.size(), "%s%lx-%x", prefix, static_cast<unsigned long>(getpid()),
                  counter.fetch_add(1));
    std::string its_name(name.data());  // whose memory comes before the file
    file_ = FileHandle(openat(folder_, its_name.c_str(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, mode));
    if (file_.is_open()) {
      name_ = std::move(its_name);
      // Where the file system knows no locks, others cannot take this one either.
      [[maybe_unused]] const int locked = flock(file_.get(), LOCK_EX | LOCK_NB);
      return {};
    }
    if (errno != EEXIST) break;
  }
  return Status::System(errno);
}

Status TemporaryFile::RenameTo(const std::string& name) {
  if (renameat(folder_, name_.c_str(), folder_, name.c_str()) != 0) return Status::System(errno);
  name_.clear();
  return {};
}

bool TemporaryFile::Remove() {
  if (!name_.empty() && unlinkat(folder_, name_.c_str(), 0) != 0) return false;
  name_.clear();
  return true;
}

Status TemporaryFile::RemoveAfter(Status status) {
  if (Remove()) return status;
  const std::string left = Status::System(errno).reason() + ": " + Keep() + " could not be removed";
  return Status::Failure(status.ok() ? left : status.reason() + "; " + left);
}

std::string TemporaryFile::Keep() {
  return std::exchange(name_, {});
}

bool IsTemporaryName(std::string_view name) {
  if (!name.starts_with(kPrefix)) return false;
  name.remove_prefix(kPrefix.size());
  const std::size_t dash = name.find('-');
  const auto is_number = [](std::string_view digits) {
    return !digits.empty() && digits.find_first_not_of("0123456789abcdef") == std::string_view::npos;
  };
  return dash != std::string_view::npos && is_number(name.substr(0, dash)) &&
         is_number(name.substr(dash + 1));
}

void RemoveLeftover(int folder, const std::string& name) {
  if (!IsTemporaryName(name)) return;
  const FileHandle file(openat(folder, name.c_str(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC));
  if (file.is_open() && IsLeftBehind(file.get())) unlinkat(folder, name.c_str(), 0);
}

}  // namespace tessaril
