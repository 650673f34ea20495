#include "engine/byte_buffer.h"

#include <algorithm>
#include <cstring>

namespace tessaril {

void ByteBuffer::Reserve(std::size_t capacity) {
  if (capacity <= capacity_) return;
    // Memory that is never touched costs nothing; what is touched first costs a page fault, and again after
    // each growing. So the first step is one that holds nearly every page there is.
#ifdef TESSARIL_TIGHT_BUFFERS
  constexpr std::size_t kLeast = 1;
#else
  constexpr std::size_t kLeast = std::size_t{1} << 24;
#endif
  capacity = std::max(capacity, kLeast);
  auto grown = std::make_unique_for_overwrite<char[]>(capacity);
  if (size_ > 0) std::memcpy(grown.get(), data_.get(), size_);
  data_ = std::move(grown);
  capacity_ = capacity;
}

}  // namespace tessaril
