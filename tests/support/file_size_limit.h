#ifndef TESSARIL_TESTS_SUPPORT_FILE_SIZE_LIMIT_H_
#define TESSARIL_TESTS_SUPPORT_FILE_SIZE_LIMIT_H_

#include <sys/resource.h>

#include <csignal>

namespace tessaril {

/// While it lives, a file that this process writes takes so many bytes and no more: "File too large".
class FileSizeLimit {
 public:
  explicit FileSizeLimit(rlim_t bytes) {
    getrlimit(RLIMIT_FSIZE, &before_);
    const rlimit limit{bytes, before_.rlim_max};
    old_handler_ = std::signal(SIGXFSZ, SIG_IGN);
    setrlimit(RLIMIT_FSIZE, &limit);
  }
  ~FileSizeLimit() {
    setrlimit(RLIMIT_FSIZE, &before_);
    std::signal(SIGXFSZ, old_handler_);
  }
  FileSizeLimit(const FileSizeLimit&) = delete;
  FileSizeLimit& operator=(const FileSizeLimit&) = delete;

 private:
  rlimit before_{};
  void (*old_handler_)(int) = SIG_DFL;
};

}  // namespace tessaril

#endif  // TESSARIL_TESTS_SUPPORT_FILE_SIZE_LIMIT_H_
