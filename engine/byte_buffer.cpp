#include "engine/byte_buffer.h"

#include <cstring>

namespace tessaril {

void ByteBuffer::Reserve(std::size_t capacity) {
  if (capacity <= capacity_) return;
  auto grown = std::make_unique_for_overwrite<char[]>(capacity);
  if (size_ > 0) std::memcpy(grown.get(), data_.get(), size_);
  data_ = std::move(grown);
  capacity_ = capacity;
}

}  // namespace tessaril
