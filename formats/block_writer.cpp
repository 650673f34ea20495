#include "formats/block_writer.h"

#include "engine/file_handle.h"

namespace tessaril {

void BlockWriter::Append(std::string_view text) {
  constexpr std::size_t kBlock = 65536;  // bytes
  block_ += text;
  if (block_.size() >= kBlock) Flush();
}

void BlockWriter::Flush() {
  if (status_.ok() && !block_.empty()) status_ = WriteAll(descriptor_, block_);
  block_.clear();
}

}  // namespace tessaril
