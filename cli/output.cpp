#include "cli/output.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <iostream>

#include "cli/console_text.h"
#include "engine/paths.h"

namespace tessaril {

int Refuse(const std::string& text) {
  std::cerr << "tsl: " << OneLine(text) << "\n";
  return kExitFailure;
}

Status WriteToStandardOutput(const std::string& report) {
  return isatty(STDOUT_FILENO) != 0 ? WriteAll(STDOUT_FILENO, Harmless(report))
                                    : WriteAll(STDOUT_FILENO, report);
}

int WriteToUser(const std::string& text) {
  const Status status = WriteToStandardOutput(text);
  return status.ok() ? kExitGood : Refuse("standard output: " + status.reason());
}

void ReserveStandardStreams() {
  for (;;) {
    // The system gives the lowest number that is free.
    const int number = open("/dev/null", O_RDONLY | O_CLOEXEC);
    if (number > STDERR_FILENO) close(number);
    if (number < 0 || number > STDERR_FILENO) return;
  }
}

Status CreateFile(const std::string& path, FileHandle& file) {
  file = FileHandle(open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC | O_NOCTTY, 0666));
  return file.is_open() ? Status() : Status::System(errno);
}

Status CheckWritable(const std::string& path) {
  struct stat info {};
  if (stat(path.c_str(), &info) == 0) {
    if (S_ISDIR(info.st_mode)) return Status::System(EISDIR);
    return access(path.c_str(), W_OK) == 0 ? Status() : Status::System(errno);
  }
  if (errno != ENOENT) return Status::System(errno);
  const std::string folder = FolderOf(path).empty() ? "." : std::string(FolderOf(path));
  if (stat(folder.c_str(), &info) != 0) return Status::System(errno);
  if (info.st_nlink == 0) return Status::System(ENOENT);  // removed, with us still in it
  return access(folder.c_str(), W_OK) == 0 ? Status() : Status::System(errno);
}

Status ReadFrom(const std::string& path, std::string& bytes) {
  const FileHandle file(open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NOCTTY));
  return file.is_open() ? ReadFrom(file.get(), bytes) : Status::System(errno);
}

Status ReadFrom(int file, std::string& bytes) {
  std::array<char, 65536> block;
  for (;;) {
    const ssize_t got = read(file, block.data(), block.size());
    if (got < 0 && errno == EINTR) continue;
    if (got < 0) return Status::System(errno);
    if (got == 0) return {};
    bytes.append(block.data(), static_cast<std::size_t>(got));
  }
}

}  // namespace tessaril
