#include "ui/printing/spool_file.h"

#include <fcntl.h>
#include <sys/mman.h>

#include <QDir>
#include <QFile>
#include <cerrno>
#include <utility>

#include "engine/temporary_file.h"

namespace tessaril {
namespace {

constexpr std::size_t kBufferSize = 1 << 16;  // bytes

}  // namespace

SpoolFile::~SpoolFile() {
  if (mapped_ != nullptr) munmap(mapped_, written_);
}

Status SpoolFile::Create() {
  const QByteArray path = QFile::encodeName(QDir::tempPath());
  const FileHandle folder(::open(path.constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  if (!folder.is_open()) return Status::System(errno);
  TemporaryFile temporary(folder.get());  // whose name goes at the end of this function
  if (Status status = temporary.Create(); !status.ok()) return status;
  file_ = FileHandle(fcntl(temporary.file(), F_DUPFD_CLOEXEC, 0));
  if (!file_.is_open()) return Status::System(errno);
  QIODevice::open(WriteOnly | Unbuffered);
  return {};
}

qint64 SpoolFile::readData(char*, qint64) {
  return -1;
}

qint64 SpoolFile::writeData(const char* data, qint64 size) {
  buffer_.append(data, static_cast<std::size_t>(size));
  if (buffer_.size() >= kBufferSize) Write();
  return status_.ok() ? size : -1;
}

void SpoolFile::Write() {
  const std::string bytes = std::exchange(buffer_, {});
  if (!status_.ok()) return;
  status_ = WriteAll(file_.get(), bytes);
  written_ += bytes.size();
}

Status SpoolFile::Content(std::string_view& content) {
  Write();
  if (!status_.ok()) return status_;
  void* const mapped = mmap(nullptr, written_, PROT_READ, MAP_PRIVATE, file_.get(), 0);
  if (mapped == MAP_FAILED) return Status::System(errno);
  mapped_ = mapped;
  content = {static_cast<const char*>(mapped), written_};
  return {};
}

}  // namespace tessaril
