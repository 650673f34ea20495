#include "engine/file_handle.h"

#include <cerrno>

namespace tessaril {

Status WriteAll(int descriptor, std::string_view bytes) {
  while (!bytes.empty()) {
    const ssize_t written = write(descriptor, bytes.data(), bytes.size());
    if (written < 0 && errno == EINTR) continue;
    if (written < 0) return Status::System(errno);
    if (written == 0) return Status::System(EIO);
    bytes.remove_prefix(static_cast<std::size_t>(written));
  }
  return {};
}

Status FlushFile(int descriptor) {
  while (fsync(descriptor) != 0) {
    if (errno != EINTR) return Status::System(errno);
  }
  return {};
}

}  // namespace tessaril
