#ifndef TESSARIL_FORMATS_BLOCK_WRITER_H_
#define TESSARIL_FORMATS_BLOCK_WRITER_H_

#include <string>
#include <string_view>

#include "engine/status.h"

namespace tessaril {

/// A text on its way to a descriptor in blocks. After a failure nothing more is written.
class BlockWriter {
 public:
  /// The descriptor stays the caller's.
  explicit BlockWriter(int descriptor) : descriptor_(descriptor) {}
  BlockWriter(const BlockWriter&) = delete;
  BlockWriter& operator=(const BlockWriter&) = delete;

  /// Writes what is there, whatever ended the run.
  ~BlockWriter() { Flush(); }

  void Append(std::string_view text);
  void Flush();

  /// The first failure to write, if there was one.
  const Status& status() const { return status_; }

 private:
  int descriptor_;
  std::string block_;
  Status status_;
};

}  // namespace tessaril

#endif  // TESSARIL_FORMATS_BLOCK_WRITER_H_
