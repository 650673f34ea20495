#ifndef TESSARIL_UI_PRINTING_SPOOL_FILE_H_
#define TESSARIL_UI_PRINTING_SPOOL_FILE_H_

#include <QIODevice>
#include <string>
#include <string_view>

#include "engine/file_handle.h"
#include "engine/status.h"

namespace tessaril {

/// A file without a name in the folder of temporary files, where pages gather until they are complete. It
/// keeps the system's words for what fails, which the toolkit's own files lose.
class SpoolFile : public QIODevice {
  Q_OBJECT

 public:
  SpoolFile() = default;
  ~SpoolFile() override;

  /// Makes it, open for writing.
  Status Create();

  /// Fails as soon as something could not be written.
  const Status& status() const { return status_; }

  /// All that was written, which lives as long as the file.
  Status Content(std::string_view& content);

  bool isSequential() const override { return true; }

 protected:
  qint64 readData(char* data, qint64 most) override;
  qint64 writeData(const char* data, qint64 size) override;

 private:
  void Write();

  FileHandle file_;
  std::string buffer_;
  std::size_t written_ = 0;  // bytes, without those of the buffer
  void* mapped_ = nullptr;
  Status status_;
};

}  // namespace tessaril

#endif  // TESSARIL_UI_PRINTING_SPOOL_FILE_H_
