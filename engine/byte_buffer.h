#ifndef TESSARIL_ENGINE_BYTE_BUFFER_H_
#define TESSARIL_ENGINE_BYTE_BUFFER_H_

#include <cstddef>
#include <memory>
#include <string_view>
#include <utility>

namespace tessaril {

/// Memory for the bytes of one file: grows, never clears what it hands out, and is used again for the next
/// file, so that reading a tree costs no memory traffic beyond the reading itself.
class ByteBuffer {
 public:
  ByteBuffer() = default;
  ByteBuffer(ByteBuffer&& other) noexcept { *this = std::move(other); }
  ByteBuffer& operator=(ByteBuffer&& other) noexcept {
    data_ = std::move(other.data_);
    size_ = std::exchange(other.size_, 0);
    capacity_ = std::exchange(other.capacity_, 0);
    return *this;
  }

  char* data() { return data_.get(); }
  const char* data() const { return data_.get(); }
  std::size_t size() const { return size_; }
  std::size_t capacity() const { return capacity_; }
  std::string_view view() const { return {data_.get(), size_}; }

  /// Makes room for at least `capacity` bytes in all and keeps the first size() bytes. Throws std::bad_alloc
  /// and then leaves everything as it was.
  void Reserve(std::size_t capacity);

  /// Declares the first `size` bytes (at most capacity()) to be the content.
  void SetSize(std::size_t size) { size_ = size; }

 private:
  std::unique_ptr<char[]> data_;
  std::size_t size_ = 0;
  std::size_t capacity_ = 0;
};

}  // namespace tessaril

#endif  // TESSARIL_ENGINE_BYTE_BUFFER_H_
