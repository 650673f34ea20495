#include "tests/support/system_faults.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/types.h>

#include <cerrno>
#include <cstdarg>
#include <utility>

namespace tessaril {
namespace {

SystemFaults::Decide decision;
int calls = 0;

int Decision(std::string_view call) {
  if (!decision) return SystemFaults::kNone;
  SystemFaults::Decide decide;
  decide.swap(decision);
  const int kept_error = errno;
  const int result = decide(call, ++calls);
  errno = kept_error;
  decide.swap(decision);
  return result;
}

bool Fails(std::string_view call) {
  const int error = Decision(call);
  if (error > 0) errno = error;
  return error > 0;
}

}  // namespace

SystemFaults::SystemFaults(Decide decide) {
  calls = 0;
  decision = std::move(decide);
}

SystemFaults::~SystemFaults() {
  decision = {};
}

}  // namespace tessaril

// The linker gives the program's calls of NAME to __wrap_NAME and takes __real_NAME for the system's NAME.
// NOLINTBEGIN(bugprone-reserved-identifier)
extern "C" {

#define WRAP(result, name, failure, parameters, arguments)             \
  result __real_##name parameters;                                     \
  result __wrap_##name parameters;                                     \
  result __wrap_##name parameters {                                    \
    return tessaril::Fails(#name) ? failure : __real_##name arguments; \
  }

WRAP(int, fstat, -1, (int file, struct stat* info), (file, info))
WRAP(int, stat, -1, (const char* path, struct stat* info), (path, info))
WRAP(int, fstatat, -1, (int folder, const char* path, struct stat* info, int flags),
     (folder, path, info, flags))
WRAP(int, faccessat, -1, (int folder, const char* path, int mode, int flags), (folder, path, mode, flags))
WRAP(ssize_t, readlinkat, -1, (int folder, const char* path, char* target, size_t size),
     (folder, path, target, size))
WRAP(int, renameat, -1, (int from_folder, const char* from, int to_folder, const char* to),
     (from_folder, from, to_folder, to))
WRAP(int, renameat2, -1, (int from_folder, const char* from, int to_folder, const char* to, unsigned flags),
     (from_folder, from, to_folder, to, flags))
WRAP(int, linkat, -1, (int from_folder, const char* from, int to_folder, const char* to, int flags),
     (from_folder, from, to_folder, to, flags))
WRAP(int, unlinkat, -1, (int folder, const char* path, int flags), (folder, path, flags))
WRAP(int, ftruncate, -1, (int file, off_t size), (file, size))
WRAP(int, fallocate, -1, (int file, int mode, off_t from, off_t size), (file, mode, from, size))
WRAP(off_t, lseek, -1, (int file, off_t to, int from), (file, to, from))
WRAP(int, fchmod, -1, (int file, mode_t mode), (file, mode))
WRAP(int, fchown, -1, (int file, uid_t user, gid_t group), (file, user, group))
WRAP(int, flock, -1, (int file, int operation), (file, operation))
WRAP(int, fsetxattr, -1, (int file, const char* name, const void* value, size_t size, int flags),
     (file, name, value, size, flags))
WRAP(ssize_t, fgetxattr, -1, (int file, const char* name, void* value, size_t size),
     (file, name, value, size))
WRAP(ssize_t, flistxattr, -1, (int file, char* names, size_t size), (file, names, size))
WRAP(int, fremovexattr, -1, (int file, const char* name), (file, name))
WRAP(DIR*, fdopendir, nullptr, (int folder), (folder))
WRAP(DIR*, opendir, nullptr, (const char* path), (path))
WRAP(int, mkdir, -1, (const char* path, mode_t mode), (path, mode))
WRAP(int, rmdir, -1, (const char* path), (path))
WRAP(int, unlink, -1, (const char* path), (path))
WRAP(ssize_t, pread, -1, (int file, void* bytes, size_t size, off_t from), (file, bytes, size, from))
WRAP(dirent*, readdir, nullptr, (DIR * stream), (stream))

int __real_openat(int folder, const char* path, int flags, ...);
int __wrap_openat(int folder, const char* path, int flags, ...);
int __wrap_openat(int folder, const char* path, int flags, ...) {
  va_list more;
  va_start(more, flags);
  const mode_t mode = (flags & O_CREAT) != 0 ? va_arg(more, mode_t) : 0;
  va_end(more);
  const bool fails = tessaril::Fails((flags & O_CREAT) != 0 ? "openat to create" : "openat");
  return fails ? -1 : __real_openat(folder, path, flags, mode);
}

int __real_open(const char* path, int flags, ...);
int __wrap_open(const char* path, int flags, ...);
int __wrap_open(const char* path, int flags, ...) {
  va_list more;
  va_start(more, flags);
  const mode_t mode = (flags & O_CREAT) != 0 ? va_arg(more, mode_t) : 0;
  va_end(more);
  return tessaril::Fails("open") ? -1 : __real_open(path, flags, mode);
}

ssize_t __real_read(int file, void* bytes, size_t size);
ssize_t __wrap_read(int file, void* bytes, size_t size);
ssize_t __wrap_read(int file, void* bytes, size_t size) {
  const int decided = tessaril::Decision("read");
  if (decided > 0) errno = decided;
  if (decided > 0) return -1;
  return __real_read(file, bytes, decided == tessaril::SystemFaults::kShort ? (size + 1) / 2 : size);
}

ssize_t __real_write(int file, const void* bytes, size_t size);
ssize_t __wrap_write(int file, const void* bytes, size_t size);
ssize_t __wrap_write(int file, const void* bytes, size_t size) {
  const int decided = tessaril::Decision("write");
  if (decided == tessaril::SystemFaults::kShort) return __real_write(file, bytes, (size + 1) / 2);
  if (decided <= 0) return __real_write(file, bytes, size);
  // A part may be written before the failure, but for an interrupted call.
  if (decided == EINTR) size = 0;
  [[maybe_unused]] const ssize_t part = __real_write(file, bytes, size / 2);
  errno = decided;
  return -1;
}

// What is written needs not outlive a power failure of the machine that runs the tests.
int __wrap_fsync(int file);
int __wrap_fsync(int) {
  return tessaril::Fails("fsync") ? -1 : 0;
}

int __real_close(int file);
int __wrap_close(int file);
int __wrap_close(int file) {
  const bool fails = tessaril::Fails("close");
  const int error = errno;
  const int result = __real_close(file);
  if (fails) errno = error;
  return fails ? -1 : result;
}

}  // extern "C"
// NOLINTEND(bugprone-reserved-identifier)
