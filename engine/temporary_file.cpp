#include "engine/temporary_file.h"

#include <fcntl.h>
#include <unistd.h>

#include <array>
#include <atomic>
#include <cerrno>
#include <cstdio>
#include <utility>

namespace tessaril {

Status TemporaryFile::Create(mode_t mode) {
  static std::atomic<unsigned> counter{0};
  constexpr int kMostTries = 1000;
  for (int tries = 0; tries < kMostTries; ++tries) {
    std::array<char, 48> name;
    std::snprintf(name.data(), name.size(), ".tessaril-%lx-%x", static_cast<unsigned long>(getpid()),
                  counter.fetch_add(1));
    std::string its_name(name.data());  // whose memory comes before the file
    file_ = FileHandle(openat(folder_, its_name.c_str(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, mode));
    if (file_.is_open()) {
      name_ = std::move(its_name);
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

std::string TemporaryFile::Keep() {
  return std::exchange(name_, {});
}

}  // namespace tessaril
