#include "settings/temporary_page.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

#include "engine/paths.h"
#include "settings/whole_file.h"

namespace tessaril {
namespace {

std::string NameStem(int number) {
  return number == 1 ? "~TSLtemp" : "~TSLtemp-" + std::to_string(number);
}

bool IsStillAt(const std::string& path, int file) {
  struct stat at_path {};
  struct stat opened {};
  return lstat(path.c_str(), &at_path) == 0 && fstat(file, &opened) == 0 && at_path.st_dev == opened.st_dev &&
         at_path.st_ino == opened.st_ino;
}

}  // namespace

TemporaryPage::TemporaryPage(const std::string& folder) : path_(JoinPath(folder, NameStem(1) + ".htm")) {
  constexpr int kMostPrograms = 1000;
  for (int number = 1; number <= kMostPrograms; ++number) {
    // A name whose lock file is another user's is passed over as one that is taken.
    failure_ = Take(JoinPath(folder, "." + NameStem(number) + ".lock"));
    if (!failure_.ok()) continue;
    path_ = JoinPath(folder, NameStem(number) + ".htm");
    return;
  }
}

TemporaryPage::~TemporaryPage() {
  if (lock_.is_open()) unlink(lock_path_.c_str());
}

Status TemporaryPage::Take(const std::string& lock_path) {
  constexpr int kMostTries = 100;
  for (int tries = 0; tries < kMostTries; ++tries) {
    FileHandle lock(open(lock_path.c_str(), O_RDWR | O_CREAT | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC, 0666));
    if (!lock.is_open() || flock(lock.get(), LOCK_EX | LOCK_NB) != 0) return Status::System(errno);
    if (!IsStillAt(lock_path, lock.get())) continue;  // its holder removed it between the two calls
    lock_ = std::move(lock);
    lock_path_ = lock_path;
    return {};
  }
  return Status::System(EWOULDBLOCK);
}

Status TemporaryPage::Write(std::string_view content) const {
  return lock_.is_open() ? WriteWholeFile(path_, content) : failure_;
}

void TemporaryPage::Delete() const {
  if (lock_.is_open()) unlink(path_.c_str());
}

}  // namespace tessaril
